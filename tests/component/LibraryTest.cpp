// The second class: it works on whatever database the process has open.
#include "tests/component/ComponentFixture.h"

namespace orxdb::test {
namespace {

using LibraryTest = ComponentTest;

TEST_F(LibraryTest, UsesTheOpenDatabaseAndNeitherTakesNorEndsIt) {
  EXPECT_EQ(Gives(&Lib::ChangeNumber), "fails");
  OpenSeeded();
  for (int round = 0; round < 2; ++round) {
    EXPECT_NE(Gives(&Lib::ChangeNumber), "fails");
    EXPECT_EQ(Walk("TAP").size(), 3u) << "after other objects of the class came and went";
  }
  m_db.reset();
  EXPECT_EQ(Gives(&Lib::ChangeNumber), "fails");
  EXPECT_EQ(QueryRows(m_file, "PRAGMA journal_mode = DELETE"), "delete") << "nobody has it open";
}

TEST_F(LibraryTest, ChangeNumberDiffersAfterEveryCommit) {
  for (const char* mode : {"DELETE", "WAL"}) {
    OpenSeeded(std::string("PRAGMA journal_mode = ") + mode);
    std::string seen = Gives(&Lib::ChangeNumber);
    const auto changed = [&] {
      std::string now = Gives(&Lib::ChangeNumber);
      EXPECT_EQ(now, Gives(&Lib::ChangeNumber)) << "asking is no change";
      return std::exchange(seen, now) != now;
    };
    for (int round = 0; round < 3; ++round) {
      EXPECT_EQ(Walk("TAP").size(), 3u);
      EXPECT_FALSE(changed()) << mode;
      Sql("UPDATE TAP SET Diameter = Diameter + 1");
      EXPECT_TRUE(changed()) << mode;
      Properties other;
      EXPECT_EQ(Set("TAP", 1, other.Add("Diameter", 70.0 + 10 * round)), S_OK);
      EXPECT_TRUE(changed()) << mode;
    }
  }
}

TEST_F(LibraryTest, TellsTheLimitsOfFields) {
  OpenSeeded(
      Script("Edit") +
      "CREATE TABLE NEEDS (ID INTEGER PRIMARY KEY, Name TEXT(7) NOT NULL, Kind LONG NOT NULL);"
      "CREATE VIEW Q_NEEDS AS SELECT N.ID AS ID, N.Name AS Name, M.Text AS Kind, "
      "N.Kind + 1 AS Sum FROM NEEDS N LEFT JOIN MATERIAL M ON M.ID = N.Kind;"
      "INSERT INTO TYPES_DATA (TOOLTABLE_NAME) VALUES ('Q_NEEDS')");
  for (const auto& [table, field, limits] : {
           std::array{"ALL_TYPES", "Name", "50/0/nothing/nothing"},
           {"ALL_TYPES", "F_BOOLEAN", "0/0/nothing/nothing"},
           {"ALL_TYPES", "F_BYTE", "0/0/0/255"},
           {"ALL_TYPES", "F_SHORT", "0/0/-32768/32767"},
           {"ALL_TYPES", "F_LONG", "0/0/-2147483648/2147483647"},
           {"ALL_TYPES", "F_CURRENCY", "0/0/nothing/nothing"},
           {"ALL_TYPES", "F_SINGLE", "0/0/-3.402823E+38/3.402823E+38"},
           {"ALL_TYPES", "F_DOUBLE", "0/0/nothing/nothing"},
           {"ALL_TYPES", "F_LONGTEXT", "0/0/nothing/nothing"},
           {"NEEDS", "Name", "7/-1/nothing/nothing"},
           {"NEEDS", "Kind", "20/-1/nothing/nothing"},
           {"NEEDS", "Sum", "0/0/nothing/nothing"},
           {"DRILL", "Material", "20/0/nothing/nothing"},
           {"DRILL", "Colour", "fails"},
           {"DRIL", "Material", "fails"},
       }) {
    EXPECT_EQ(Gives(&Lib::GetFieldLimits, table, field), limits) << field;
  }
}

}  // namespace
}  // namespace orxdb::test
