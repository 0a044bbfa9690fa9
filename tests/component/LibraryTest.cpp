// The second class: it works on whatever database the process has open.
#include <variant>

#include "tests/component/ComponentFixture.h"

namespace orxdb::test {
namespace {

constexpr const char* kNeeds =
    "CREATE TABLE NEEDS (ID INTEGER PRIMARY KEY, Name TEXT(7) NOT NULL CHECK (Name <> 'no'), "
    "Kind LONG NOT NULL, Code TEXT UNIQUE);"
    "CREATE VIEW Q_NEEDS AS SELECT N.ID AS ID, N.Name AS Name, M.Text AS Kind, "
    "N.Kind + 1 AS Sum, N.Code AS Code FROM NEEDS N LEFT JOIN MATERIAL M ON M.ID = N.Kind;"
    "INSERT INTO NEEDS VALUES (1, 'One', 1, 'A'), (2, 'Two', 2, 'B');"
    "INSERT INTO TYPES_DATA (TOOLTABLE_NAME) VALUES ('Q_NEEDS')";

using Values = std::vector<std::pair<std::string, std::variant<double, const char*>>>;

class LibraryTest : public ComponentTest {
 protected:
  /// What was left undone by a call that adds a tool (0) or changes one.
  std::string Undone(const char* table, LONG id, const Values& values) {
    Properties tool;
    for (const auto& property : values) {
      std::visit([&](auto given) { tool.Add(property.first, given); }, property.second);
    }
    EXPECT_EQ(Gives(&Lib::ChangeNumber).empty(), false) << "another call, to be forgotten";
    if (id == 0) {
      Add(table, tool);
    } else {
      Set(table, id, tool);
    }
    return Gives(&Lib::LastError);
  }
};

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

TEST_F(LibraryTest, TellsWhatWasLeftUndoneAndWhy) {
  OpenSeeded(Script("Edit") + kNeeds);
  struct Case {
    const char* table;
    LONG id;
    Values tool;
    const char* undone;
  };
  for (const Case& row :
       {Case{"ALL_TYPES", 0, {{"Name", 5.0}}, ""},
        {"ALL_TYPES", 0, {{"F_TEXT", "für viele"}}, ""},
        {"ALL_TYPES",
         0,
         {{"F_TEXT", "für allele"}},
         "Field F_TEXT: the text is 1 too long, of 9 characters at most."},
        {"ALL_TYPES",
         0,
         {{"F_BYTE", 256.0}},
         "Field F_BYTE: 256 is out of range, which is 0 to 255."},
        {"ALL_TYPES",
         0,
         {{"F_SHORT", "-32769"}, {"F_BOOLEAN", "perhaps"}, {"F_LONG", "1"}},
         "Field F_SHORT: '-32769' is out of range, which is -32768 to 32767.\n"
         "Field F_BOOLEAN: 'perhaps' is no yes or no."},
        {"ALL_TYPES", 0, {{"F_DATETIME", "soon"}}, "Field F_DATETIME: 'soon' is no date."},
        {"DRILL", 0, {{"Material", "Wood"}}, "Field Material: 'Wood' is not in its list."},
        {"DRILL", 0, {{"Material", "HSS"}, {"Wood", "HSS"}}, "There is no field Wood."},
        {"DRILL", 1, {{"Material", "Wood"}}, "Field Material: 'Wood' is not in its list."},
        {"DRILL", 1, {{"Material", "HSS"}}, ""},
        {"DRILL", 1, {{"ID", 1.0}, {"Size", 3.0}}, ""},
        {"DRILL", 1, {{"ID", 2.0}}, "Field ID cannot be changed."},
        {"DRILL", 77, {{"Size", 3.0}}, "There is no tool with the ID 77."},
        {"NEEDS", 0, {{"Kind", "HSS"}}, "Field Name must have a value."},
        {"NEEDS",
         1,
         {{"Name", "no"}},
         "A rule of the table refuses the values (CHECK constraint failed: Name <> 'no')."},
        {"NEEDS", 1, {{"Code", "B"}}, "Another record has the same Code."},
        {"NEEDS", 1, {{"Sum", 3.0}}, "There is no field Sum."},
        {"NEED", 1, {{"Sum", 3.0}}, "There is no table NEED."}}) {
    EXPECT_EQ(Undone(row.table, row.id, row.tool), row.undone);
  }
  for (const char* id : {"1", "2"}) {
    EXPECT_EQ(m_db->DeleteTool(WidenToBstr("NEEDS").get(), 2), E_FAIL);
    EXPECT_EQ(Gives(&Lib::LastError), *id == '1' ? "" : "There is no tool with the ID 2.");
  }
  Values many;
  for (int i = 0; i < 900; ++i) many.emplace_back("F_BYTE", 300.0 + i);
  EXPECT_THAT(
      Undone("ALL_TYPES", 0, many),
      testing::AllOf(testing::HasSubstr("300"), testing::ContainsRegex("\nAnd 8.. more.$")));
}

TEST_F(LibraryTest, TellsWhyTheDatabaseRefused) {
  EXPECT_EQ(m_db->DeleteTool(WidenToBstr("TAP").get(), 1), E_FAIL);
  EXPECT_EQ(Gives(&Lib::LastError), "No database is open.");
  EXPECT_EQ(SetMdbFile(*m_db, m_folder / "missing.mdb"), S_OK);
  EXPECT_EQ(Gives(&Lib::LastError), "The database cannot be opened.");
  OpenSeeded();
  EXPECT_EQ(Gives(&Lib::LastError), "") << "of opening";
  EXPECT_EQ(SetFilter("TAP", "Diameter >"), S_OK);
  Variant values;
  EXPECT_EQ(m_db->GetNextTool(WidenToBstr("TAP").get(), values.put()), E_FAIL);
  EXPECT_NE(Gives(&Lib::LastError), "");
  EXPECT_EQ(m_db->GetNextTool(nullptr, nullptr), E_FAIL);
  EXPECT_EQ(Gives(&Lib::LastError),
            "An argument is missing, or is not of the type that it should be.");
  EXPECT_EQ(m_db->ImportToolRecordsFromFile(WidenToBstr("nowhere").get(), 0), S_OK);
  EXPECT_EQ(Gives(&Lib::LastError), "The file cannot be read.");
  Sql("CREATE TRIGGER refuses BEFORE UPDATE ON TAP BEGIN SELECT RAISE(ABORT, 'closed today'); END");
  EXPECT_EQ(Undone("TAP", 1, {{"Diameter", 9.0}}), "Closed today.");
}

TEST_F(LibraryTest, AddsValuesToListsOnce) {
  OpenSeeded("INSERT INTO MATERIAL (Text) VALUES ('Bob''s')");
  const std::string before = "HSS|Carbide|Bob's";
  for (const auto& [table, field, value, added, undone] : {
           std::array{"TAP", "Material", "hss", "", ""},
           {"TAP", "Material", "bob's", "", ""},
           {"TAP", "Material", "'; DROP TABLE TAP", "|'; DROP TABLE TAP", ""},
           {"TAP", "Material", "\t ", "", "Field Material: the new value is blank."},
           {"TAP", "Material", "a text of 21 letters.", "",
            "Field Text: the text is 1 too long, of 20 characters at most."},
           {"TAP", "Name", "M5", "", "Field Name has no list."},
           {"TAP", "Colour", "red", "", "There is no field Colour."},
           {"TAPS", "Material", "HSS", "", "There is no table TAPS."},
       }) {
    for (int twice = 0; twice < 2; ++twice) {
      EXPECT_EQ(Gives(&Lib::AddPermissibleValue, table, field, value), *undone ? "fails" : "");
      EXPECT_EQ(Gives(&Lib::LastError), undone);
    }
    EXPECT_EQ(Sql("SELECT group_concat(Text, '|') FROM MATERIAL"), before + added);
    Sql("DELETE FROM MATERIAL WHERE ID > 3");
  }
}

TEST_F(LibraryTest, GroupsChangesOfBothClasses) {
  EXPECT_EQ(Gives(&Lib::BeginChanges), "fails");
  OpenSeeded();
  const auto state = [&] {
    return Sql("SELECT (SELECT count(*) FROM TAP) || (SELECT max(Text) FROM MATERIAL)");
  };
  const auto change = [&] {
    EXPECT_EQ(Gives(&Lib::BeginChanges), "");
    EXPECT_EQ(Gives(&Lib::BeginChanges), "fails");
    EXPECT_NE(Gives(&Lib::LastError), "");
    EXPECT_EQ(Add("TAP", Properties().Add("Name", "M8")), S_OK);
    EXPECT_EQ(Gives(&Lib::AddPermissibleValue, "TAP", "Material", "Ti"), "");
    EXPECT_EQ(Tool("TAP", m_id)["Name"], "M8");
    EXPECT_EQ(state(), "3HSS") << "nobody else sees it";
  };
  for (const auto method : {&Lib::EndChanges, &Lib::CancelChanges}) {
    EXPECT_EQ(Gives(method), "fails") << "nothing was begun";
  }
  change();
  EXPECT_EQ(Gives(&Lib::CancelChanges), "");
  EXPECT_EQ(Walk("TAP").size(), 3u);
  change();
  Reopen();
  EXPECT_EQ(state(), "3HSS") << "what was not ended when the database was closed";
  change();
  EXPECT_EQ(Gives(&Lib::EndChanges), "");
  EXPECT_EQ(state(), "4Ti");
  EXPECT_EQ(Gives(&Lib::CancelChanges), "fails");
}

}  // namespace
}  // namespace orxdb::test
