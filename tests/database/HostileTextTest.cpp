// Texts from hosts can fail; they can never write, reach other files, or hang.
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
      "writefile('x', 'y') = 1", "randomblob(1000000000) = 1", "Name = 'a' COLLATE evil",
      "ID = 1 ESCAPE 'x'", "ATTACH 'x' AS y", std::string("ID = 1\0 OR 1=1", 14),
      // Long and deep.
      "[" + std::string(60000, 'x') + "] = 1", Repeat("(", 1000000) + "1=1" + Repeat(")", 1000000),
      Repeat("(", 9000) + "1=1" + Repeat(")", 9000), Repeat("NOT ", 9000) + "1=1",
      Repeat("- ", 9000) + "1=1", Repeat("1=", 6000) + "1", Repeat("1+", 6000) + "1=1",
      Repeat("'a' & ", 60000) + "'' = ''", Repeat("Sgn(", 60) + "ID" + Repeat(")", 60) + " = 1",
      Repeat("Right('a',", 60) + "1" + Repeat(")", 60) + " = 'a'",
      Repeat("(SELECT ", 90) + "ID" + Repeat(Repeat("+1", 450) + " FROM MILL)", 90) + " = 1",
      Repeat("IIf(1=1,", 5000) + "1=1" + Repeat(",0)", 5000),
      "ID IN (" + Repeat("1,", 300000) + "1)", "ID" + Repeat(" BETWEEN D AND ID", 60),
      "ID IN (SELECT M0.ID FROM MILL M0" + Repeat(" INNER JOIN MILL ON 1=1", 6000) + ")"};
  const auto records = Open("Q_MILL");
  const std::string contents =
      "SELECT ID || Name || D FROM MILL UNION ALL SELECT name || ifnull(sql, '') FROM "
      "sqlite_schema";
  const std::string before = Ask(contents);
  for (const std::string& text : texts) {
    EXPECT_THROW(records->FindFirst(text), CDaoException) << text.substr(0, 80);
    EXPECT_TRUE(records->FindFirst("Name = 'B' AND ID = 2")) << text.substr(0, 80);
  }
  EXPECT_EQ(Ask(contents), before);
}

TEST_F(HostileTextTest, SearchesInLongTextsAreLinearOrGiveUp) {
  Execute(
      "UPDATE MILL SET Name = replace(hex(zeroblob(500000)), '0', 'a') WHERE ID = 2;"
      "CREATE VIEW Q_PARTS AS SELECT M.ID AS ID, instr(M.Name, P.Part) + length(replace(M.Name,"
      " P.Part, '')) + length(trim(M.Name, hex(P.Part) || 'bc')) AS N FROM MILL AS M JOIN"
      " (SELECT substr(Name, 1, 400000) || 'c' AS Part FROM MILL WHERE ID = 2) AS P WHERE M.ID = 2;"
      "CREATE VIEW Q_LIKE AS SELECT Name LIKE substr(Name, 1, 9000) AS N FROM MILL WHERE ID = 2");
  EXPECT_EQ(Values(*Open("Q_PARTS"), {"N"}), "2000000");
  EXPECT_EQ(ErrorOf([&] { Values(*Open("Q_LIKE"), {"N"}); }), DaoError::Engine);
  const auto records = Open("Q_MILL");
  for (const std::string& search :
       {"LIKE '*" + Repeat("?", 30000) + "c'", "LIKE '*" + Repeat("[a-b]", 6000) + "c*'",
        "LIKE '*[" + Repeat("c", 30000) + "]'", "LIKE '*" + Repeat("[", 30000) + "'"}) {
    EXPECT_EQ(ErrorOf([&] { records->FindFirst("Name " + search); }), DaoError::Engine) << search;
  }
  EXPECT_TRUE(records->FindFirst("InStr(Name, '" + Repeat("a", 400000) + "c') = 0 AND ID = 2"));
  EXPECT_TRUE(records->FindFirst("Name LIKE '*aaa??*a' AND ID = 2"));
}

/// What replaces SQLite's searches in texts gives what they give elsewhere.
TEST_F(HostileTextTest, SearchesOfStoredQueriesGiveWhatTheyGiveElsewhere) {
  Execute(
      "CREATE TABLE T AS WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i <"
      " 2000) SELECT (SELECT group_concat(substr('aaabä€', 1 + n.i * c.i * 31 % 97 % 6, 1), '')"
      " FROM n AS c WHERE c.i <= n.i % 9) AS X FROM n;"
      "CREATE VIEW Q_FOUND AS SELECT group_concat(instr(A.X, B.P) || instr(A.X, CAST(substr(CAST("
      "B.P AS BLOB), 2) AS TEXT)) || replace(A.X, B.P, '-') || trim(A.X, B.P) || '|' ||"
      " ltrim(A.X, B.P) || '|' || rtrim(A.X, B.P) || '|' ||"
      " instr(CAST(A.X AS BLOB), CAST(B.P AS BLOB)), ' ') AS Found FROM (SELECT rowid AS R, X FROM"
      " T) AS A JOIN (SELECT rowid * 7 % 2000 AS R, substr(X, 1, 3) AS P FROM T) AS B USING (R)");
  EXPECT_EQ(Values(*Open("Q_FOUND"), {"Found"}), "'" + Ask("SELECT Found FROM Q_FOUND") + "'");
}

TEST_F(HostileTextTest, EndlessSearchAndEndlessTriggerAreStopped) {
  Execute(
      "CREATE TRIGGER ENDLESS AFTER UPDATE ON COATING BEGIN INSERT INTO COATING (ID) WITH RECURSIVE"
      " n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) SELECT i FROM n WHERE i < 0; END");
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
  const std::string endless = "ID = (SELECT Count(*) FROM MILL" + Repeat(", MILL", 40) + ")";
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
      "CREATE TABLE TRAP (ID INTEGER PRIMARY KEY AUTOINCREMENT, X DEFAULT "
      "(randomblob(99999999)));");
  for (const char* query : {"Q_ENDLESS", "Q_BLOB", "Q_GONE", "Q_LOOP"}) {
    EXPECT_THROW(Open(query)->GetFieldValue(0), CDaoException) << query;
  }
  EXPECT_THROW(Open("SELECT * FROM TRAP")->AddNew(), CDaoException);
  EXPECT_EQ(Show(Open("Q_MILL")->GetFieldValue("Name")), "'a'");
}

}  // namespace
}  // namespace orxdb
