#include <cmath>
#include <limits>
#include <map>
#include <sstream>
#include <string>

#include "platform/automation/Variant.h"
#include "tests/platform/automation/CountingObject.h"
#include "tests/platform/automation/LeakBalance.h"

namespace orxdb {
namespace {

class ConversionTest : public LeakBalance {};

const std::map<std::string, VARTYPE> kTypes = {
    {"I1", VT_I1},   {"UI1", VT_UI1},   {"I2", VT_I2},     {"UI2", VT_UI2},
    {"I4", VT_I4},   {"UI4", VT_UI4},   {"I8", VT_I8},     {"UI8", VT_UI8},
    {"R4", VT_R4},   {"R8", VT_R8},     {"CY", VT_CY},     {"DATE", VT_DATE},
    {"INT", VT_INT}, {"UINT", VT_UINT}, {"BOOL", VT_BOOL}, {"DECIMAL", VT_DECIMAL}};

Variant FromAscii(const std::string& text) {
  return Variant::FromText(std::u16string(text.begin(), text.end()));
}

std::string Show(const Variant& value) {
  Variant text;
  if (FAILED(VariantChangeType(text.ptr(), &value.get(), 0, VT_BSTR))) return "cannot be shown";
  const std::u16string_view wide = View(text.get().bstrVal);
  return {wide.begin(), wide.end()};
}

/// Replaces the value. The new one as text, or the status in words of its own.
std::string Convert(Variant& value, VARTYPE type, USHORT flags = 0) {
  Variant target = Variant::FromText(u"untouched");
  const HRESULT status = VariantChangeType(target.ptr(), &value.get(), flags, type);
  if (FAILED(status)) {
    EXPECT_EQ(Show(target), "untouched");
    if (status == DISP_E_OVERFLOW) return "overflow";
    if (status == DISP_E_TYPEMISMATCH) return "mismatch";
    return "failure " + std::to_string(status);
  }
  EXPECT_EQ(target.type(), type);
  value = std::move(target);
  return Show(value);
}
std::string Convert(Variant&& value, VARTYPE type, USHORT flags = 0) {
  return Convert(value, type, flags);
}

// A text, the types it goes through one after the other, and what comes out.
TEST_F(ConversionTest, NumbersOfEveryType) {
  std::istringstream words(R"(
      -5 I1 = -5   6.5 I4 = 6   -.5 I4 = 0   12E-1 I4 = 1   &HfF I4 = 255   &o17 R8 = 15
      1e99999999999 I4 = overflow   1e-99999999999 I4 = 0   -1e-400 R8 = 0   1e39 R4 = overflow
      2.50000000000000000000000000000000000000000001 I4 = 3   #True# BOOL = -1
      1.23455 CY = 1.2346   1.23445 CY = 1.2344   922337203685477.5808 CY = overflow
      -922337203685477.5808 CY = -922337203685477.5808   2024-03-05 DATE R8 = 45356
      79228162514264337593543950335 DECIMAL = 79228162514264337593543950335
      79228162514264337593543950336 DECIMAL = overflow
      7.9228162514264337593543950336 DECIMAL = 7.922816251426433759354395034
      0.00000000000000000000000000005 DECIMAL = 0
      -0.0000000000000000000000000005 DECIMAL = -0.0000000000000000000000000005
      0.30000000000000004 R8 = 0.3   0.3333333333333333 R8 = 0.333333333333333   1e15 R8 = 1E+15
      0.00000015 R8 = 1.5E-07   0.33333334 R4 = 0.3333333   12345678 R4 = 1.234568E+07
      -3.5 R8 I4 = -4   255.5 R8 UI1 = overflow   255.4999 R8 UI1 = 255   0.1 R4 DECIMAL = 0.1
      9.3e18 R8 I8 = overflow   9.3e18 R8 UI8 = 9300000000000000000   0.03125 R8 CY = 0.0312
      18446744073709551615 UI8 CY = overflow   2.5 CY I4 = 2   1.2345 CY R8 = 1.2345
      1.23455 DECIMAL CY = 1.2346   -0.1 DECIMAL R8 = -0.1   1e-300 R8 BOOL = -1
      true BOOL UI1 = 255   true BOOL UI8 = 18446744073709551615
      -657435 R8 DATE = overflow   45356.5 R8 DATE I4 = 45356   0 I4 DATE = 1899-12-30)");
  for (std::string text, word; words >> text;) {
    Variant value = FromAscii(text);
    std::string shown;
    while (words >> word && word != "=") shown = Convert(value, kTypes.at(word));
    words >> word;
    EXPECT_EQ(shown, word) << text;
  }
}

TEST_F(ConversionTest, ValuesThatTextCannotGive) {
  const double infinity = std::numeric_limits<double>::infinity();
  for (const char* type : {"I1", "UI4", "I8", "UI8", "R4", "CY", "DECIMAL", "DATE"}) {
    for (const double huge : {1e300, -1e300, infinity, -infinity}) {
      EXPECT_EQ(Convert(Variant::FromR8(huge), kTypes.at(type)), "overflow") << huge << type;
    }
  }
  EXPECT_EQ(Convert(Variant::FromR8(std::nan("")), VT_I4), "overflow");
  EXPECT_EQ(Convert(Variant::FromR8(-0.0), VT_BSTR), "0");
  EXPECT_EQ(Convert(Variant(), VT_BSTR), "");
  EXPECT_EQ(Convert(Variant(), VT_DATE), "1899-12-30");
  EXPECT_EQ(Convert(Variant::FromDate(-1.25), VT_BSTR), "1899-12-29 06:00:00");
  EXPECT_EQ(Convert(Variant::FromBool(true), VT_BSTR, VARIANT_ALPHABOOL), "True");
  Variant impossible;
  impossible.ptr()->decVal.scale = 29;
  impossible.ptr()->vt = VT_DECIMAL;
  EXPECT_EQ(Convert(impossible, VT_I4), "failure " + std::to_string(E_INVALIDARG));
  impossible.ptr()->vt = VT_ERROR;
  EXPECT_EQ(Convert(impossible, VT_I4), "mismatch");
  EXPECT_EQ(Convert(Variant::Null(), VT_BSTR), "mismatch");
  EXPECT_EQ(Convert(Variant::FromI4(1), VT_ARRAY | VT_UI1), "mismatch");
  for (const int type : {VT_NULL + 0, VT_EMPTY + 0, VT_ERROR + 0, VT_UNKNOWN + 0, VT_ARRAY | VT_I4,
                         VT_BYREF | VT_I4}) {
    EXPECT_EQ(Convert(Variant::FromText(u"5"), static_cast<VARTYPE>(type)), "mismatch") << type;
  }
}

TEST_F(ConversionTest, OtherTextIsNoNumber) {
  for (const std::u16string_view text :
       {u"", u" ", u".", u"-", u"1,5", u"1e", u"1 2", u"0x10", u"&H", u"&H10000000000000000",
        u"inf", u"nan", u"yes", u"\u0664\u0662", u"2024-02-30"}) {
    for (const VARTYPE type : {VT_I4, VT_R8, VT_BOOL, VT_CY, VT_DECIMAL, VT_DATE}) {
      EXPECT_EQ(Convert(Variant::FromText(text), type), "mismatch")
          << std::string(text.begin(), text.end()) << " to " << type;
    }
  }
  EXPECT_EQ(Convert(Variant::FromText(u"  -42\t"), VT_I2), "-42");
  EXPECT_EQ(Convert(Variant::FromText(u"2024-03-05 18:00"), VT_DATE), "2024-03-05 18:00:00");
  EXPECT_EQ(Convert(FromAscii({'5', '\0'}), VT_I4), "mismatch");
  EXPECT_EQ(Convert(Variant::FromBstr(Bstr()), VT_I4), "mismatch");
}

// Every whole type takes exactly its own range, from text as from the widest numbers.
TEST_F(ConversionTest, LimitsOfWholeTypes) {
  std::istringstream words(R"(I1 -128 127 -129 128   UI1 0 255 -1 256   I2 -32768 32767 -32769 32768
      UI2 0 65535 -1 65536   I4 -2147483648 2147483647 -2147483649 2147483648
      INT -2147483648 2147483647 -2147483649 2147483648   UINT 0 4294967295 -1 4294967296
      I8 -9223372036854775808 9223372036854775807 -9223372036854775809 9223372036854775808
      UI8 0 18446744073709551615 -1 18446744073709551616)");
  for (std::string type, text; words >> type;) {
    for (const bool fits : {true, true, false, false}) {
      words >> text;
      Variant value = FromAscii(text);
      EXPECT_EQ(Convert(value.Copy(), kTypes.at(type)), fits ? text : "overflow");
      EXPECT_EQ(Convert(value, VT_DECIMAL), text);
      EXPECT_EQ(Convert(value, kTypes.at(type)), fits ? text : "overflow");
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
