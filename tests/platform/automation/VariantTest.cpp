// Values: copies, references, conversions, order. Dates are values too.
#include <cmath>
#include <memory>
#include <sstream>
#include <string>

#include "platform/automation/VariantOperators.h"
#include "tests/platform/automation/CountingObject.h"
#include "tests/support/LeakBalance.h"

namespace orxdb::test {
namespace {

using VariantTest = LeakBalance;

/// The types by their codes.
constexpr std::string_view kTypes[] = {"EMPTY", "NULL",    "I2",      "I4",       "R4",    "R8",
                                       "CY",    "DATE",    "TEXT",    "DISPATCH", "ERROR", "BOOL",
                                       "",      "UNKNOWN", "DECIMAL", "",         "I1",    "UI1",
                                       "UI2",   "UI4",     "I8",      "UI8",      "INT",   "UINT"};

int TypeNamed(std::string_view name) {
  if (name == "BYTES") return VT_ARRAY | VT_UI1;
  return static_cast<int>(std::ranges::find(kTypes, name) - kTypes);
}

Variant FromAscii(const std::string& text) {
  return Variant::FromText(std::u16string(text.begin(), text.end()));
}

std::string Show(const Variant& value) {
  Variant text;
  if (FAILED(VariantChangeType(text.ptr(), &value.get(), 0, VT_BSTR))) return "nothing";
  const std::u16string_view wide = View(text.get().bstrVal);
  return {wide.begin(), wide.end()};
}

/// Replaces the value. The new one as text, or the status in a word.
std::string Convert(Variant& value, int type, USHORT flags = 0) {
  Variant target = Variant::FromText(u"untouched");
  const auto wanted = static_cast<VARTYPE>(type);
  const HRESULT status = VariantChangeType(target.ptr(), &value.get(), flags, wanted);
  if (FAILED(status)) {
    EXPECT_EQ(Show(target), "untouched");
    return status == DISP_E_OVERFLOW       ? "overflow"
           : status == DISP_E_TYPEMISMATCH ? "mismatch"
                                           : "?";
  }
  EXPECT_EQ(target.type(), wanted);
  value = std::move(target);
  return Show(value);
}

/// A value from a text, where _ is a blank and '' nothing, or from the word for one that no text
/// gives; then taken through the types that follow.
struct Row {
  explicit Row(std::istream& words) {
    words >> shown;
    std::ranges::replace(shown, '_', ' ');
    value = shown == "#inf"     ? Variant::FromR8(HUGE_VAL)
            : shown == "#nan"   ? Variant::FromR8(std::nan(""))
            : shown == "#one"   ? Variant::FromBool(true)
            : shown == "#null"  ? Variant::Null()
            : shown == "#empty" ? Variant()
                                : FromAscii(shown == "''" ? "" : shown);
    if (shown == "#one") value.ptr()->boolVal = 1;  // as other languages make them
    while (words >> sign && TypeNamed(sign) != std::ssize(kTypes)) {
      shown = Convert(value, TypeNamed(sign));
    }
  }
  explicit Row(const std::string& text) : Row(*std::make_unique<std::istringstream>(text)) {}

