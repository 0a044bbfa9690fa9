// Opening databases, good and bad; kinds of tools; the cursor beside what its model shows.
#include <fstream>

#include "platform/framework/ExecutablePath.h"
#include "tests/component/ComponentFixture.h"

namespace orxdb::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

struct SessionTest : ComponentTest {
  /// Opens the file, which is no database to work with, and shows that nothing is open then.
  void ExpectNothingOpens(const fs::path& file) {
    EXPECT_EQ(SetMdbFile(*m_db, file), S_OK);
    EXPECT_EQ(Gives(&Db::GetFirstTool, "TAP"), "fails") << file;
    EXPECT_EQ(Gives(&Db::GetToolTypes), "") << file;
  }
};

TEST_F(SessionTest, UnusableFilesOpenNothingAndTheNextGoodOneDoes) {
  std::ofstream(m_folder / "empty.mdb") << "";
  std::ofstream(m_folder / "text.mdb") << std::string(5000, 'x');
  fs::create_directory(m_folder / "folder.mdb");
  SeedDatabase(m_file);
  fs::copy_file(m_file, m_folder / "cut.mdb");
  fs::resize_file(m_folder / "cut.mdb", 700);
  for (const auto* name : {"missing.mdb", "empty.mdb", "text.mdb", "folder.mdb", "cut.mdb"}) {
    ExpectNothingOpens(m_folder / name);
  }
  EXPECT_FALSE(fs::exists(m_folder / "missing.mdb"));
  EXPECT_EQ(m_db->SetMdbFile(nullptr), S_OK);
  EXPECT_EQ(SetMdbFile(*m_db, m_file), S_OK);
  EXPECT_EQ(Walk("TAP").size(), 3u);
}

TEST_F(SessionTest, LockedFileCanBeTriedAgainAndIsKept) {
  SeedDatabase(m_folder / "other.mdb", "DELETE FROM TAP");
  SeedDatabase(m_file);
  {
    OtherProgram other(m_file);
    other.Execute("BEGIN EXCLUSIVE");
    ExpectNothingOpens(m_file);
  }
  fs::permissions(m_file, fs::perms::owner_read);
  std::string path = m_file.string();
  std::ranges::replace(path, '/', '\\');
  EXPECT_EQ(SetMdbFile(*m_db, path), S_OK);
  EXPECT_EQ(First("TAP")["Name"], "M3");
  EXPECT_EQ(SetMdbFile(*m_db, m_folder / "other.mdb"), S_OK) << "which is not opened";
  EXPECT_EQ(Next("TAP")["Name"], "M10") << "the walk goes on";
}

TEST_F(SessionTest, DefaultDatabaseIsBesideTheFolderOfTheProgram) {
  const fs::path root = fs::path(NativePath(ExecutablePath())).parent_path().parent_path();
  const fs::path file = root / "CAM/TOOLS/tools.mdb";
  ASSERT_FALSE(fs::exists(file)) << "in the way of this test: " << file;
  EXPECT_EQ(m_db->OpenDefaultDataBase(), S_OK);
  EXPECT_EQ(Gives(&Db::GetFirstTool, "TAP"), "fails");
  fs::create_directories(file.parent_path());
  SeedDatabase(file);
  EXPECT_EQ(m_db->OpenDefaultDataBase(), S_OK);
  EXPECT_EQ(Walk("TAP").size(), 3u);
  fs::remove_all(root / "CAM");
}

TEST_F(SessionTest, DamagedCatalogueKeepsWhatWasLoadedAndFailsOnTheRest) {
  // The damage, whether types are listed, tables that can be walked, materials, machining data
  // behind T15c.
  using Case = std::tuple<const char*, bool, int, bool, bool>;
  for (const auto& [damage, types, opened, stock, late] :
       {Case("", true, 3, true, true), Case("DROP VIEW TOOL_TYPES", false, 0, false, false),
        Case("DROP VIEW Q_STOCK_MATERIAL", true, 3, false, true),
        Case("DROP TABLE T15c", true, 3, true, false),
        Case("ALTER TABLE TYPES_DATA DROP COLUMN COMMENT", false, 0, false, true),
        Case("ALTER TABLE TYPES_DATA DROP COLUMN DEF_NAME_FORMAT", false, 0, false, true),
        Case("DROP TABLE MILL", true, 1, false, true),
        Case("DROP VIEW Q_TAP", true, 2, false, true)}) {
    SCOPED_TRACE(damage);
    OpenSeeded(damage);
    EXPECT_EQ(std::ranges::count(Gives(&Db::GetToolTypes), '|'), types ? 8 : 0);
    int place = 0;
    for (const auto* table : {"EMPTY", "MILL", "TAP"}) {  // in the order of their opening
      EXPECT_EQ(Gives(&Db::GetFirstTool, table) == "fails", place++ >= opened) << table;
    }
    EXPECT_EQ(Gives(&Db::GetFirstStockMaterial), stock ? "nothing/nothing" : "fails");
    // An empty table fails, one that is not there gives nothing.
    const char* const nothing = "nothing/nothing/nothing";
    EXPECT_EQ(Gives(&Db::GetFactorByTable, "T5_FEED", 1.0), late ? "fails" : nothing);
    EXPECT_EQ(Gives(&Db::GetFactorByTable, "T15b_15d_22", 1.0), types || late ? "fails" : nothing);
  }
  // The last case's entry without a recordset fails where it is used, and nowhere else.
  EXPECT_EQ(Gives(&Db::GetNextTool, "TAP"), "nothing");
  EXPECT_EQ(Gives(&Db::GetToolTableBookmark, "TAP"), "nothing");
  EXPECT_EQ(Gives(&Db::SetToolTableBookmark, "TAP", VARIANT{}), "");
  EXPECT_EQ(Gives(&Db::GetSelectedRecordCount, "TAP"), "fails");
  EXPECT_EQ(Gives(&Db::SetTabFilter, "TAP", "Diameter > 1", nullptr), "");
  EXPECT_EQ(Gives(&Db::SetTabFilter, "TAP", "", "Diameter"), "fails");
}

