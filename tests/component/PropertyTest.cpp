// Properties of tools and their fields, default values and names, and values as text.
#include <algorithm>
#include <bit>

#include "tests/component/ComponentFixture.h"

namespace orxdb::test {
namespace {

class PropertyTest : public ComponentTest {
 protected:
  std::string Shown(VARIANT value, LONG precision = -1) {
    Bstr text;
    const HRESULT result = m_db->VariantToUIString(&value, text.put(), precision);
    EXPECT_EQ(TakeError(), result == S_OK ? "" : kReportedError);
    return result == S_OK ? NarrowBstr(text.get()) : "fails";
  }
};

TEST_F(PropertyTest, FieldTypes) {
  OpenSeeded(
      "CREATE TABLE WIDE (ID INTEGER PRIMARY KEY AUTOINCREMENT, F0 BOOLEAN, F1 BYTE, F2 SHORT,"
      " F3 LONG, F4 CURRENCY, F5 SINGLE, F6 DOUBLE, F7 DATETIME, F8 TEXT(5), F9 LONGTEXT,"
      " F10 LONGBINARY, F11 GUID, F12 BINARY(4), F13 BIGINT);"
      "CREATE VIEW Q_WIDE AS SELECT * FROM WIDE; INSERT INTO TYPES_DATA "
      "(TOOLTABLE_NAME, SEARCH_PARAM) VALUES ('Q_WIDE', 'a{b}' || char(13, 10, 13, 10) || "
      "'c^d;e' || char(13, 10) || 'xy' || char(10) || '{'), ('Q_WIDER', 'a')");
  // The types as hosts get them: numbers of variant types, 8192 for an array, 1 for none.
  EXPECT_EQ(Gives(&Db::GetPropsTypes, "WIDE"),
            "ID|F0|F1|F2|F3|F4|F5|F6|F7|F8|F9|F10|F11|F12|F13/"
            "3|11|17|2|3|6|4|5|7|8|8|8209|72|1|1");
  EXPECT_EQ(TakeError(), kReportedError) << "told about the fields without a type";
  for (const auto* table : {"NONE", "WIDER"}) {
    EXPECT_EQ(Gives(&Db::GetPropsTypes, table), "nothing/nothing");
  }
  EXPECT_EQ(Gives(&Db::GetFieldType, "WIDE", "f9"), std::to_string(VT_BSTR));
  EXPECT_EQ(Gives(&Db::GetFieldType, "WIDE", "F13"), "fails");
  EXPECT_EQ(Gives(&Db::GetFieldType, "WIDE", "Nope"), "fails");
  EXPECT_EQ(Gives(&Db::GetFieldType, "WIDER", "ID"), "fails");
  EXPECT_EQ(Gives(&Db::GetFieldType, "NONE", "ID"), "-99") << "untouched";

  EXPECT_EQ(Gives(&Db::GetSearchParamNames, "TAP"), "Diameter|Unit");
  EXPECT_EQ(Gives(&Db::GetSearchParamNames, "WIDE"), "a|c|x|") << "the first part of each line";
  Variant untouched = Variant::FromI4(1);
  EXPECT_EQ(Gives(&Db::GetSearchParamNames, "MILL", untouched.ptr()), "") << "no parameters";
  EXPECT_EQ(Show(untouched.get()), "1");
  EXPECT_EQ(Gives(&Db::GetSearchParamNames, "NONE"), "fails");
  EXPECT_EQ(Gives(&Db::GetToolProps, "NONE", 1), "fails");
  EXPECT_EQ(Gives(&Db::GetDefPropsValues, "NONE"), "nothing/nothing");
  EXPECT_EQ(Gives(&Db::GenerateDefToolName, "NONE", 1), "nothing");
  EXPECT_ANY_THROW(Gives(&Db::GetSearchParamNames, "WIDER")) << "a table that does not open";
}

TEST_F(PropertyTest, FindingInArrays) {
  Properties tool;
  tool.Add("Name", "a").Add("name", "b").Add("Name", "c").Add("Null", Variant::Null());
  const auto find = [&](const char* name, LONG lowest = 0, LONG lowestValue = 0) {
    return Gives(&Db::FindPropByNameInArray, name, tool.Names(lowest), tool.Values(lowestValue));
  };
  EXPECT_EQ(find("Name"), "a/0") << "the first of two";
  EXPECT_EQ(find("name"), "b/1");
  EXPECT_EQ(find("Null"), "null/3");
  EXPECT_EQ(find("Nam"), "nothing/-99");
  EXPECT_EQ(find("name", -5, -5), "b/-4");
  EXPECT_EQ(find("Name", 1), "b/1") << "the same index";
  EXPECT_EQ(find("Null", 1), "nothing/4") << "behind the values";
  Variant number = Variant::FromI4(17);
  for (VARIANT* noNames : {number.ptr(), tool.Values(), static_cast<VARIANT*>(nullptr)}) {
    EXPECT_EQ(Gives(&Db::FindPropByNameInArray, "Name", noNames, tool.Values()), "nothing/-99");
  }
  EXPECT_EQ(Gives(&Db::FindPropByNameInArray, "Name", tool.Names(), tool.Names()), "nothing/-99");
  EXPECT_EQ(Gives(&Db::FindPropByNameInArray, "Name", tool.Names(), tool.Values(), number.ptr()),
            "-99")
      << "not looked for";
  EXPECT_EQ(number.get().lVal, 17);
}

// A table of taps and another, a tool with a name and one without, for every format; # stands for M
// in names of taps and for m in others.
TEST_F(PropertyTest, NamesByFormat) {
  using Case = std::pair<std::string, std::string>;
  Properties tool;
  tool.Add("Diameter", 10.5).Add("Unit", "mm").Add("Inch", "in").Add("Coating", "Absent");
  tool.Add("Flutes", 4).Add("Null", Variant::Null()).Add("Empty", Variant()).Add("Note", "");
  tool.Add("Coolant", Variant::FromBool(true)).Add("Left", Variant::FromBool(false));
  tool.Add("Text", "fräsen 刀").Add("Name", "own");
  Properties nameless;
  nameless.Add("Flutes", 4).Add("Name", Variant::Null());
  OpenSeeded();
  for (const auto& [format, name] :
       {Case("", ""), Case("%", ""), Case("a%", "a"), Case("%%a%b", "a"), Case("Mill", "Mill    "),
        Case("%flutes%-%Note%", "-"), Case("D%Diameter%_%Unit%", "D10.5_#"),
        Case("D%Diameter%_%Inch%", "D10.5_i"), Case("%Diameter%x%Flutes%mm", "10.5x4"),
        Case("T%Unit%_%Coating%_%Flutes%", "T#_4"), Case("Ø%Coating%a%Coating%%Coating%", ""),
        Case("b🔩%Coating%é%Note%", "bé"), Case("%Coolant%/%Left%", "Yes/No"),
        Case("a_%Nope%_%Empty%____%Null%_b%Nope%", "a_b"), Case("%Flutes%%Flutes%%", "44"),
        Case("a%Flutes%b%Flutes%c%", "a4b4c"), Case("_____________x", "_x    "),
        Case("%Text%", "fräsen 刀")}) {
    SCOPED_TRACE(format);
    Sql("UPDATE TYPES_DATA SET DEF_NAME_FORMAT = '" + format + "'");
    Reopen();
    VARIANT* values = tool.Values();
    for (const auto& [table, unit] : {std::pair("TAP", 'M'), std::pair("MILL", 'm')}) {
      std::string expected = name;
      std::ranges::replace(expected, '#', unit);
      EXPECT_EQ(Gives(&Db::GenerateDefToolName2, table, tool.Names(), values), expected);
    }
    EXPECT_THAT(Show(*values), testing::EndsWith("|own"));
    values = nameless.Values();
    const std::string made = Gives(&Db::GenerateDefToolName2, "MILL", nameless.Names(), values);
    EXPECT_EQ(Show(*values), "4|" + made);
    Variant none;
    Gives(&Db::GenerateDefToolName2, "MILL", none.ptr(), none.ptr());
  }
}

TEST_F(PropertyTest, TextsOfEachType) {
  const Bstr text(u"it's Ø \"6\"");
  const auto real = [](double value) { return std::bit_cast<LONGLONG>(value); };
  using Case = std::tuple<int, LONGLONG, const char*>;
  for (const auto& [type, payload, texts] :
       {Case(VT_EMPTY, 0, "NULL/"), Case(VT_NULL, 0, "NULL/"), Case(VT_I2, -300, "-300/-300"),
        Case(VT_I4, -7, "-7/-7"), Case(VT_I1, -5, "-5/-5"), Case(VT_UI1, 200, "200/200"),
        Case(VT_UI2, 65535, "65535/65535"), Case(VT_UI4, 4294967295, "-1/4294967295"),
        Case(VT_R4, std::bit_cast<LONG>(0.25f), "0.250000/0.25"),
        Case(VT_R8, real(-1e-7), "-0.000000/-1E-07"),
        Case(VT_R8, real(1e21), "1000000000000000000000.000000/1E+21"), Case(VT_BSTR, 0, "/"),
        Case(VT_BSTR, reinterpret_cast<LONGLONG>(text.get()), "it's Ø \"6\"/it's Ø \"6\""),
        // Flags, and what has no text.
        Case(VT_BOOL, -1, "TRUE/Yes"), Case(VT_BOOL, 2, "TRUE/Yes"), Case(VT_BOOL, 0, "FALSE/No"),
        Case(VT_DATE, 0, "fails/fails"), Case(VT_CY, 0, "fails/fails"),
        Case(VT_I8, 1, "fails/fails"), Case(VT_CLSID, 0, "fails/fails"),
        Case(VT_ARRAY | VT_UI1, 0, "fails/fails")}) {
    VARIANT value{};
    value.vt = static_cast<VARTYPE>(type);
    value.llVal = payload;
    EXPECT_EQ(Gives(&Db::VariantToSQLString, &value) + '/' + Shown(value), texts) << type;
  }
}

TEST_F(PropertyTest, PrecisionFromNoneToEightDecimals) {
  using Case = std::tuple<double, LONG, const char*>;
  for (const auto& [value, precision, text] :
       {Case(2.5, 0, "2"), Case(3.5, 0, "4"), Case(10.25, 1, "10.2"), Case(10.25, 3, "10.250"),
        Case(-0.5, 8, "-0.50000000"), Case(10.25, 9, "10.25"), Case(10.25, -1, "10.25")}) {
    EXPECT_EQ(Shown(Variant::FromR8(value).get(), precision), text);
  }
  // The eight payload bytes count as one real, whatever stands behind the four of a VT_R4.
  Variant real = Variant::FromR8(123.456);
  real.ptr()->vt = VT_R4;
  EXPECT_EQ(Shown(real.get(), 3), "123.456");
}

TEST_F(PropertyTest, PatternKeepsLettersDigitsBlanksAndWildcards) {
  EXPECT_EQ(Gives(&Db::FilterStrValueForQuery, ".,\\/|~!@#$%^&()-+='\"<>?;:"),
            std::string(25, '?'));
  EXPECT_EQ(Gives(&Db::FilterStrValueForQuery, "St 37-2 *[a] {b}_` Ø"), "St 37?2 *[a] {b}_` Ø");
  EXPECT_EQ(Gives(&Db::FilterStrValueForQuery, BSTR{}), "");
}

}  // namespace
}  // namespace orxdb::test
