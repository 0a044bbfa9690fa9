#include <cmath>
#include <limits>
#include <string>
#include <type_traits>

#include "platform/automation/Variant.h"
#include "tests/platform/automation/CountingObject.h"
#include "tests/platform/automation/LeakBalance.h"

namespace orxdb {
namespace {

constexpr LONGLONG kLeast = std::numeric_limits<LONGLONG>::min();

class ConversionTest : public LeakBalance {};

template <typename T>
Variant Make(VARTYPE type, T VARIANT::*member, std::type_identity_t<T> value) {
  Variant variant;
  variant.ptr()->*member = value;
  variant.ptr()->vt = type;
  return variant;
}
Variant Cy(LONGLONG tenThousandths) {
  CY value{};
  value.int64 = tenThousandths;
  return Variant::FromCy(value);
}
Variant Dec(ULONGLONG low, BYTE scale, BYTE sign = 0, ULONG high = 0) {
  Variant variant;
  DECIMAL& decimal = variant.ptr()->decVal;
  decimal.Lo64 = low;
  decimal.Hi32 = high;
  decimal.scale = scale;
  decimal.sign = sign;
  variant.ptr()->vt = VT_DECIMAL;
  return variant;
}

std::string Show(const Variant& value) {
  Variant text;
  if (FAILED(VariantChangeType(text.ptr(), &value.get(), 0, VT_BSTR))) return "cannot be shown";
  const std::u16string_view wide = View(text.get().bstrVal);
  return {wide.begin(), wide.end()};
}

/// The new value as text, or the status in words of its own.
std::string ConvertAndShow(const Variant& source, VARTYPE type, USHORT flags = 0) {
  Variant target = Variant::FromText(u"untouched");
  const HRESULT status = VariantChangeType(target.ptr(), &source.get(), flags, type);
  if (FAILED(status)) {
    EXPECT_EQ(Show(target), "untouched");
    if (status == DISP_E_OVERFLOW) return "overflow";
    if (status == DISP_E_TYPEMISMATCH) return "mismatch";
    return "failure " + std::to_string(status);
  }
  EXPECT_EQ(target.type(), type);
  return Show(target);
}

TEST_F(ConversionTest, ToText) {
  const struct {
    Variant source;
    std::string text;
  } cases[] = {
      {Variant(), ""},
      {Make(VT_I1, &VARIANT::cVal, static_cast<CHAR>(-5)), "-5"},
      {Make(VT_I8, &VARIANT::llVal, kLeast), "-9223372036854775808"},
      {Make(VT_UI8, &VARIANT::ullVal, ~0ULL), "18446744073709551615"},
      {Variant::FromBool(true), "-1"},
      {Variant::FromR8(-0.0), "0"},
      {Variant::FromR8(0.30000000000000004), "0.3"},
      {Variant::FromR8(1.0 / 3), "0.333333333333333"},
      {Variant::FromR8(1e15), "1E+15"},
      {Variant::FromR8(1.5e-7), "1.5E-07"},
      {Variant::FromR4(1.0F / 3), "0.3333333"},
      {Variant::FromR4(12345678.0F), "1.234568E+07"},
      {Cy(kLeast), "-922337203685477.5808"},
      {Dec(5, 28, DECIMAL_NEG), "-0.0000000000000000000000000005"},
      {Dec(~0ULL, 0, 0, ~0U), "79228162514264337593543950335"},
      {Variant::FromDate(-1.25), "1899-12-29 06:00:00"},
  };
  for (const auto& [source, text] : cases) EXPECT_EQ(ConvertAndShow(source, VT_BSTR), text);
  EXPECT_EQ(ConvertAndShow(Variant::FromBool(true), VT_BSTR, VARIANT_ALPHABOOL), "True");
  EXPECT_EQ(ConvertAndShow(Variant::FromBool(false), VT_BSTR, VARIANT_ALPHABOOL), "False");
}

TEST_F(ConversionTest, FromText) {
  const struct {
    std::u16string_view text;
    VARTYPE type;
    std::string result;
  } cases[] = {
      {u"  -42\t", VT_I2, "-42"},
      {u"6.5", VT_I4, "6"},
      {u"-.5", VT_I4, "0"},
      {u"2.50000000000000000000000000000000000000000001", VT_I4, "3"},
      {u"12E-1", VT_I4, "1"},
      {u"&HfF", VT_I4, "255"},
      {u"&o17", VT_R8, "15"},
      {u"1e99999999999", VT_I4, "overflow"},
      {u"1e-99999999999", VT_I4, "0"},
      {u"-1e-400", VT_R8, "0"},
      {u"1e39", VT_R4, "overflow"},
      {u"1.23455", VT_CY, "1.2346"},
      {u"1.23445", VT_CY, "1.2344"},
      {u"922337203685477.5808", VT_CY, "overflow"},
      {u"79228162514264337593543950335", VT_DECIMAL, "79228162514264337593543950335"},
      {u"79228162514264337593543950336", VT_DECIMAL, "overflow"},
      {u"7.9228162514264337593543950336", VT_DECIMAL, "7.922816251426433759354395034"},
      {u"0.00000000000000000000000000005", VT_DECIMAL, "0"},
      {u"#True#", VT_BOOL, "-1"},
      {u"2024-03-05 18:00", VT_DATE, "2024-03-05 18:00:00"},
  };
  for (const auto& [text, type, result] : cases) {
    EXPECT_EQ(ConvertAndShow(Variant::FromText(text), type), result)
        << std::string(text.begin(), text.end()) << " to " << type;
  }
}

TEST_F(ConversionTest, OtherTextIsNoNumber) {
  for (const std::u16string_view text :
       {u"", u" ", u".", u"-", u"1,5", u"1e", u"1 2", u"0x10", u"&H", u"&H10000000000000000",
        u"inf", u"nan", u"yes", u"\u0664\u0662", u"2024-02-30"}) {
    for (const VARTYPE type : {VT_I4, VT_R8, VT_BOOL, VT_CY, VT_DECIMAL, VT_DATE}) {
      EXPECT_EQ(ConvertAndShow(Variant::FromText(text), type), "mismatch")
          << std::string(text.begin(), text.end()) << " to " << type;
    }
  }
  EXPECT_EQ(ConvertAndShow(Variant::FromText({u"5\0", 2}), VT_I4), "mismatch");
  EXPECT_EQ(ConvertAndShow(Variant::FromBstr(Bstr()), VT_I4), "mismatch");
  for (int type : {VT_NULL + 0, VT_EMPTY + 0, VT_ERROR + 0, VT_UNKNOWN + 0, VT_ARRAY | VT_I4,
                   VT_BYREF | VT_I4}) {
    EXPECT_EQ(ConvertAndShow(Variant::FromText(u"5"), static_cast<VARTYPE>(type)), "mismatch")
        << type;
  }
}

TEST_F(ConversionTest, BetweenNumbers) {
  const struct {
    Variant source;
    VARTYPE type;
    std::string result;
  } cases[] = {
      {Variant::FromR8(-3.5), VT_I4, "-4"},
      {Variant::FromR8(255.5), VT_UI1, "overflow"},
      {Variant::FromR8(255.4999), VT_UI1, "255"},
      {Variant::FromR8(9.3e18), VT_I8, "overflow"},
      {Variant::FromR8(9.3e18), VT_UI8, "9300000000000000000"},
      {Variant::FromR4(0.1F), VT_DECIMAL, "0.1"},
      {Variant::FromR8(0.03125), VT_CY, "0.0312"},
      {Make(VT_UI8, &VARIANT::ullVal, ~0ULL), VT_CY, "overflow"},
      {Cy(25000), VT_I4, "2"},
      {Cy(12345), VT_R8, "1.2345"},
      {Dec(123455, 5), VT_CY, "1.2346"},
      {Dec(1, 1, DECIMAL_NEG), VT_R8, "-0.1"},
      {Variant::FromBool(true), VT_UI1, "255"},
      {Variant::FromBool(true), VT_UI8, "18446744073709551615"},
      {Variant::FromR8(1e-300), VT_BOOL, "-1"},
      {Variant(), VT_DATE, "1899-12-30"},
      {Variant::FromR8(-657435), VT_DATE, "overflow"},
      {Variant::FromDate(45356.5), VT_I4, "45356"},
      {Variant::Null(), VT_BSTR, "mismatch"},
      {Make(VT_ERROR, &VARIANT::scode, E_FAIL), VT_I4, "mismatch"},
      {Variant::FromI4(1), VT_ARRAY | VT_UI1, "mismatch"},
  };
  for (const auto& [source, type, result] : cases) {
    EXPECT_EQ(ConvertAndShow(source, type), result) << Show(source) << " to " << type;
  }
  for (const VARTYPE type : {VT_I1, VT_UI4, VT_I8, VT_UI8, VT_R4, VT_CY, VT_DECIMAL, VT_DATE}) {
    for (const double huge : {1e300, -1e300, std::numeric_limits<double>::infinity()}) {
      EXPECT_EQ(ConvertAndShow(Variant::FromR8(huge), type), "overflow") << huge << " to " << type;
    }
  }
  EXPECT_EQ(ConvertAndShow(Variant::FromR8(std::nan("")), VT_I4), "overflow");
  EXPECT_EQ(ConvertAndShow(Dec(1, 29), VT_I4), "failure " + std::to_string(E_INVALIDARG));
}

// Every whole type takes exactly its own range, from numbers as from text.
TEST_F(ConversionTest, LimitsOfWholeTypes) {
  const struct {
    VARTYPE type;
    std::u16string_view least, most, below, above;
  } cases[] = {
      {VT_I1, u"-128", u"127", u"-129", u"128"},
      {VT_UI1, u"0", u"255", u"-1", u"256"},
      {VT_I2, u"-32768", u"32767", u"-32769", u"32768"},
      {VT_UI2, u"0", u"65535", u"-1", u"65536"},
      {VT_I4, u"-2147483648", u"2147483647", u"-2147483649", u"2147483648"},
      {VT_INT, u"-2147483648", u"2147483647", u"-2147483649", u"2147483648"},
      {VT_UI4, u"0", u"4294967295", u"-1", u"4294967296"},
      {VT_UINT, u"0", u"4294967295", u"-1", u"4294967296"},
      {VT_I8, u"-9223372036854775808", u"9223372036854775807", u"-9223372036854775809",
       u"9223372036854775808"},
      {VT_UI8, u"0", u"18446744073709551615", u"-1", u"18446744073709551616"},
  };
  for (const auto& [type, least, most, below, above] : cases) {
    for (const std::u16string_view text : {least, most, below, above}) {
      const bool fits = text == least || text == most;
      const std::string expected = fits ? std::string(text.begin(), text.end()) : "overflow";
      Variant value = Variant::FromText(text);
      EXPECT_EQ(ConvertAndShow(value, type), expected);
      EXPECT_EQ(VariantChangeType(value.ptr(), value.ptr(), 0, VT_DECIMAL), S_OK);
      EXPECT_EQ(ConvertAndShow(value, type), expected);
    }
  }
}

TEST_F(ConversionTest, InPlaceByReferenceAndOfBytes) {
  Variant value = Variant::FromText(u"12.5");
  ASSERT_EQ(VariantChangeTypeEx(value.ptr(), value.ptr(), 0x407, 0, VT_R8), S_OK);
  EXPECT_EQ(value.get().dblVal, 12.5);
  SHORT number = -3;
  VARIANT reference{};
  reference.vt = VT_BYREF | VT_I2;
  reference.piVal = &number;
  ASSERT_EQ(VariantChangeType(value.ptr(), &reference, 0, VT_BSTR), S_OK);
  EXPECT_EQ(Show(value), "-3");
  ASSERT_EQ(VariantChangeType(&reference, &reference, 0, VT_I2), S_OK);
  EXPECT_EQ(reference.vt, VT_I2);
  EXPECT_EQ(reference.iVal, -3);

  const Variant text = Variant::FromBstr(Bstr::FromBytes("abc"));
  Variant bytes;
  ASSERT_EQ(VariantChangeType(bytes.ptr(), &text.get(), 0, VT_ARRAY | VT_UI1), S_OK);
  EXPECT_EQ(ArrayAccess<BYTE>(bytes.get().parray).size(), 3U);
  Variant back;
  ASSERT_EQ(VariantChangeType(back.ptr(), &bytes.get(), 0, VT_BSTR), S_OK);
  EXPECT_EQ(Bytes(back.get().bstrVal), "abc");
}

TEST_F(ConversionTest, ObjectsGiveTheirDefaultPropertyOrAnotherInterface) {
  const Variant property = Variant::FromText(u"12");
  CountingObject object(&property.get());
  CountingObject plain;
  VARIANT source{};
  source.vt = VT_DISPATCH;
  source.pdispVal = &object;
  {
    Variant target;
    EXPECT_EQ(VariantChangeType(target.ptr(), &source, 0, VT_I4), S_OK);
    EXPECT_EQ(target.get().lVal, 12);
    EXPECT_EQ(VariantChangeType(target.ptr(), &source, VARIANT_NOVALUEPROP, VT_I4),
              DISP_E_TYPEMISMATCH);
    EXPECT_EQ(VariantChangeType(target.ptr(), &source, 0, VT_UNKNOWN), S_OK);
    EXPECT_EQ(object.references(), 2U);
    source.vt = VT_UNKNOWN;
    source.punkVal = &plain;
    EXPECT_EQ(VariantChangeType(target.ptr(), &source, 0, VT_DISPATCH), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(VariantChangeType(target.ptr(), &source, 0, VT_BSTR), DISP_E_TYPEMISMATCH);
  }
  EXPECT_EQ(object.references(), 1U);
  EXPECT_EQ(plain.references(), 1U);
}

}  // namespace
}  // namespace orxdb