TEST_F(SessionTest, ToolTypesFollowTheRowsAndStopAtTheNumberOfTables) {
  OpenSeeded("INSERT INTO TYPES_DATA (ID, TOOLTABLE_NAME, TOOL_TYPE) VALUES (0, 'xxTAP', 'Again')");
  EXPECT_EQ(Gives(&Db::GetToolTypes), "Again||TAP|Threading|Tap|TAP|Milling|Fräser|MILL");
}

TEST_F(SessionTest, ToolTypesOfStoredQueries) {
  OpenSeeded(
      "CREATE VIEW SHORT AS SELECT 'Q' AS TOOLTABLE_NAME, 'a' AS TOOL_TYPE, NULL AS TOOL_SUBTYPE "
      "UNION ALL SELECT 'Q_MILL', 'b', 'c';"
      "CREATE VIEW NONE AS SELECT * FROM TOOL_TYPES WHERE ID < 0;"
      "CREATE VIEW LACKING AS SELECT TOOL_TYPE AS TOOL_TYPE FROM TYPES_DATA;"
      "CREATE VIEW ENDLESS AS WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) "
      "SELECT 'Q' || i AS TOOLTABLE_NAME, 'a' AS TOOL_TYPE, 'b' AS TOOL_SUBTYPE FROM n");
  EXPECT_EQ(Gives(&Db::GetToolTypesByStoredQuery, "SHORT"), "a|||b|c|MILL");
  Variant types = Variant::FromI4(5);
  EXPECT_EQ(Gives(&Db::GetToolTypesByStoredQuery, "NONE", types.ptr()), "");
  for (const auto* name : {"LACKING", "ENDLESS", "NOWHERE", "MILL; DROP TABLE TAP", ""}) {
    EXPECT_EQ(Gives(&Db::GetToolTypesByStoredQuery, name, types.ptr()), "fails") << name;
  }
  EXPECT_EQ(types.get().lVal, 5);
}

TEST_F(SessionTest, BookmarksOfOtherTablesAndUnknownTables) {
  OpenSeeded();
  Variant bookmark = Variant::FromText(u"old");
  EXPECT_EQ(Gives(&Db::GetToolTableBookmark, "NONE", bookmark.ptr()), "");
  EXPECT_EQ(Gives(&Db::SetToolTableBookmark, "NONE", bookmark.get()), "");
  EXPECT_EQ(Show(bookmark.get()), "old");
  EXPECT_EQ(Gives(&Db::GetToolTableBookmark, "TAP", bookmark.ptr()), "");
  EXPECT_EQ(Gives(&Db::SetToolTableBookmark, "MILL", bookmark.get()), "fails");
  EXPECT_EQ(Gives(&Db::SetToolTableBookmark, "TAP", Variant::FromI4(1).get()), "fails");
  EXPECT_EQ(Gives(&Db::GetSelectedRecordCount, "NONE"), "-1");
  EXPECT_THAT(Walk("EMPTY"), testing::IsEmpty());
  EXPECT_EQ(Count("EMPTY"), 0);
}

TEST_F(SessionTest, NonsenseAndHostileTextsFailAndHarmNothing) {
  OpenSeeded();
  for (const auto* text : {"1=1); DROP TABLE TAP; --", "NoSuch = 1", "'open"}) {
    EXPECT_EQ(Gives(&Db::SetTabFilter, "TAP", text, nullptr), "");
    EXPECT_EQ(Gives(&Db::GetFirstTool, "TAP"), "fails") << text;
    EXPECT_EQ(Gives(&Db::SetTabFilter, "TAP", nullptr, text), "fails");
    EXPECT_EQ(Gives(&Db::GetFirstTool, "TAP"), "fails") << "closed until an order is accepted";
    EXPECT_EQ(Gives(&Db::SetTabFilter, "TAP", "Diameter > 4", "Diameter"), "");
    EXPECT_THAT(Walk("TAP"), ElementsAre("M6", "M10"));
  }
}

}  // namespace
}  // namespace orxdb::test
