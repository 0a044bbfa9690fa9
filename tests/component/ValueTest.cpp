// Values as text, through the interface.
#include <limits>
#include <optional>

#include "platform/framework/Text.h"
#include "tests/component/ComponentFixture.h"

namespace orxdb::test {
namespace {

using Text = std::optional<std::string>;

template <typename T>
Variant Typed(VARTYPE type, T VARIANT::*member, std::type_identity_t<T> payload) {
  VARIANT value{};
  value.vt = type;
  value.*member = payload;
  Variant owner;
  owner.attach(value);
  return owner;
}

class ValueTest : public ComponentTest {
 protected:
  /// The text that the call makes, nothing for E_FAIL.
  template <typename Call>
  Text TextOf(Call&& call) {
    Bstr text;
    const HRESULT result = call(text.put());
    EXPECT_EQ(result == S_OK, static_cast<bool>(text));
    EXPECT_EQ(TakeError(), result == S_OK ? "" : kReportedError);
    return text ? Text(NarrowBstr(text.get())) : std::nullopt;
  }
  Text Shown(Variant value, LONG precision = -1) {
    return TextOf([&](BSTR* s) { return m_db->VariantToUIString(value.ptr(), s, precision); });
  }
};

TEST_F(ValueTest, TextsOfEachType) {
  struct Case {
    Variant value;
    Text forQueries, forPeople;
  };
  Case cases[] = {
      {Variant(), "NULL", ""},
      {Variant::Null(), "NULL", ""},
      {Variant::FromI2(-32768), "-32768", "-32768"},
      {Variant::FromI4(-7), "-7", "-7"},
      {Typed(VT_I1, &VARIANT::cVal, -5), "-5", "-5"},
      {Variant::FromUI1(200), "200", "200"},
      {Typed(VT_UI2, &VARIANT::uiVal, 65535), "65535", "65535"},
      {Typed(VT_UI4, &VARIANT::ulVal, 4294967295u), "-1", "4294967295"},
      {Variant::FromR4(0.25f), "0.250000", "0.25"},
      {Variant::FromR8(2.5), "2.500000", "2.5"},
      {Variant::FromR8(-1e-7), "-0.000000", "-1E-07"},
      {Variant::FromR8(1e21), "1000000000000000000000.000000", "1E+21"},
      {Variant::FromBool(true), "TRUE", "Yes"},
      {Typed(VT_BOOL, &VARIANT::boolVal, 2), "TRUE", "Yes"},
      {Variant::FromBool(false), "FALSE", "No"},
      {Variant::FromText(u"it's Ø \"6\""), "it's Ø \"6\"", "it's Ø \"6\""},
      {Variant::FromBstr(Bstr()), "", ""},
      {Variant::FromDate(2), std::nullopt, std::nullopt},
      {Variant::FromCy(CY{}), std::nullopt, std::nullopt},
      {Typed(VT_I8, &VARIANT::llVal, 1), std::nullopt, std::nullopt},
      {Variant::FromArray(VT_UI1, SafeArray::Vector(VT_UI1, 3)), std::nullopt, std::nullopt},
  };
  for (Case& each : cases) {
    SCOPED_TRACE(each.value.type());
    EXPECT_EQ(TextOf([&](BSTR* text) { return m_db->VariantToSQLString(each.value.ptr(), text); }),
              each.forQueries);
    EXPECT_EQ(Shown(each.value.Copy()), each.forPeople);
  }
}

TEST_F(ValueTest, PrecisionFromNoneToEightDecimals) {
  const struct {
    double value;
    LONG precision;
    std::string text;
  } cases[] = {{2.5, 0, "2"},
               {3.5, 0, "4"},
               {10.25, 1, "10.2"},
               {10.25, 3, "10.250"},
               {-0.125, 8, "-0.12500000"},
               {10.25, 9, "10.25"},
               {10.25, -1, "10.25"},
               {1e15, 2, "1000000000000000.00"},
               {10.25, std::numeric_limits<LONG>::min(), "10.25"}};
  for (const auto& each : cases) {
    EXPECT_EQ(Shown(Variant::FromR8(each.value), each.precision), each.text);
  }
  EXPECT_EQ(Shown(Variant::FromI4(5), 3), "5");
  // The eight payload bytes count as one real, whatever stands behind the four of a VT_R4.
  EXPECT_EQ(Shown(Typed(VT_R4, &VARIANT::dblVal, 123.456), 3), "123.456");
}

TEST_F(ValueTest, PatternKeepsLettersDigitsBlanksAndWildcards) {
  const struct {
    std::string source, pattern;
  } cases[] = {{".,\\/|~!@#$%^&()-+='\"<>?;:", std::string(25, '?')},
               {"St 37-2 *[a] {b}_`", "St 37?2 *[a] {b}_`"},
               {"Größe Ø", "Größe Ø"},
               {"", ""}};
  for (const auto& each : cases) {
    EXPECT_EQ(TextOf([&](BSTR* text) {
                return m_db->FilterStrValueForQuery(WidenToBstr(each.source).get(), text);
              }),
              each.pattern);
  }
  EXPECT_EQ(TextOf([&](BSTR* text) { return m_db->FilterStrValueForQuery(nullptr, text); }), "");
}

}  // namespace
}  // namespace orxdb::test
