// What late-bound hosts may pass for a parameter, and what they get back.
#include <climits>

#include "platform/framework/Text.h"
#include "tests/dispatch/LateCall.h"

namespace orxdb::test {
namespace {

using ArgumentTest = ComponentTest;

TEST_F(ArgumentTest, ConvertsValues) {
  BSTR text = nullptr;
  VARIANT third = Variant::FromR8(1.0 / 3).detach();
  SHORT three = 3;
  Variant four = Variant::FromText(u" 4 ");
  VARIANT direct = Reference(VT_I2, &three);
  VARIANT nothing{};
  VARIANT null = Variant::Null().detach();
  const Variant words = Variant::FromText(u"four");
  const Variant array = Variant::FromArray(VT_I4, SafeArray::Vector(VT_I4, 1));
  VARIANT impossible{};
  impossible.vt = VT_VARIANT;
  struct Case {
    VARIANT precision;
    HRESULT status;
    std::u16string_view text = u"";
  };
  for (const Case& row : {
           Case{Variant::FromR8(2.4).detach(), S_OK, u"0.33"},
           {Variant::FromUI1(1).detach(), S_OK, u"0.3"},
           {Reference(VT_I2, &three), S_OK, u"0.333"},
           {Reference(VT_VARIANT, &direct), S_OK, u"0.333"},
           {Reference(VT_VARIANT, four.ptr()), S_OK, u"0.3333"},
           {nothing, S_OK, u"0"},
           {null, DISP_E_TYPEMISMATCH},
           {words.get(), DISP_E_TYPEMISMATCH},
           {array.get(), DISP_E_TYPEMISMATCH},
           {Variant::FromR8(3e9).detach(), DISP_E_OVERFLOW},
           {Reference(VT_I4, nullptr), E_INVALIDARG},
           {Reference(VT_VARIANT, nullptr), E_INVALIDARG},
           {impossible, DISP_E_BADVARTYPE},
           {Reference(VT_VARIANT, &impossible), DISP_E_BADVARTYPE},
       }) {
    const Answer answer =
        Call(*m_db, u"VariantToUIString", {third, Reference(VT_BSTR, &text), row.precision});
    EXPECT_EQ(answer.status, row.status) << row.precision.vt;
    EXPECT_EQ(answer.argument, row.status == S_OK ? 99u : 0u);
    EXPECT_EQ(View(text), row.text) << row.precision.vt;
    SysFreeString(std::exchange(text, nullptr));
  }
}

TEST_F(ArgumentTest, WritesResultsThroughInTheHostsType) {
  OpenSeeded();
  const Variant table = Variant::FromText(u"MILL");
  const auto count = [&](VARIANT out) {
    return Call(*m_db, u"GetSelectedRecordCount", {table.get(), out});
  };
  LONG whole = 0;
  EXPECT_EQ(count(Reference(VT_I4, &whole)).status, S_OK);
  EXPECT_EQ(whole, 9);
  DOUBLE real = 0.5;
  EXPECT_EQ(count(Reference(VT_R8, &real)).status, S_OK);
  EXPECT_EQ(real, 9.0);
  BYTE bytes[] = {1, 2};
  EXPECT_EQ(count(Reference(VT_UI1, bytes)).status, S_OK);
  EXPECT_EQ(bytes[0], 9);
  EXPECT_EQ(bytes[1], 2);
  DECIMAL decimal{};
  decimal.wReserved = 5;
  EXPECT_EQ(count(Reference(VT_DECIMAL, &decimal)).status, S_OK);
  EXPECT_EQ(decimal.Lo64, 9u);
  BSTR text = Bstr(u"12").detach();
  EXPECT_EQ(count(Reference(VT_BSTR, &text)).status, S_OK);
  EXPECT_EQ(View(text), u"9");
  SysFreeString(text);
  Variant any = Variant::FromText(u"12");
  EXPECT_EQ(count(Reference(VT_VARIANT, any.ptr())).status, S_OK);
  EXPECT_EQ(any.type(), VT_I4);
  EXPECT_EQ(any.get().lVal, 9);
  VARIANT inner = Reference(VT_R8, &real);
  real = 0;
  EXPECT_EQ(count(Reference(VT_VARIANT, &inner)).status, S_OK);
  EXPECT_EQ(real, 9.0);
  EXPECT_EQ(inner.vt, VT_BYREF | VT_R8);
  EXPECT_EQ(count(Variant::FromI4(3).detach()).status, S_OK);

  any = Variant::FromText(u"twelve");
  const Answer refused = count(Reference(VT_VARIANT, any.ptr()));
  EXPECT_EQ(refused.status, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(refused.argument, 0u);
  SAFEARRAY* array = nullptr;
  EXPECT_EQ(count(Reference(VT_ARRAY | VT_I4, &array)).status, DISP_E_TYPEMISMATCH);
}

TEST_F(ArgumentTest, RefusesResultsThatDoNotFit) {
  OpenSeeded(
      "INSERT INTO EMPTY (Name) WITH n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n "
      "WHERE i < 130) SELECT i FROM n;");
  CHAR small = 5;
  const Variant table = Variant::FromText(u"EMPTY");
  const Answer answer =
      Call(*m_db, u"GetSelectedRecordCount", {table.get(), Reference(VT_I1, &small)});
  EXPECT_EQ(answer.status, DISP_E_OVERFLOW);
  EXPECT_EQ(answer.argument, 0u);
  EXPECT_EQ(small, 5);
  EXPECT_EQ(TakeError(), "");
}

TEST_F(ArgumentTest, ReplacesStringsAndLeavesUntouchedOnesAlone) {
  Bstr text(u"before");
  const VARIANT out = Reference(VT_BSTR, text.put());
  *out.pbstrVal = Bstr(u"before").detach();
  EXPECT_EQ(Call(*m_db, u"VariantToSQLString", {Variant::FromBool(true).detach(), out}).status,
            S_OK);
  EXPECT_EQ(text.view(), u"TRUE");
  const Variant array = Variant::FromArray(VT_I4, SafeArray::Vector(VT_I4, 1));
  EXPECT_EQ(Call(*m_db, u"VariantToSQLString", {array.get(), out}).status, DISP_E_EXCEPTION);
  EXPECT_EQ(text.view(), u"TRUE");
  DOUBLE number = 0;
  EXPECT_EQ(
      Call(*m_db, u"VariantToSQLString", {Variant::FromI4(17).detach(), Reference(VT_R8, &number)})
          .status,
      S_OK);
  EXPECT_EQ(number, 17.0);
}

TEST_F(ArgumentTest, PassesVariantsByReferenceAndByValue) {
  BSTR text = nullptr;
  SHORT number = 12;
  const Variant name = Variant::FromText(u"TAP");
  const auto show = [&](VARIANT value) {
    const HRESULT status =
        Call(*m_db, u"VariantToSQLString", {value, Reference(VT_BSTR, &text)}).status;
    return std::pair(status, NarrowBstr(Bstr(View(text)).get()));
  };
  EXPECT_EQ(show(Reference(VT_I2, &number)), std::pair(S_OK, std::string("12")));
  EXPECT_EQ(show(name.get()), std::pair(S_OK, std::string("TAP")));
  SysFreeString(text);

  // An array that is not what its variant says would be read as pointers.
  Variant wrong = Variant::FromArray(VT_BSTR, SafeArray::Vector(VT_R8, 2));
  for (const VARIANT& value : {wrong.get(), Reference(VT_VARIANT, wrong.ptr()),
                               Reference(VT_ARRAY | VT_BSTR, &wrong.ptr()->parray)}) {
    VARIANT index{};
    EXPECT_EQ(
        Call(*m_db, u"FindPropByNameInArray", {name.get(), value, value, index, index}).status,
        DISP_E_TYPEMISMATCH);
  }
  wrong.ptr()->vt = VT_ARRAY | VT_R8;

  OpenSeeded();
  std::vector<VARIANT> direct(1);
  EXPECT_EQ(Invoke(*m_db, IdOf(*m_db, u"GetToolTypes"), direct).status, S_OK);
  EXPECT_EQ(Strings(direct[0]).size(), 9u);
  VariantClear(direct.data());
  SAFEARRAY* array = nullptr;
  EXPECT_EQ(Call(*m_db, u"GetToolTypes", {Reference(VT_ARRAY | VT_BSTR, &array)}).status,
            DISP_E_TYPEMISMATCH);

  // A bookmark goes in by value, however it is passed.
  Variant bookmark;
  EXPECT_EQ(First("TAP")["Name"], "M3");
  EXPECT_EQ(m_db->GetToolTableBookmark(name.get().bstrVal, bookmark.ptr()), S_OK);
  for (const VARIANT& passed : {bookmark.get(), Reference(VT_VARIANT, bookmark.ptr())}) {
    EXPECT_EQ(Next("TAP")["Name"], "M10");
    EXPECT_EQ(Call(*m_db, u"SetToolTableBookmark", {name.get(), passed}).status, S_OK);
  }
  EXPECT_EQ(Next("TAP")["Name"], "M10");
}

}  // namespace
}  // namespace orxdb::test
