// Texts from hosts can fail; they can never write, reach other files, or hang.
#include <chrono>
#include <thread>

#include "tests/database/RecordsetFixture.h"

namespace orxdb {
namespace {

std::string Repeat(const std::string& text, int times) {
  std::string all;
  while (times-- > 0) all += text;
  return all;
}

class HostileTextTest : public RecordsetFixture {
 protected:
  HostileTextTest() { Execute("INSERT INTO MILL (Name, D) VALUES ('a', 1), ('b', 2)"); }

  std::string Contents() {
    return Ask("SELECT group_concat(ID || Name || D) FROM MILL") + " " +
           Ask("SELECT group_concat(name || ifnull(sql, '')) FROM sqlite_schema");
  }
};

TEST_F(HostileTextTest, CriteriaAreRefusedAndHarmless) {
  const std::string texts[] = {
      // More than a condition, and what reaches out.
      "1=1); DROP TABLE MILL; --", "1=1; DELETE FROM MILL", "1=1 -- comment", "1=1 /* comment */",
      "ID = ?", "ID = ?1", "ID = :id", "ID = @id", "ID = $id",
      "1=1) UNION SELECT 1,2,3 FROM MILL WHERE (1=1", "ID IN (DELETE FROM MILL)",
      "ID IN (WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) SELECT i FROM n)",
      "ID IN (SELECT rootpage FROM sqlite_schema)",
      "ID IN (SELECT * FROM pragma_table_info('MILL'))", "load_extension('x') = 1",
      "writefile('x', 'y') = 1", "randomblob(1000000000) = 1", "zeroblob(2000000000) IS NULL",
      "Name = 'a' COLLATE evil", "ID = 1 ESCAPE 'x'", "PRAGMA journal_mode", "ATTACH 'x' AS y",
      std::string("ID = 1\0 OR 1=1", 14),
      // Long and deep.
      "[" + std::string(60000, 'x') + "] = 1", Repeat("(", 1000000) + "1=1" + Repeat(")", 1000000),
      Repeat("(", 400000) + "1=1" + Repeat(")", 400000), Repeat("NOT ", 200000) + "1=1",
      Repeat("-", 900000) + "1=1", Repeat("1=", 450000) + "1", Repeat("1+", 450000) + "1=1",
      Repeat("'a' & ", 150000) + "'' = ''", Repeat("Sgn(", 60) + "ID" + Repeat(")", 60) + " = 1",
      Repeat("Right('a',", 60) + "1" + Repeat(")", 60) + " = 'a'",
      "ID" + Repeat(" BETWEEN D AND ID", 60),
      Repeat("IIf(1=1,", 5000) + "1=1" + Repeat(",0)", 5000),
      "ID IN (" + Repeat("1,", 400000) + "1)",
      "ID IN (SELECT M0.ID FROM MILL M0" + Repeat(" INNER JOIN MILL ON 1=1", 30000) + ")"};
  const auto records = Open("Q_MILL");
  const std::string before = Contents();
  const auto begin = std::chrono::steady_clock::now();
  for (const std::string& text : texts) {
    EXPECT_THROW(records->FindFirst(text), CDaoException) << text.substr(0, 80);
    EXPECT_TRUE(records->FindFirst("Name = 'B'")) << text.substr(0, 80);
    EXPECT_EQ(Show(records->GetFieldValue("ID")), "2");
  }
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(60));
  EXPECT_EQ(Contents(), before);
}

TEST_F(HostileTextTest, EndlessSearchAndEndlessTriggerAreStopped) {
  Execute(
      "CREATE TRIGGER ENDLESS AFTER UPDATE ON COATING BEGIN INSERT INTO COATING (ID)"
      " WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) SELECT i FROM n"
      " WHERE i < 0; END");
  std::jthread editor([this] {
    CDaoDatabase database;
    database.Open(Path());
    CDaoRecordset coatings(&database);
    coatings.Open(dbOpenDynaset, "SELECT * FROM COATING");
    coatings.Edit();
    coatings.SetFieldValue("Name", Text("new").get());
    EXPECT_THROW(coatings.Update(), CDaoException);
    EXPECT_EQ(Show(coatings.GetFieldValue("Name")), "'new'");  // still being edited
    coatings.MoveFirst();
    EXPECT_EQ(Show(coatings.GetFieldValue("Name")), "'TiN'");
  });
  std::string sources = "MILL A", sum = "A.ID";
  for (int i = 1; i < 40; ++i) {
    sources += ", MILL A" + std::to_string(i);
    sum += " + A" + std::to_string(i) + ".ID";
  }
  const std::string endless = "ID IN (SELECT A.ID FROM " + sources + " WHERE " + sum + " < 0)";
  const auto records = Open("Q_MILL");
  EXPECT_THROW(records->FindFirst(endless), CDaoException);
  EXPECT_TRUE(records->FindFirst("ID = 2"));
}

TEST_F(HostileTextTest, StoredQueriesOfAHostileFile) {
  Execute(
      "CREATE VIEW Q_ENDLESS AS WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n)"
      " SELECT i AS ID FROM n;"
      "CREATE VIEW Q_BLOB AS SELECT randomblob(1000000000) AS B FROM MILL;"
      "CREATE VIEW Q_GONE AS SELECT X.ID AS ID FROM NO_SUCH_TABLE AS X;"
      "CREATE VIEW Q_LOOP AS SELECT ID AS ID FROM Q_LOOP;"
      "CREATE TABLE TRAP (ID INTEGER PRIMARY KEY AUTOINCREMENT, X LONG DEFAULT (randomblob(9)));");
  for (const char* query : {"Q_ENDLESS", "Q_BLOB", "Q_GONE", "Q_LOOP"}) {
    EXPECT_THROW(Open(query), CDaoException) << query;
  }
  EXPECT_THROW(Open("SELECT * FROM TRAP")->AddNew(), CDaoException);
  EXPECT_EQ(Show(Open("Q_MILL")->GetFieldValue("Name")), "'a'");
}

}  // namespace
}  // namespace orxdb
