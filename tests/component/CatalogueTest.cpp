// What the component keeps to itself so far: list texts, the default path, values from text, and
// the parts of the catalogue that no method shows yet.
#include <gmock/gmock.h>

#include "database/DefaultPath.h"
#include "database/ListParser.h"
#include "database/ToolDbData.h"
#include "platform/framework/Text.h"
#include "tests/component/ComponentFixture.h"
#include "values/StringVariants.h"
#include "values/ValueText.h"

namespace orxdb::test {
namespace {

using Texts = std::vector<std::string>;

TEST(ListParserTest, SplitsAtSeparatorsAndBraces) {
  const std::pair<std::string, Texts> cases[] = {
      {"", {}},         {"a;b", {"a", "b"}},          {"a;;b", {"a", "", "b"}},
      {"a;", {"a"}},    {"{x}", {"", "{", "x", "}"}}, {"a{b}c", {"a", "{", "b", "}", "c"}},
      {"{", {"", "{"}}, {"x^y z", {"x", "y z"}}};
  for (const auto& [text, tokens] : cases) {
    Texts found = {"old"};
    EXPECT_EQ(ParseList(text, found), !text.empty());
    EXPECT_EQ(found, tokens) << text;
  }
}

TEST(ListParserTest, TakesTheFirstTokenOfEachLine) {
  const std::pair<std::string, Texts> cases[] = {
      {"", {}},
      {"Diameter;Length\r\nFlute_Length", {"Diameter", "Flute_Length"}},
      {"A;B\r\nX^Y\r\n", {"A", "X"}},
      {"\r\n\r\nA", {"A"}},
      {"\nA", {"A"}},
      {"{A}", {""}},
      {";A\r\nB\r", {"", "B\r"}},
      {"Abc\nDe", {"Ab", "De"}}};
  for (const auto& [text, names] : cases) EXPECT_EQ(ParseSearchParams(text), names) << text;
}

TEST(DefaultPathTest, LeavesFileAndFolderOfTheProgram) {
  const std::string tail = "CAM\\TOOLS\\tools.mdb";
  const std::pair<std::string, std::string> cases[] = {
      {"C:\\Apps\\Cam\\Bin\\host.exe", "C:\\Apps\\Cam\\"},
      {"C:\\host.exe", "C:"},
      {"\\host", ""},
      {"host", "host"},
      {"", ""}};
  for (const auto& [program, folder] : cases) {
    EXPECT_EQ(DefaultDatabasePath(program), folder + tail);
  }
  EXPECT_EQ(DefaultDatabasePath("\\a\\b\\" + std::string(300, 'x')), "\\a\\" + tail);
}

TEST(ValueTextTest, ReadsValuesFromText) {
  struct Case {
    const char* text = nullptr;
    HRESULT status = S_OK;
    VARTYPE type = VT_EMPTY, given = VT_EMPTY;
    const char* value = nullptr;  ///< as text for queries
  };
  const Case cases[] = {{"", S_OK, VT_BSTR, VT_NULL},
                        {"x", S_OK, VT_NULL, VT_NULL},
                        {"70000", S_OK, VT_I2, VT_I2, "4464"},
                        {"12ab", S_OK, VT_I4, VT_I4, "12"},
                        {" \t+7", S_OK, VT_I4, VT_I4, "7"},
                        {"- 7", E_FAIL, VT_I4, VT_I4},
                        {"200", S_OK, VT_I1, VT_I1, "-56"},
                        {"-1", S_OK, VT_UI1, VT_UI1, "255"},
                        {"65537", S_OK, VT_UI2, VT_UI2, "1"},
                        {"4294967295", S_OK, VT_UI4, VT_UI4, "-1"},
                        {"99999999999999999999", S_OK, VT_I4, VT_I4, "-1"},
                        {"2,5", S_OK, VT_R8, VT_R8, "2.000000"},
                        {" -2.5e2x", S_OK, VT_R8, VT_R8, "-250.000000"},
                        {".", E_FAIL, VT_R4, VT_R4},
                        {"0.1", S_OK, VT_R4, VT_R4, "0.100000"},
                        {"TRUE", S_OK, VT_BOOL, VT_BOOL, "TRUE"},
                        {"true", S_OK, VT_BOOL, VT_BOOL, "FALSE"},
                        {"TRUE ", S_OK, VT_BOOL, VT_BOOL, "FALSE"},
                        {"Ø \xff", E_FAIL, VT_BSTR, VT_BSTR, "Ø \xff"},
                        {"1", E_FAIL, VT_CY, VT_EMPTY},
                        {nullptr, E_FAIL, VT_I4, VT_EMPTY}};
  for (const Case& each : cases) {
    SCOPED_TRACE(each.text ? each.text : "(null)");
    Variant value;
    EXPECT_EQ(ParseVariantText(each.text, each.type, *value.ptr()), each.status);
    EXPECT_EQ(value.type(), each.given);
    if (each.value) {
      EXPECT_EQ(VariantText(value.get()), each.value);
    }
  }
}

TEST(StringVariantTest, ChangesTheWidthOfTextOnly) {
  Variant text = Variant::FromText(u"Ø\xDCFF");
  ASSERT_TRUE(NarrowStringVariant(text.ptr()));
  EXPECT_EQ(Bytes(text.get().bstrVal), "Ø\xff");
  ASSERT_TRUE(WidenStringVariant(text.ptr()));
  EXPECT_EQ(View(text.get().bstrVal), u"Ø\xDCFF");
  Variant others[] = {Variant(), Variant::FromI4(3), Variant::FromBstr(Bstr())};
  for (Variant& other : others) {
    EXPECT_FALSE(NarrowStringVariant(other.ptr()) || WidenStringVariant(other.ptr()));
  }
  EXPECT_FALSE(NarrowStringVariant(nullptr) || WidenStringVariant(nullptr));
}

TEST(CatalogueTest, MachiningDataLoadsUpToTheFirstMissingTable) {
  const struct {
    std::string damage;
    bool stock, early, late;  ///< what is open afterwards
  } cases[] = {{"", true, true, true},
               {"DROP VIEW Q_STOCK_MATERIAL", false, true, true},
               {"ALTER TABLE TYPES_DATA DROP COLUMN DEF_NAME_FORMAT", false, true, true},
               {"DROP VIEW Q_TAP", false, true, true},
               {"DROP TABLE T15c", true, true, false}};
  for (const auto& each : cases) {
    SCOPED_TRACE(each.damage);
    const TemporaryFolder folder;
    SeedDatabase(folder / "tools.mdb", each.damage);
    CToolDbData data;
    ASSERT_TRUE(data.OpenDatabase((folder / "tools.mdb").string()));
    EXPECT_EQ(data.LoadCatalogue(), each.damage.empty());
    EXPECT_EQ(data.StockMaterialSet().IsOpen(), each.stock);
    EXPECT_EQ(data.FindDataTable("T24_27_30_31") != nullptr, each.early);
    EXPECT_EQ(data.FindDataTable("T15b_15d_22") != nullptr, each.early);
    EXPECT_EQ(data.FindDataTable("T5_FEED") != nullptr, each.late);
    EXPECT_EQ(data.FindDataTable("drill_feed"), nullptr);
  }
}

TEST(ToolTableInfoTest, CopiesShareTheCursorButNotTheFilter) {
  const TemporaryFolder folder;
  SeedDatabase(folder / "tools.mdb");
  CToolDbData data;
  ASSERT_TRUE(data.OpenDatabase((folder / "tools.mdb").string()) && data.LoadCatalogue());
  CToolTableInfo& entry = *data.FindToolTable("TAP");
  EXPECT_EQ(entry.m_searchParamNames, (Texts{"Diameter", "Unit"}));
  entry.m_strFilter = "ID > 1";
  CToolTableInfo copy;
  copy.m_strFilter = "ID = 1";
  copy = entry;
  EXPECT_EQ(copy.m_strFilter, "ID = 1");
  copy.ToolSet().MoveLast();
  EXPECT_EQ(entry.ToolSet().GetRecordCount(), 3);
  entry.Reset();
  EXPECT_FALSE(copy.ToolSet().IsOpen());
  EXPECT_THROW(entry.ToolSet(), CDaoException);
}

}  // namespace
}  // namespace orxdb::test
