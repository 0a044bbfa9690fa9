// What the component keeps to itself so far: list texts, the default path, values from text, and
// the parts of the catalogue that no method shows yet.
#include <gmock/gmock.h>

#include "database/DefaultPath.h"
#include "database/ListParser.h"
#include "database/ToolDbData.h"
#include "platform/framework/Text.h"
#include "tests/component/ComponentFixture.h"
#include "values/ValueText.h"

namespace orxdb::test {
namespace {

using Texts = std::vector<std::string>;
using Case = std::pair<std::string, Texts>;

TEST(ListParserTest, SplitsListsAndTakesTheFirstTokenOfEachLine) {
  const Case lists[] = {
      {"", {}},         {"a;b", {"a", "b"}},          {"a;;b", {"a", "", "b"}},
      {"a;", {"a"}},    {"{x}", {"", "{", "x", "}"}}, {"a{b}c", {"a", "{", "b", "}", "c"}},
      {"{", {"", "{"}}, {"x^y z", {"x", "y z"}}};
  for (const auto& [text, tokens] : lists) {
    Texts found = {"old"};
    EXPECT_EQ(ParseList(text, found), !text.empty());
    EXPECT_EQ(found, tokens) << text;
  }
  const Case lines[] = {
      {"", {}},      {"A;B\r\nX^Y\r\n", {"A", "X"}}, {"\r\n\r\nA\r\nB", {"A", "B"}},
      {"{A}", {""}}, {";A\r\nB\r", {"", "B\r"}},     {"Abc\nDe", {"Ab", "De"}}};
  for (const auto& [text, names] : lines) EXPECT_EQ(ParseSearchParams(text), names) << text;
}

TEST(DefaultPathTest, LeavesFileAndFolderOfTheProgram) {
  const std::pair<std::string, std::string> cases[] = {
      {"C:\\Cam\\Bin\\host.exe", "C:\\Cam\\"},
      {"C:\\host.exe", "C:"},
      {"\\host", ""},
      {"host", "host"},
      {"", ""},
      {"\\a\\" + std::string(255, 'x') + "\\\\h", "\\a\\"}};
  for (const auto& [program, folder] : cases) {
    EXPECT_EQ(DefaultDatabasePath(program), folder + "CAM\\TOOLS\\tools.mdb");
  }
}

TEST(ValueTextTest, ReadsValuesFromText) {
  const struct {
    const char* text;
    VARTYPE type;
    std::string value;  ///< as text for queries
  } cases[] = {{"", VT_BSTR, "null"},           {"x", VT_NULL, "null"},
               {"x", VT_EMPTY, "empty"},        {"70000", VT_I2, "4464"},
               {"12ab", VT_I4, "12"},           {" \t+7", VT_I4, "7"},
               {"- 7", VT_I4, "fails: 0"},      {"200", VT_I1, "-56"},
               {"-1", VT_UI1, "255"},           {"65537", VT_UI2, "1"},
               {"4294967295", VT_UI4, "-1"},    {"99999999999999999999", VT_I4, "-1"},
               {"2,5", VT_R8, "2.000000"},      {" -2.5e2x", VT_R8, "-250.000000"},
               {".", VT_R4, "fails: 0.000000"}, {"0.1", VT_R4, "0.100000"},
               {"TRUE", VT_BOOL, "TRUE"},       {"true", VT_BOOL, "FALSE"},
               {"TRUE ", VT_BOOL, "FALSE"},     {"Ø \xff", VT_BSTR, "fails: Ø \xff"},
               {"1", VT_CY, "fails: empty"},    {nullptr, VT_I4, "fails: empty"}};
  for (const auto& [text, type, expected] : cases) {
    Variant value;
    std::string shown = ParseVariantText(text, type, *value.ptr()) == S_OK ? "" : "fails: ";
    if (value.empty()) {
      shown += "empty";
    } else if (value.type() == VT_NULL) {
      shown += "null";
    } else {
      EXPECT_EQ(value.type(), type);
      shown += VariantText(value.get()).value();
    }
    EXPECT_EQ(shown, expected) << (text ? text : "(null)");
  }
}

TEST(CatalogueTest, MachiningDataLoadsUpToTheFirstMissingTable) {
  const struct {
    std::string damage;
    bool stock, late;  ///< what is open afterwards
  } cases[] = {{"", true, true},
               {"DROP TABLE T15c", true, false},
               {"DROP VIEW Q_STOCK_MATERIAL", false, true},
               {"DROP VIEW Q_TAP", false, true},
               {"ALTER TABLE TYPES_DATA DROP COLUMN DEF_NAME_FORMAT", false, true}};
  for (const auto& each : cases) {
    SCOPED_TRACE(each.damage);
    const TemporaryFolder folder;
    SeedDatabase(folder / "tools.mdb", each.damage);
    CToolDbData data;
    ASSERT_TRUE(data.OpenDatabase((folder / "tools.mdb").string()));
    EXPECT_EQ(data.LoadCatalogue(), each.damage.empty());
    EXPECT_EQ(data.StockMaterialSet().IsOpen(), each.stock);
    EXPECT_TRUE(data.FindDataTable("T24_27_30_31") && data.FindDataTable("T15b_15d_22"));
    EXPECT_EQ(data.FindDataTable("T5_FEED") != nullptr, each.late);
    EXPECT_EQ(data.FindDataTable("drill_feed"), nullptr);
  }
}

}  // namespace
}  // namespace orxdb::test
