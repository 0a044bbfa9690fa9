// Exchange files through the interface: what is written, what is read, what is passed over.
#include <fstream>
#include <random>
#include <sstream>

#include "platform/framework/MessageBox.h"
#include "platform/framework/Text.h"
#include "tests/component/ComponentFixture.h"

namespace orxdb::test {
namespace {

namespace fs = std::filesystem;

constexpr const char* kTables =
    "INSERT INTO MATERIAL (Text) VALUES ('Stahl');"
    "CREATE TABLE DRILL (ID INTEGER PRIMARY KEY AUTOINCREMENT, Name TEXT(50), Diameter DOUBLE, "
    "Pitch SINGLE, Count LONG, Coated BOOLEAN, Note LONGTEXT, Price CURRENCY, Changed DATETIME, "
    "Material LONG, Approach_Height DOUBLE, Feed_Rate DOUBLE, SIDE_ANGLE DOUBLE);"
    "CREATE VIEW Q_DRILL AS SELECT DRILL.ID AS ID, Name AS Name, Diameter AS Diameter, Pitch AS "
    "Pitch, Count AS Count, Coated AS Coated, Note AS Note, MATERIAL.Text AS Material, "
    "Approach_Height AS Approach_Height, Feed_Rate AS Feed_Rate, SIDE_ANGLE AS SIDE_ANGLE "
    "FROM DRILL LEFT JOIN MATERIAL ON MATERIAL.ID = DRILL.Material;"
    "CREATE TABLE PIPE_TAP (ID INTEGER PRIMARY KEY AUTOINCREMENT, Name TEXT(50), Price CURRENCY, "
    "Approach_Height DOUBLE, Extra_Depth DOUBLE);"
    "CREATE VIEW Q_PIPE_TAP AS SELECT ID AS ID, Name AS Name, Price AS Price, "
    "Approach_Height AS Approach_Height, Extra_Depth AS Extra_Depth FROM PIPE_TAP;"
    "CREATE TABLE TAPPING_HEAD (ID INTEGER PRIMARY KEY AUTOINCREMENT, Name TEXT(50), Size LONG);"
    "CREATE VIEW Q_TAPPING_HEAD AS SELECT ID AS ID, Name AS Name, Size AS Size FROM TAPPING_HEAD;"
    "INSERT INTO TYPES_DATA (TOOLTABLE_NAME) VALUES ('Q_DRILL'), ('Q_PIPE_TAP'), "
    "('Q_TAPPING_HEAD');";

/// The header of a file for a table.
std::string Header(const std::string& table) {
  return "ORX_tool_table_version=1.0\r\nORX_tool_table_name=" + table +
         "\r\nORX_table_export_type=ORX_exported_by_table\r\n";
}

class ExchangeTest : public ComponentTest {
 protected:
  void SetUp() override {
    ComponentTest::SetUp();
    OpenSeeded(kTables);
  }
  std::string Export(std::string_view table) {
    EXPECT_EQ(m_db->ExportToolRecordsToFile(WidenToBstr(table).get(), Path().get(), 5), S_OK);
    std::ostringstream text;
    text << std::ifstream(m_folder / "x.txt", std::ios::binary).rdbuf();
    return text.str();
  }
  void Import(const std::string& text) {
    std::ofstream(m_folder / "x.txt", std::ios::binary) << text;
    EXPECT_EQ(m_db->ImportToolRecordsFromFile(Path().get(), 5), S_OK);
  }
  /// Imports into an empty table and gives a column of what is there then.
  std::string Imported(const std::string& text, const std::string& table = "DRILL",
                       const std::string& column = "Name") {
    RunSql(m_file, "DELETE FROM " + table);
    EXPECT_EQ(SetFilter(table, "", "ID"), S_OK);
    Import(text);
    return QueryRows(m_file, "SELECT " + column + " FROM " + table);
  }
  Bstr Path() { return WidenToBstr((m_folder / "x.txt").string()); }
};

TEST_F(ExchangeTest, FilesAreWrittenByteByByte) {
  RunSql(m_file,
         "INSERT INTO DRILL VALUES (1, 'a\t\"\\' || char(10, 13, 11) || 'Ø', 2.5, 0.1, -3, -1, '', "
         "1.5, '2024-03-01', 3, 7, 8, 9), (2, NULL, 1e9, NULL, NULL, NULL, NULL, NULL, NULL, NULL, "
         "NULL, NULL, NULL); INSERT INTO PIPE_TAP VALUES (1, 'p', 2.5, 3, 4)");
  EXPECT_EQ(SetFilter("DRILL", "Name = 'none'", "ID"), S_OK);
  const std::string names =
      "\"Name\"\t\"Diameter\"\t\"Pitch\"\t\"Count\"\t\"Coated\"\t\"Note\"\t\"Material\"\t"
      "\"Approach_Height\"\t\r\n";
  const std::string first =
      "\"a\\t\\\"\\\\\\n\\r\\vØ\"\t\"2.500000\"\t\"0.100000\"\t\"-3\"\t\"TRUE\"\t\"\"\t\"Stahl\"\t"
      "\"7.000000\"\t\r\n";
  const std::string second =
      "\"\"\t\"1000000000.000000\"\t\"\"\t\"\"\t\"\"\t\"\"\t\"\"\t\"\"\t\r\n";
  EXPECT_EQ(Export("DRILL"), Header("DRILL") + names + first + second);
}

}  // namespace
}  // namespace orxdb::test
