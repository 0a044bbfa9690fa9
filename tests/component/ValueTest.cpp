// Values as text, through the interface.
#include <cstring>

#include "platform/framework/Text.h"
#include "tests/component/ComponentFixture.h"

namespace orxdb::test {
namespace {

/// The payload whose first bytes are those of a number.
LONGLONG As(auto number) {
  LONGLONG bytes = 0;
  std::memcpy(&bytes, &number, sizeof number);
  return bytes;
}

class ValueTest : public ComponentTest {
 protected:
  /// The text that the call makes, "fails" for E_FAIL.
  template <typename Call>
  std::string TextOf(Call&& call) {
    Bstr text;
    const HRESULT result = call(text.put());
    EXPECT_EQ(result == S_OK, static_cast<bool>(text));
    EXPECT_EQ(TakeError(), result == S_OK ? "" : kReportedError);
    return result == S_OK ? NarrowBstr(text.get()) : "fails";
  }
  std::string ForQueries(VARIANT value) {
    return TextOf([&](BSTR* text) { return m_db->VariantToSQLString(&value, text); });
  }
  std::string Shown(VARIANT value, LONG precision = -1) {
    return TextOf([&](BSTR* text) { return m_db->VariantToUIString(&value, text, precision); });
  }
};

TEST_F(ValueTest, TextsOfEachType) {
  const auto texts = [&](VARTYPE type, LONGLONG payload) {
    VARIANT value{};
    value.vt = type;
    value.llVal = payload;
    return ForQueries(value) + '/' + Shown(value);
  };
  const struct {
    VARTYPE type;
    LONGLONG payload;
    const char* texts;  ///< for queries and for people
  } cases[] = {
      {VT_EMPTY, 0, "NULL/"},         {VT_NULL, 0, "NULL/"},       {VT_I2, -300, "-300/-300"},
      {VT_I4, -7, "-7/-7"},           {VT_I1, -5, "-5/-5"},        {VT_UI1, 200, "200/200"},
      {VT_UI2, 65535, "65535/65535"}, {VT_BOOL, -1, "TRUE/Yes"},   {VT_BOOL, 2, "TRUE/Yes"},
      {VT_BOOL, 0, "FALSE/No"},       {VT_DATE, 0, "fails/fails"}, {VT_CY, 0, "fails/fails"},
      {VT_I8, 1, "fails/fails"},      {VT_CLSID, 0, "fails/fails"}};
  for (const auto& each : cases) EXPECT_EQ(texts(each.type, each.payload), each.texts) << each.type;
  EXPECT_EQ(texts(VT_UI4, 4294967295), "-1/4294967295");
  EXPECT_EQ(texts(VT_R4, As(0.25f)), "0.250000/0.25");
  EXPECT_EQ(texts(VT_R8, As(-1e-7)), "-0.000000/-1E-07");
  EXPECT_EQ(texts(VT_R8, As(1e21)), "1000000000000000000000.000000/1E+21");
  EXPECT_EQ(texts(VT_BSTR, 0), "/");
  EXPECT_EQ(texts(VT_ARRAY | VT_UI1, 0), "fails/fails");
  const Variant text = Variant::FromText(u"it's Ø \"6\"");
  EXPECT_EQ(ForQueries(text.get()) + Shown(text.get()), "it's Ø \"6\"it's Ø \"6\"");
}

TEST_F(ValueTest, PrecisionFromNoneToEightDecimals) {
  const struct {
    double value;
    LONG precision;
    const char* text;
  } cases[] = {{2.5, 0, "2"},
               {3.5, 0, "4"},
               {10.25, 1, "10.2"},
               {10.25, 3, "10.250"},
               {-0.5, 8, "-0.50000000"},
               {10.25, 9, "10.25"},
               {10.25, -1, "10.25"}};
  for (const auto& [value, precision, text] : cases) {
    EXPECT_EQ(Shown(Variant::FromR8(value).get(), precision), text);
  }
  // The eight payload bytes count as one real, whatever stands behind the four of a VT_R4.
  VARIANT real{};
  real.dblVal = 123.456;
  real.vt = VT_R4;
  EXPECT_EQ(Shown(real, 3), "123.456");
}

TEST_F(ValueTest, PatternKeepsLettersDigitsBlanksAndWildcards) {
  const std::pair<std::string, std::string> cases[] = {
      {".,\\/|~!@#$%^&()-+='\"<>?;:", std::string(25, '?')},
      {"St 37-2 *[a] {b}_` Ø", "St 37?2 *[a] {b}_` Ø"}};
  for (const auto& [source, pattern] : cases) {
    const Bstr given = WidenToBstr(source);
    EXPECT_EQ(TextOf([&](BSTR* s) { return m_db->FilterStrValueForQuery(given.get(), s); }),
              pattern);
  }
  EXPECT_EQ(TextOf([&](BSTR* text) { return m_db->FilterStrValueForQuery(nullptr, text); }), "");
}

}  // namespace
}  // namespace orxdb::test
