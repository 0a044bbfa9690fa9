// What late-bound hosts may pass for a parameter, and what they get back.
#include "platform/framework/Text.h"
#include "tests/dispatch/LateCall.h"

namespace orxdb::test {
namespace {

class ArgumentTest : public ComponentTest {
 protected:
  HRESULT ToSql(VARIANT value, VARIANT text) {
    return Call(*m_db, u"VariantToSQLString", {value, text}).status;
  }
  Answer CountInto(VARIANT out) {
    const Variant table = Variant::FromText(u"EMPTY");
    return Call(*m_db, u"GetSelectedRecordCount", {table.get(), out});
  }

  const Variant m_numbers = Variant::FromArray(VT_I4, SafeArray::Vector(VT_I4, 1));
};

TEST_F(ArgumentTest, ConvertsValues) {
  BSTR text = nullptr;
  const VARIANT third = Variant::FromR8(1.0 / 3).detach();
  SHORT three = 3;
  Variant four = Variant::FromText(u" 4 ");
  VARIANT direct = Reference(VT_I2, &three);
  const Variant words = Variant::FromText(u"four");
  VARIANT impossible{};
  impossible.vt = VT_VARIANT;
  struct Case {
    VARIANT precision;
    HRESULT status;
    std::u16string_view text = u"";
  };
  for (const Case& row : {
           Case{Variant::FromR8(2.4).detach(), S_OK, u"0.33"},
           {direct, S_OK, u"0.333"},
           {Reference(VT_VARIANT, &direct), S_OK, u"0.333"},
           {Reference(VT_VARIANT, four.ptr()), S_OK, u"0.3333"},
           {VARIANT{}, S_OK, u"0"},
           {Variant::Null().detach(), DISP_E_TYPEMISMATCH},
           {words.get(), DISP_E_TYPEMISMATCH},
           {m_numbers.get(), DISP_E_TYPEMISMATCH},
           {Variant::FromR8(3e9).detach(), DISP_E_OVERFLOW},
           {Reference(VT_I4, nullptr), E_INVALIDARG},
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
  OpenSeeded(
      "INSERT INTO EMPTY (Name) WITH n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n "
      "WHERE i < 130) SELECT i FROM n;");
  Variant places[] = {Variant::FromI4(0), Variant::FromR8(0.5), Variant::FromText(u"12")};
  for (Variant& place : places) {
    const VARTYPE type = place.type();
    EXPECT_EQ(CountInto(Reference(type, &place.ptr()->llVal)).status, S_OK);
    Bstr text;
    EXPECT_EQ(m_db->VariantToSQLString(place.ptr(), text.put()), S_OK);
    EXPECT_EQ(text.view(), u"130") << type;
  }
  BYTE bytes[] = {1, 2};
  EXPECT_EQ(CountInto(Reference(VT_UI1, bytes)).status, S_OK);
  EXPECT_EQ(bytes[0], 130);
  EXPECT_EQ(bytes[1], 2);
  DECIMAL decimal{};
  EXPECT_EQ(CountInto(Reference(VT_DECIMAL, &decimal)).status, S_OK);
  EXPECT_EQ(decimal.Lo64, 130u);
  Variant any = Variant::FromText(u"12");
  EXPECT_EQ(CountInto(Reference(VT_VARIANT, any.ptr())).status, S_OK);
  EXPECT_EQ(any.type(), VT_I4);
  EXPECT_EQ(any.get().lVal, 130);
  EXPECT_EQ(CountInto(Variant::FromI4(3).detach()).status, S_OK);

  CHAR small = 5;
  Variant word = Variant::FromText(u"twelve");
  for (const auto& [place, status] : {std::pair(Reference(VT_I1, &small), DISP_E_OVERFLOW),
                                      {Reference(VT_VARIANT, word.ptr()), DISP_E_TYPEMISMATCH}}) {
    const Answer refused = CountInto(place);
    EXPECT_EQ(refused.status, status);
    EXPECT_EQ(refused.argument, 0u);
  }
  EXPECT_EQ(small, 5);
  EXPECT_EQ(TakeError(), "");
}

TEST_F(ArgumentTest, ReplacesStringsAndLeavesUntouchedOnesAlone) {
  BSTR text = Bstr(u"before").detach();
  const VARIANT out = Reference(VT_BSTR, &text);
  SHORT number = 12;
  EXPECT_EQ(ToSql(Reference(VT_I2, &number), out), S_OK);
  EXPECT_EQ(ToSql(m_numbers.get(), out), DISP_E_EXCEPTION);
  EXPECT_EQ(View(text), u"12");
  SysFreeString(text);
  DOUBLE real = 0;
  EXPECT_EQ(ToSql(Variant::FromI4(17).detach(), Reference(VT_R8, &real)), S_OK);
  EXPECT_EQ(real, 17.0);
}

TEST_F(ArgumentTest, PassesArraysAndBookmarks) {
  const Variant name = Variant::FromText(u"TAP");
  // An array that is not what its variant says would be read as pointers.
  Variant wrong = Variant::FromArray(VT_BSTR, SafeArray::Vector(VT_R8, 2));
  for (const VARIANT& value : {wrong.get(), Reference(VT_VARIANT, wrong.ptr()),
                               Reference(VT_ARRAY | VT_BSTR, &wrong.ptr()->parray)}) {
    const std::vector<VARIANT> arguments{name.get(), value, value, VARIANT{}, VARIANT{}};
    EXPECT_EQ(Call(*m_db, u"FindPropByNameInArray", arguments).status, DISP_E_TYPEMISMATCH);
  }
  wrong.ptr()->vt = VT_ARRAY | VT_R8;

  OpenSeeded();
  std::vector<VARIANT> direct(1);
  EXPECT_EQ(Invoke(*m_db, IdOf(*m_db, u"GetToolTypes"), direct).status, S_OK);
  EXPECT_EQ(Strings(direct[0]).size(), 9u);
  VariantClear(direct.data());

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