  Variant value;
  std::string shown;
  std::string sign;  ///< behind the types
};

// Conversions to what is shown; two values as they stand to each other ("?" for no order, "!" when
// they are not comparable).
TEST_F(VariantTest, ConvertsAndCompares) {
  const char* const table = R"(
      -5 I1 = -5 | 6.5 I4 = 6 | -.5 I4 = 0 | 12E-1 I4 = 1 | &HfF I4 = 255 | &o17 R8 = 15 | __-42_ I2 = -42
      | 1e99999999999 I4 = overflow | -1e-400 R8 = 0 | 1e39 R4 = overflow | #True# BOOL = -1
      | 2.50000000000000000000000000000000000000000001 I4 = 3 | 1.23455 CY = 1.2346 | 1.23445 CY = 1.2344
      | 922337203685477.5808 CY = overflow | -922337203685477.5808 CY = -922337203685477.5808
      | 79228162514264337593543950335 DECIMAL = 79228162514264337593543950335
      | 79228162514264337593543950336 DECIMAL = overflow | 18446744073709551615 UI8 CY = overflow
      | 7.9228162514264337593543950336 DECIMAL = 7.922816251426433759354395034
      | -0.0000000000000000000000000005 DECIMAL = -0.0000000000000000000000000005
      | 0.30000000000000004 R8 = 0.3 | 0.3333333333333333 R8 = 0.333333333333333 | 1e15 R8 = 1E+15
      | 0.00000015 R8 = 1.5E-07 | 0.33333334 R4 = 0.3333333 | 12345678 R4 = 1.234568E+07
      | -3.5 R8 I4 = -4 | 255.5 R8 UI1 = overflow | 255.4999 R8 UI1 = 255 | 0.1 R4 DECIMAL = 0.1
      | 0.03125 R8 CY = 0.0312 | 2.5 CY I4 = 2 | 1.2345 CY R8 = 1.2345 | 1.23455 DECIMAL CY = 1.2346
      | -1e300 R8 I8 = overflow | 1e300 R8 CY = overflow | 1e300 R8 DECIMAL = overflow | #inf DATE = overflow
      | #inf I4 = overflow | #inf DECIMAL = overflow | #nan I4 = overflow | 1e-300 R8 BOOL = -1
      | true BOOL UI1 = 255 | true BOOL UI8 = 18446744073709551615 | #one I1 = 1 | #one UI8 = 1 | #one R4 = 1
      | #one DECIMAL = 1 | #one DATE = 1899-12-31 | #one TEXT = -1 | -1 I1 UI1 = 255 | 200 UI1 I1 = -56
      | 65535 UI2 I2 = -1 | -2 I2 UI2 = 65534 | -1 I4 UINT = 4294967295 | 4294967295 UI4 INT = -1
      | -1 I8 UI8 = 18446744073709551615 | 18446744073709551615 UI8 I8 = -1 | -1 I2 UI4 = overflow
      | 1 I4 BYTES = mismatch | 5 ERROR = mismatch | 5 UNKNOWN = mismatch | #null TEXT = mismatch
      | #null EMPTY = mismatch | #empty NULL TEXT = mismatch | 5 EMPTY TEXT = | abc BYTES TEXT = abc
      | abc BYTES NULL = nothing | #empty DATE = 1899-12-30 | 2024-03-05 DATE R8 = 45356
      | 45356.5 R8 DATE I4 = 45356 | 61 R8 DATE = 1900-03-01 | -657434 R8 DATE = 0100-01-01
      | -657435 R8 DATE = overflow | 2958465.99 R8 DATE = 9999-12-31_23:45:36 | 2958465.999999 R8 DATE = overflow
      | 36585.999995 R8 DATE = 2000-03-01 | 36585.999994 R8 DATE = 2000-02-29_23:59:59
      | -1.75 R8 DATE = 1899-12-29_18:00:00 | -1.999999 R8 DATE = 1899-12-30
      | _2024-3-5_6:0:00_ DATE = 2024-03-05_06:00:00 | 2024-03-05T18:00 DATE = 2024-03-05_18:00:00
      | 00:00:00.5 DATE = 1899-12-30_00:00:01 | 3:5 DATE = 1899-12-30_03:05:00
      | 1_am DATE = 1899-12-30_01:00:00 | 12:59_pm DATE = 1899-12-30_12:59:00 | 2-Jan-1970 DATE = 1970-01-02
      | 12:59:01AM DATE = 1899-12-30_00:59:01 | 30_sept_29__11_pm DATE = 2029-09-30_23:00:00
      | FEBRUARY_29,_2000_0:00 DATE = 2000-02-29 | May.1/30 DATE = 1930-05-01
      | 99_2_December DATE = 1999-12-02 | dec_31_0100 DATE = 0100-12-31
      | 2 I4 < 2.5 R8 | -1 I1 < 0 UI1 | 9007199254740992 I8 < 9007199254740993 UI8 | 7 I2 ~ 7.0 DECIMAL
      | -2.25 DECIMAL < -2.2 CY | -10 DECIMAL < 9 I4 | -0.0 DECIMAL ~ 0 I4 | 0.5 R4 ~ 0.5 R8
      | 99.99 CY < 100 I2 | -79228162514264337593543950335 DECIMAL < -18446744073709551615 DECIMAL
      | true BOOL < 0 I4 | 2000-01-01 DATE < 2000-01-02 DATE | 36526 R8 ~ 2000-01-01 DATE
      | a < b | B < a | a < ab | 999 I4 < 1 | #empty ~ 0 R8 | #empty < 1 CY | #empty < z
      | #empty ~ #empty | #null ? 1 I4 | #null ? #null | #nan ? 1 I4 | #nan ? #nan | a ! b BYTES)";
  const auto order = [](VARIANT* a, VARIANT* b) {
    const HRESULT found = VarCmp(a, b, 0, 0);
    return std::string(1, found == DISP_E_TYPEMISMATCH ? '!' : "<~>?"[found]);
  };
  std::istringstream rows(table);
  for (std::string text; std::getline(rows, text, '|');) {
    std::istringstream words(text);
    Row left(words);
    if (left.sign == "=") {
      std::string expected;
      words >> expected;
      std::ranges::replace(expected, '_', ' ');
      EXPECT_EQ(left.shown, expected) << text;
    } else {
      Row right(words);
      VARIANT reference = Reference(VT_VARIANT, right.value.ptr());
      EXPECT_EQ(order(left.value.ptr(), &reference), left.sign) << text;
      EXPECT_EQ(order(&reference, left.value.ptr()), left.sign == "<" ? ">" : left.sign) << text;
    }
  }
  EXPECT_EQ(VarCmp(FromAscii("TAP").ptr(), FromAscii("tap").ptr(), 0, NORM_IGNORECASE), VARCMP_EQ);
  EXPECT_EQ(VarBstrCmp(Bstr(u"z").get(), nullptr, 0, NORM_IGNORECASE), VARCMP_GT);
}

// Numbers in other forms, dates with parts missing, out of range, badly divided, of another
// country.
TEST_F(VariantTest, OtherTextIsNoNumberOrDate) {
  std::istringstream words(
      "'' _ . - 1,5 1e 1_2 0x10 &H &H10000000000000000 inf nan yes 5\x01 2024-03 2024-13-01 "
      "2023-02-29 0099-12-31 24-03-05 2024-03-05_24:00 2024-03-05_12:60 2024-03-05_12:00:60 "
      "2024-03-05_12 2024-03-05x12:00 2024-03-05_12:00:00. 13:00_PM 03/05/2024 2024--3-05 12: "
      "12:00: "
      "am 2_Jan Jan_1970 2_Ja_1970 2_Janus_1970 2_Jan_Feb_1970 2_3_1970 30_Feb_2000 2--Jan-1970 "
      "2_Jan_12345 2_Jan_0070 2_Jan_1970_1 1_am_pm 1_noon");
  for (std::string text; words >> text;) {
    for (const char* type : {" I4", " R8", " BOOL", " CY", " DECIMAL", " DATE"}) {
      EXPECT_EQ(Row(text + type).shown, "mismatch") << text << type;
    }
  }
}

// Every whole type takes exactly its own range, from text as from the widest numbers.
TEST_F(VariantTest, LimitsOfTypes) {
  std::istringstream words(R"(I1 -128 127 -129 128   UI1 0 255 -1 256   I2 -32768 32767 -32769 32768
      UI2 0 65535 -1 65536   I4 -2147483648 2147483647 -2147483649 2147483648
      INT -2147483648 2147483647 -2147483649 2147483648   UINT 0 4294967295 -1 4294967296
      I8 -9223372036854775808 9223372036854775807 -9223372036854775809 9223372036854775808
      UI8 0 18446744073709551615 -1 18446744073709551616)");
  for (std::string type, text; words >> type;) {
    for (const bool fits : {true, true, false, false}) {
      words >> text;
      EXPECT_EQ(Row(text + " " + type).shown, fits ? text : "overflow");
      EXPECT_EQ(Row(text + " DECIMAL " + type).shown, fits ? text : "overflow");
    }
  }
}

TEST_F(VariantTest, EverySecondSurvivesPartsAndText) {
  std::mt19937 random = Random(7);
  for (int i = 0; i < 20000; ++i) {
    const LONG day = static_cast<LONG>(random() % 3615900) - 657434;
    const double time = static_cast<int>(random() % 86400) / 86400.0;
    const DATE date = day < 0 ? day - time : day + time;
    SYSTEMTIME parts{};
    ASSERT_TRUE(VariantTimeToSystemTime(date, &parts));
    EXPECT_EQ(parts.wDayOfWeek, ((day + 6) % 7 + 7) % 7) << "day zero was a Saturday";
    DATE back = 0;
    ASSERT_TRUE(SystemTimeToVariantTime(&parts, &back));
    ASSERT_DOUBLE_EQ(back, date);
    Variant text = Variant::FromDate(date);
    Convert(text, VT_BSTR);
    Convert(text, VT_DATE);
    ASSERT_DOUBLE_EQ(text.get().date, date);
  }
}

TEST_F(VariantTest, CopiesOwnWhatTheyHoldAndFollowReferences) {
  const Variant empty = Variant::FromBstr(Bstr()).Copy();
  ASSERT_NE(empty.get().bstrVal, nullptr) << "others read it without looking";
  EXPECT_EQ(empty.get().bstrVal[0], 0);

  LONG number = 42;
  VARIANT toNumber = Reference(VT_I4, &number);
  VARIANT toVariant = Reference(VT_VARIANT, &toNumber);
  Variant text = FromAscii("42");
  Variant bytes = text.Copy();
  Variant decimal = text.Copy();
  Convert(bytes, VT_ARRAY | VT_UI1);
  Convert(decimal, VT_DECIMAL);
  for (const VARIANT& source :
       {toNumber, toVariant, text.get(), bytes.get(), Reference(VT_BSTR, &text.get().bstrVal),
        Reference(VT_ARRAY | VT_UI1, &bytes.get().parray), Reference(VT_DECIMAL, &decimal.get())}) {
    Variant copy;
    ASSERT_EQ(VariantCopyInd(copy.ptr(), &source), S_OK);
    EXPECT_EQ(copy.type(), source.vt == toVariant.vt ? VT_I4 : source.vt & ~VT_BYREF);
    EXPECT_EQ(Show(copy), "42");
    EXPECT_TRUE(OwnsNothing(source.vt) || copy.get().byref != source.byref);
  }
  EXPECT_EQ(VariantClear(&toNumber), S_OK);
  EXPECT_EQ(number, 42) << "what is referred to stays";

  // A target that owns what the source refers to gets the value, not the freed memory.
  const VARIANT toSelf = Reference(VT_VARIANT, text.ptr());
  ASSERT_EQ(VariantCopyInd(text.ptr(), &toSelf), S_OK);
  ASSERT_EQ(VariantChangeTypeEx(text.ptr(), &toSelf, 0x407, 0, VT_R8), S_OK);
  EXPECT_EQ(text.get().dblVal, 42);

  std::vector<std::pair<VARIANT, HRESULT>> bad = {{Reference(VT_VARIANT, &toVariant), E_INVALIDARG},
                                                  {Reference(VT_I4, nullptr), E_INVALIDARG}};
  toVariant.pvarVal = &toVariant;
  for (int type : {VT_VARIANT + 0, 15, 24, 36, 72, 0x0FFF, 0x1003, 0x8003, VT_ARRAY + VT_EMPTY,
                   VT_BYREF + VT_NULL, VT_ARRAY + VT_VECTOR + VT_I4}) {
    bad.emplace_back(VARIANT{}, DISP_E_BADVARTYPE).first.vt = static_cast<VARTYPE>(type);
    EXPECT_EQ(VariantClear(&bad.back().first), DISP_E_BADVARTYPE) << type;
    EXPECT_EQ(VariantCopy(text.ptr(), &bad.back().first), DISP_E_BADVARTYPE) << type;
    EXPECT_EQ(VariantChangeType(text.ptr(), text.ptr(), 0, bad.back().first.vt), DISP_E_BADVARTYPE);
  }
  for (const auto& [value, status] : bad) {
    EXPECT_EQ(VariantCopyInd(text.ptr(), &value), status) << value.vt;
    EXPECT_EQ(VariantChangeType(text.ptr(), &value, 0, VT_I4), status) << value.vt;
  }
  EXPECT_EQ(text.get().dblVal, 42);
  decimal.ptr()->decVal.scale = 29;
  EXPECT_EQ(Convert(decimal, VT_I4), "?");
  decimal.ptr()->vt = VT_ERROR;
  for (const int type : {VT_I4, VT_EMPTY, VT_NULL}) EXPECT_EQ(Convert(decimal, type), "mismatch");
  EXPECT_EQ(Convert(text = Variant::FromBool(true), VT_BSTR, VARIANT_ALPHABOOL), "True");
}

TEST_F(VariantTest, ObjectsGiveTheirDefaultPropertyOrAnotherInterface) {
  CountingObject object(12);
  CountingObject plain;
  for (const auto& [holder, from, to, flags, expected] :
       {std::tuple(&object, VT_DISPATCH, VT_R8, USHORT{0}, "12"),
        {&object, VT_DISPATCH, VT_I4, VARIANT_NOVALUEPROP, "mismatch"},
        {&object, VT_DISPATCH, VT_UNKNOWN, 0, "nothing"},
        {&object, VT_UNKNOWN, VT_DISPATCH, 0, "12"},
        {&plain, VT_UNKNOWN, VT_DISPATCH, 0, "mismatch"},
        {&plain, VT_UNKNOWN, VT_BSTR, 0, "mismatch"}}) {
    Variant value = holder->Value(from);
    EXPECT_EQ(Convert(value, to, flags), expected) << from << " to " << to;
    EXPECT_EQ(holder->m_references, value.type() == VT_R8 ? 1U : 2U);
  }
  EXPECT_EQ(object.m_references + plain.m_references, 2U);
}

}  // namespace
}  // namespace orxdb::test
