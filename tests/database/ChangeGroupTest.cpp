// Groups of changes that fail within, or end with their database.
#include "tests/database/RecordsetFixture.h"

namespace orxdb {
namespace {

TEST_F(RecordsetFixture, ChangesThatFailTakeBackThemselvesOrTellWhyAllIsLost) {
  Execute(
      "CREATE TRIGGER MILL_RULES AFTER INSERT ON MILL WHEN NEW.Name LIKE 'no%' BEGIN"
      " SELECT CASE NEW.Name WHEN 'no' THEN RAISE(FAIL, 'refused') ELSE RAISE(ROLLBACK, 'disk "
      "full')"
      " END; END");
  const auto records = Open("Q_MILL");
  const auto add = [&](const char* name) {
    records->AddNew();
    records->SetFieldValue("Name", Text(name).get());
    records->Update();
  };
  const auto why = [](auto work) {
    try {
      work();
    } catch (const CDaoException& exception) {
      return exception.Message();
    }
    return std::string("nothing");
  };
  EXPECT_EQ(why([&] { add("no"); }), "refused");
  Database().BeginChanges();
  add("a");
  EXPECT_EQ(why([&] { add("no"); }), "refused");
  EXPECT_EQ(Ask("SELECT count(*) FROM MILL"), "0");
  Database().EndChanges();
  EXPECT_EQ(Ask("SELECT Name FROM MILL"), "a");

  Database().BeginChanges();
  add("b");
  records->Requery();
  records->FindFirst("Name = 'b'");
  EXPECT_EQ(why([&] { add("none"); }), "disk full");
  EXPECT_EQ(ErrorOf([&] { records->GetFieldValue("Name"); }), DaoError::RecordDeleted);
  const std::string lost = "The database has taken back the whole group of changes: disk full";
  EXPECT_EQ(why([&] { add("c"); }), lost);
  EXPECT_EQ(why([&] { Database().EndChanges(); }), lost);
  EXPECT_EQ(Values(*records, {"Name"}), "'a'");
  add("d");
  EXPECT_EQ(Ask("SELECT Name FROM MILL"), "a|d");
  const auto copy = Open("Q_MILL", dbOpenSnapshot);
  for (const bool cancelled : {false, true}) {
    if (!cancelled) Database().BeginChanges();
    EXPECT_TRUE(copy->FindFirst("Name = 'd'")) << cancelled;
    if (!cancelled) Database().CancelChanges();
  }
  Database().BeginChanges();
  Open("Q_MILL")->Delete();
  m_database.Close();
  EXPECT_FALSE(m_database.IsChanging());
  EXPECT_EQ(Ask("SELECT Name FROM MILL"), "a|d");
}

}  // namespace
}  // namespace orxdb
