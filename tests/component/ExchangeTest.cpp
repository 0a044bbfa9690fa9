// Exchange files through the interface: what is written, what is read, what is passed over.
#include <fstream>

#include "platform/framework/Text.h"
#include "tests/component/ComponentFixture.h"

namespace orxdb::test {
namespace {

/// The header of a file for a table.
std::string Header(const std::string& table) {
  return "ORX_tool_table_version=1.0\r\nORX_tool_table_name=" + table +
         "\r\nORX_table_export_type=ORX_exported_by_table\r\n";
}

class ExchangeTest : public ComponentTest {
 protected:
  void SetUp() override {
    ComponentTest::SetUp();
    OpenSeeded(Script("Exchange"));
  }
  std::string Export(std::string_view table) {
    EXPECT_EQ(m_db->ExportToolRecordsToFile(WidenToBstr(table).get(), Path().get(), 5), S_OK);
    return Contents(m_folder / "x.txt");
  }
  void Import(const std::string& text) {
    std::ofstream(m_folder / "x.txt", std::ios::binary) << text;
    EXPECT_EQ(m_db->ImportToolRecordsFromFile(Path().get(), 5), S_OK);
  }
  /// Imports into an empty table and gives a column of what is there then.
  std::string Imported(const std::string& text, const std::string& table = "DRILL",
                       const std::string& column = "Name") {
    Sql("DELETE FROM " + table);
    EXPECT_EQ(SetFilter(table, "", "ID"), S_OK);
    Import(text);
    return Sql("SELECT " + column + " FROM " + table);
  }
  Bstr Path() { return WidenToBstr((m_folder / "x.txt").string()); }
};

TEST_F(ExchangeTest, FilesAreWrittenByteByByte) {
  Sql("INSERT INTO DRILL VALUES (1, 'a\t\"\\' || char(10, 13, 11) || 'Ø', 2.5, 0.1, -3, -1, '', "
      "1.5, '2024-03-01', 3, 7, 8, 9), (2, NULL, 1e9, NULL, NULL, NULL, NULL, NULL, NULL, NULL, "
      "NULL, 'unread', NULL); INSERT INTO PIPE_TAP VALUES (1, 'p', 2.5, 3, 4)");
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

// What comes of a file for DRILL: the names of the tools then in the table.
TEST_F(ExchangeTest, FilesAreReadLeniently) {
  const std::string names = "\"Name\"\t\"Diameter\"\t\r\n";
  const std::string a = "\"a\"\t\"1.5\"\t\r\n";
  const std::string b = "\"b\"\t\"2.000000\"\t\r\n";
  const std::string head = Header("DRILL");
  const auto longName = [&](std::size_t lineLength) {
    return '"' + std::string(lineLength - 7, 'x') + "\"\t\"3\"\n";
  };
  const auto withVersion = [&](const std::string& line) {
    return line + head.substr(head.find('\n') + 1) + names + a;
  };
  std::string lineFeeds = head + names + a + b;
  std::erase(lineFeeds, '\r');
  const std::array<std::string, 3> cases[] = {
      {"lines that end in LF", lineFeeds, "a|b"},
      {"text between fields", head + names + "x\"a\" y \"1\" z\r\n", "a"},
      {"the same tool again", head + names + a + a + "\"A\"\t\"1.500000\"\t\r\n" + b, "a|b"},
      {"other versions", withVersion("ORX_tool_table_version=2.0\n"), ""},
      {"", withVersion("ORX_tool_table_version=1.1\n"), ""},
      {"", withVersion("ORX_tool_table_version= +1x0\n"), "a"},
      {"", withVersion("ORX_tool_table_version=1\n"), "a"},
      {"", withVersion("orx_tool_table_version=2.0\n"), "a"},
      {"", withVersion(std::string(70'000, '=') + '\n'), ""},
      {"other type",
       "x\nORX_tool_table_name= DRILL \nORX_table_export_type=ORX_exported_by_query\n" + names + a,
       ""},
      {"header out of order", "ORX_tool_table_name=DRILL\n" + head + names + a, ""},
      {"no names of fields", head + "\r\n" + a, ""},
      {"a column the table lacks", head + "\"Name\"\t\"Nope\"\t\r\n" + a + b, ""},
      {"wrong number of fields", head + names + "\"c\"\t\r\n\r\n\"a\"\t\"1\"\t\"2\"\r\n" + b, "b"},
      {"a value that falls apart", head + names + "\"c\\\"d\"\t\"1\"\t\r\n" + a, ""},
      {"an empty number", head + names + a + "\"c\"\t\"\"\t\r\n" + b, "a"},
      {"hostile criteria", head + names + a + "\"c\"\t\"1 OR 1=1); DROP TABLE DRILL\"\r\n", "a"},
      {"hostile names", head + "\"Name] = 1 OR [Name\"\r\n\"a\"\r\n", ""},
      {"an empty text", head + names + "\"\"\t\"1\"\r\n", "NULL"},
      {"zero bytes", head + names + a + std::string("\"c\0d\"\t\"1\"\r\n", 11) + b, "a|b"},
      {"a line as long as may be", head + names + longName(65533) + a, "NULL|a"},
      {"a longer line", head + names + longName(65534) + a, "a"},
      {"a huge line", head + names + a + std::string(5'000'000, '"') + "\r\n" + b, "a|b"},
      {"nothing comparable", head + "\"Note\"\t\r\n\"c\"\r\n", ""},
      {"no tools", head + names, ""},
      {"only a header", head, ""}};
  for (const auto& [what, file, tools] : cases) {
    SCOPED_TRACE(what + file.substr(0, 40));
    EXPECT_EQ(Imported(file), tools);
  }
  Sql("CREATE TRIGGER NO BEFORE INSERT ON DRILL WHEN NEW.Name = 'no'"
      " BEGIN SELECT RAISE(ROLLBACK, 'no'); END");
  EXPECT_EQ(Imported(head + names + a + "\"no\"\t\"1\"\r\n" + b), "a|b") << "all taken back once";
  for (const std::string& path : {m_folder.operator/("").string(), std::string("/nowhere/x.txt")}) {
    EXPECT_EQ(m_db->ImportToolRecordsFromFile(WidenToBstr(path).get(), 0), S_OK);
    EXPECT_EQ(m_db->ExportToolRecordsToFile(Bstr(u"MILL").get(), WidenToBstr(path).get(), 0), S_OK);
  }
}

TEST_F(ExchangeTest, ToolsComeBackAsTheyWere) {
  Sql("INSERT INTO DRILL (Name, Diameter, Pitch, Count, Coated, Note, Material) VALUES "
      "('a\tb' || char(10, 13, 11) || '\\ Ø ''', -2.5, 0.25, 3, -1, '', 3),"
      "(NULL, 0, 0.1, 0, 0, 'memo', 1), ('exact', 0.1234567, 1, 0, 0, '', 1)");
  Sql("UPDATE DRILL SET Approach_Height = 1");
  EXPECT_EQ(SetFilter("DRILL", "", "ID"), S_OK);
  const std::string columns = "quote(Name) || Diameter || Pitch || Count || Coated || Material";
  const std::string before = Sql("SELECT " + columns + " FROM DRILL WHERE ID < 3");
  const std::string file = Export("DRILL");
  EXPECT_EQ(Export("DRILL"), file.substr(0, file.find("\n\"a") + 1))
      << "the cursor is behind the last tool";
  EXPECT_EQ(Imported(file, "DRILL", columns).substr(0, before.size()), before);
  EXPECT_EQ(First("DRILL")["Note"], "NULL");
  EXPECT_EQ(Export("DRILL"), file);
  Import(file);
  EXPECT_EQ(Sql("SELECT count(*) FROM DRILL"), "3") << "all are there";
  Sql("UPDATE DRILL SET Diameter = 0.1234567 WHERE Name = 'exact'");
  Import(file);
  EXPECT_EQ(Sql("SELECT count(*) FROM DRILL"), "4") << "six decimals do not match";
  // A price is written as nothing at all, so its line has too few fields.
  Sql("INSERT INTO PIPE_TAP (Name, Price, Extra_Depth) VALUES ('p', 2, 3), ('q', NULL, 4)");
  EXPECT_EQ(SetFilter("PIPE_TAP", "", "ID"), S_OK);
  EXPECT_EQ(Imported(Export("PIPE_TAP"), "PIPE_TAP"), "q");
}

TEST_F(ExchangeTest, UnknownTablesLeaveAnEntryThatHarmsNobody) {
  const std::string types = Gives(&Db::GetToolTypes);
  Import(Header("NEW") + "\"Name\"\t\r\n\"a\"\t\r\n");
  EXPECT_EQ(Gives(&Db::GetToolTypes), types + "|nothing|nothing|nothing");
  EXPECT_EQ(Add("NEW", Properties().Add("Name", "a")), E_FAIL);
  EXPECT_EQ(Gives(&Db::GetToolProps, "NEW", 1), "fails");
  EXPECT_EQ(Gives(&Db::DeleteTool, "NEW", 1), "fails");
  EXPECT_EQ(Gives(&Db::GetDefPropsValues, "NEW"), "nothing/nothing");
  EXPECT_EQ(Gives(&Db::GetPropsTypes, "NEW"), "nothing/nothing");
  EXPECT_EQ(Gives(&Db::ExportToolRecordsToFile, "NEW", m_file.string(), 0), "");
}

}  // namespace
}  // namespace orxdb::test
