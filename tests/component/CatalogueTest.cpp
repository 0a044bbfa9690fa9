// What no host can bring about: paths of other programs, and texts that stand for other types.
#include "database/DefaultPath.h"
#include "tests/component/ComponentFixture.h"
#include "values/ValueText.h"

namespace orxdb::test {
namespace {

TEST(DefaultPathTest, LeavesFileAndFolderOfTheProgram) {
  const std::pair<std::string, std::string> cases[] = {
      {"C:\\Cam\\Bin\\host.exe", "C:\\Cam\\"},
      {"C:\\host.exe", "C:"},
      {"\\host", ""},
      {"host", "host"},
      {"\\a\\" + std::string(255, 'x') + "\\\\h", "\\a\\"}};
  for (const auto& [program, folder] : cases) {
    EXPECT_EQ(DefaultDatabasePath(program), folder + "CAM\\TOOLS\\tools.mdb");
  }
}

TEST(ValueTextTest, ReadsValuesFromText) {
  const struct {
    const char* text;
    VARTYPE type;
    std::string value;
  } cases[] = {{"", VT_BSTR, "null"},         {"x", VT_NULL, "null"},
               {"x", VT_EMPTY, "nothing"},    {"70000", VT_I2, "4464"},
               {"12ab", VT_I4, "12"},         {" \t+010", VT_I4, "10"},
               {"- 7", VT_I4, "0 fails"},     {"200", VT_I1, "-56"},
               {"-1", VT_UI1, "255"},         {"65537", VT_UI2, "1"},
               {"4294967296", VT_UI4, "0"},   {"99999999999999999999", VT_I4, "-1"},
               {"2,5", VT_R8, "2"},           {" -2.5e2x", VT_R8, "-250"},
               {".", VT_R4, "0 fails"},       {"0.1", VT_R4, "0.1"},
               {"TRUE", VT_BOOL, "-1"},       {"true", VT_BOOL, "0"},
               {"TRUE ", VT_BOOL, "0"},       {"Ø \xff", VT_BSTR, "Ø \xff fails"},
               {"1", VT_CY, "nothing fails"}, {nullptr, VT_I4, "nothing fails"}};
  for (const auto& [text, type, expected] : cases) {
    Variant value;
    const bool read = ParseVariantText(text, type, *value.ptr()) == S_OK;
    EXPECT_EQ(Show(value.get()) + (read ? "" : " fails"), expected) << (text ? text : "(null)");
  }
}

}  // namespace
}  // namespace orxdb::test
