// Opening databases, good and bad, and catalogues that load in part.
#include <fstream>
#include <sqlite3.h>
#include <unistd.h>

#include "platform/framework/ExecutablePath.h"
#include "platform/framework/Text.h"
#include "tests/component/ComponentFixture.h"

namespace orxdb::test {
namespace {

namespace fs = std::filesystem;

struct SessionTest : ComponentTest {
  /// Opens the file, which is no database to work with, and shows that nothing is open then.
  void ExpectNothingOpens(const fs::path& file) {
    SCOPED_TRACE(file);
    EXPECT_EQ(SetMdbFile(*m_db, file), S_OK);
    EXPECT_EQ(FirstStatus("TAP"), E_FAIL);
    EXPECT_THAT(ToolTypes(), testing::IsEmpty());
  }
};

TEST_F(SessionTest, UnusableFilesOpenNothingAndTheNextGoodOneDoes) {
  std::ofstream(m_folder / "empty.mdb") << "";
  std::ofstream(m_folder / "text.mdb") << std::string(5000, 'x');
  fs::create_directory(m_folder / "folder.mdb");
  RunSql(m_folder / "cut.mdb", "CREATE TABLE A (B); INSERT INTO A VALUES (zeroblob(9000))");
  fs::resize_file(m_folder / "cut.mdb", 700);
  for (const auto* name : {"missing.mdb", "empty.mdb", "text.mdb", "folder.mdb", "cut.mdb"}) {
    ExpectNothingOpens(m_folder / name);
  }
  EXPECT_EQ(m_db->SetMdbFile(nullptr), S_OK);
  ExpectNothingOpens({});
  EXPECT_FALSE(fs::exists(m_folder / "missing.mdb"));
  OpenSeeded();
  EXPECT_EQ(Walk("TAP").size(), 3u);
}

TEST_F(SessionTest, LockedFileCanBeTriedAgainAndIsKept) {
  SeedDatabase(m_folder / "other.mdb", "DELETE FROM TAP");
  SeedDatabase(m_file);
  sqlite3* other = nullptr;
  ASSERT_EQ(sqlite3_open(m_file.c_str(), &other), SQLITE_OK);
  EXPECT_EQ(sqlite3_exec(other, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
  ExpectNothingOpens(m_file);
  EXPECT_EQ(sqlite3_close(other), SQLITE_OK);
  fs::permissions(m_file, fs::perms::owner_read);
  std::string path = m_file.string();
  std::ranges::replace(path, '/', '\\');
  EXPECT_EQ(SetMdbFile(*m_db, path), S_OK);
  EXPECT_EQ(SetMdbFile(*m_db, m_folder / "other.mdb"), S_OK) << "which is not opened";
  EXPECT_EQ(Walk("TAP").size(), 3u);
}

TEST_F(SessionTest, DefaultDatabaseIsBesideTheFolderOfTheProgram) {
  const fs::path root = fs::path(NativePath(ExecutablePath())).parent_path().parent_path();
  const fs::path file = root / "CAM/TOOLS/tools.mdb";
  ASSERT_FALSE(fs::exists(file)) << "in the way of this test: " << file;
  EXPECT_EQ(m_db->OpenDefaultDataBase(), S_OK);
  EXPECT_EQ(FirstStatus("TAP"), E_FAIL);
  fs::create_directories(file.parent_path());
  SeedDatabase(file);
  EXPECT_EQ(m_db->OpenDefaultDataBase(), S_OK);
  EXPECT_EQ(Walk("TAP").size(), 3u);
  fs::remove_all(root / "CAM");
}

TEST_F(SessionTest, DamagedCatalogueKeepsWhatWasLoadedAndFailsOnTheRest) {
  const struct {
    const char* damage;
    std::size_t types, opened;  ///< strings of GetToolTypes; tables that can be walked
  } cases[] = {{"", 9, 3},
               {"DROP VIEW TOOL_TYPES", 0, 0},
               {"DROP VIEW Q_STOCK_MATERIAL", 9, 3},
               {"ALTER TABLE TYPES_DATA DROP COLUMN COMMENT", 0, 0},
               {"DROP TABLE MILL", 9, 1},
               {"DROP VIEW Q_TAP", 9, 2}};
  for (const auto& each : cases) {
    SCOPED_TRACE(each.damage);
    m_db.reset();
    m_db = NewObject();
    fs::remove(m_file);
    OpenSeeded(each.damage);
    EXPECT_EQ(ToolTypes().size(), each.types);
    std::size_t place = 0;
    for (const auto* table : {"EMPTY", "MILL", "TAP"}) {  // in the order of their opening
      EXPECT_EQ(FirstStatus(table), place++ < each.opened ? S_OK : E_FAIL) << table;
    }
  }
  // The last case's entry without a recordset fails where it is used, and nowhere else.
  const Bstr tap(u"TAP");
  Variant value;
  LONG count = 0;
  EXPECT_EQ(m_db->GetNextTool(tap.get(), value.ptr()), S_OK);
  EXPECT_EQ(m_db->GetToolTableBookmark(tap.get(), value.ptr()), S_OK);
  EXPECT_EQ(m_db->SetToolTableBookmark(tap.get(), value.get()), S_OK);
  EXPECT_TRUE(value.empty());
  EXPECT_EQ(m_db->GetSelectedRecordCount(tap.get(), &count), E_FAIL);
  EXPECT_EQ(count, -1);
  EXPECT_EQ(SetFilter("TAP", "Diameter > 1"), S_OK);
  EXPECT_EQ(SetFilter("TAP", "", "Diameter"), E_FAIL);
}

}  // namespace
}  // namespace orxdb::test
