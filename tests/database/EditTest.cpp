#include "tests/database/RecordsetFixture.h"

namespace orxdb {
namespace {

class EditTest : public RecordsetFixture {};

TEST_F(EditTest, NewRecordShowsKeyAndDefaultsWhileItIsPending) {
  const auto mills = Open("SELECT * FROM MILL");
  mills->AddNew();
  mills->SetBookmark(mills->GetLastModifiedBookmark().get());
  EXPECT_EQ(Values(*mills, {"ID", "D", "Fav", "Flutes", "Name"}), "1, 6, 0, 2, null");
  EXPECT_EQ(Ask("SELECT count(*) FROM MILL"), "0");
  mills->SetFieldValue("Name", Text("pending").get());
  mills->Update();
  EXPECT_EQ(Ask("SELECT ID || Name || D || Flutes FROM MILL"), "1pending6.02");
  EXPECT_EQ(Show(mills->GetFieldValue("Name")), "'pending'");
}

TEST_F(EditTest, DiscardedRecordsLeaveNoRowAndTheirKeysAreNotUsedAgain) {
  for (int i = 0; i < 3; ++i) {
    const auto mills = Open("SELECT * FROM MILL");
    mills->AddNew();
    if (i == 1) mills->MoveFirst();
    if (i == 2) mills->AddNew();
  }
  EXPECT_EQ(Ask("SELECT count(*) FROM MILL"), "0");
  Execute("INSERT INTO MILL (Name) VALUES ('elsewhere')");
  EXPECT_EQ(Ask("SELECT ID FROM MILL"), "5");
}

TEST_F(EditTest, OnlyFieldsOfTheOwnTableCanBeSet) {
  Execute("INSERT INTO MILL (Name, Coating) VALUES ('a', 1)");
  const auto mills = Open("Q_MILL");
  EXPECT_EQ(ErrorOf([&] { mills->SetFieldValueNull("D"); }), DaoError::NotEditing);
  EXPECT_EQ(ErrorOf([&] { mills->Update(); }), DaoError::NotEditing);
  mills->Edit();
  for (const char* field : {"ID", "Coating", "CoatingKey", "Twice"}) {
    EXPECT_EQ(ErrorOf([&] { mills->SetFieldValueNull(field); }), DaoError::ReadOnly) << field;
  }
  mills->SetFieldValue("d", Variant::FromI4(4).get());
  mills->Update();
  EXPECT_EQ(Show(mills->GetFieldValue("Twice")), "8");
  EXPECT_EQ(Ask("SELECT Name FROM COATING WHERE ID = 1"), "TiN");
}

TEST_F(EditTest, FailedUpdateLosesNothingAndCanBeTriedAgain) {
  Execute("CREATE UNIQUE INDEX ONE_NAME ON MILL (Name); INSERT INTO MILL (Name) VALUES ('taken')");
  const auto mills = Open("SELECT * FROM MILL");
  mills->AddNew();
  mills->SetFieldValue("Name", Text("taken").get());
  EXPECT_EQ(ErrorOf([&] { mills->Update(); }), DaoError::Engine);
  mills->SetFieldValue("Name", Text("free").get());
  mills->Update();
  mills->Edit();
  mills->SetFieldValueNull("Flutes");
  EXPECT_EQ(ErrorOf([&] { mills->Update(); }), DaoError::Engine);
  EXPECT_EQ(Ask("SELECT group_concat(Name || Flutes) FROM MILL"), "taken2,free2");
  // A record that went away meanwhile is not brought back.
  mills->Edit();
  mills->SetFieldValue("Name", Text("late").get());
  Execute("DELETE FROM MILL");
  EXPECT_EQ(ErrorOf([&] { mills->Update(); }), DaoError::RecordDeleted);
  EXPECT_EQ(Ask("SELECT count(*) FROM MILL"), "0");
}

}  // namespace
}  // namespace orxdb
