// What late-bound hosts may pass for a parameter, and what they get back.
#include "platform/framework/Text.h"
#include "tests/dispatch/LateCall.h"

namespace orxdb::test {
namespace {

class ArgumentTest : public ComponentTest {
 protected:
  const Variant m_numbers = Variant::FromArray(VT_I4, SafeArray::Vector(VT_I4, 1));
};

TEST_F(ArgumentTest, ConvertsValues) {
  BSTR text = nullptr;
  SHORT three = 3;
  VARIANT direct = Reference(VT_I2, &three);
  Variant four = Variant::FromText(u" 4 ");
  const Variant words = Variant::FromText(u"four");
  VARIANT impossible{};
  impossible.vt = VT_VARIANT;
  struct Case {
    VARIANT precision;
    HRESULT status;
    std::u16string_view text{};
  };
  for (const Case& row : {
           Case{Variant::FromR8(2.4).detach(), S_OK, u"0.33"},
           {Variant::FromUI1(1).detach(), S_OK, u"0.3"},
           {direct, S_OK, u"0.333"},
           {Reference(VT_VARIANT, &direct), S_OK, u"0.333"},
           {Reference(VT_VARIANT, four.ptr()), S_OK, u"0.3333"},
           {VARIANT{}, S_OK, u"0"},
           {Variant::Null().detach(), DISP_E_TYPEMISMATCH},
           {words.get(), DISP_E_TYPEMISMATCH},
           {m_numbers.get(), DISP_E_TYPEMISMATCH},
           {Variant::FromR8(3e9).detach(), DISP_E_OVERFLOW},
           {Reference(VT_I4, nullptr), E_INVALIDARG},
           {Reference(VT_VARIANT, nullptr), E_INVALIDARG},
           {impossible, DISP_E_BADVARTYPE},
           {Reference(VT_VARIANT, &impossible), DISP_E_BADVARTYPE},
       }) {
    const VARIANT third = Variant::FromR8(1.0 / 3).detach();
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
  const Variant table = Variant::FromText(u"EMPTY");
  const auto count = [&](VARIANT out) {
    return Call(*m_db, u"GetSelectedRecordCount", {table.get(), out});
  };
  // The type of the place stays; a variant that holds its value takes the method's own.
  for (const VARTYPE type : {VT_UI1, VT_I2, VT_I4, VT_R4, VT_R8, VT_DATE, VT_BSTR}) {
    Variant place;
    VARIANT direct = Reference(type, &place.ptr()->llVal);
    using Passed = std::pair<VARIANT, VARTYPE>;
    for (const auto& [out, shown] :
         {Passed(direct, type), Passed(Reference(VT_VARIANT, &direct), type),
          Passed(Reference(VT_VARIANT, place.ptr()), VT_I4)}) {
      ASSERT_EQ(VariantChangeType(place.ptr(), &Variant::FromI4(12).get(), 0, type), S_OK);
      EXPECT_EQ(count(out).status, S_OK) << type;
      EXPECT_EQ(place.type(), shown);
      EXPECT_EQ(VariantChangeType(place.ptr(), place.ptr(), 0, VT_I4), S_OK);
      EXPECT_EQ(place.get().lVal, 130) << type;
    }
    EXPECT_EQ(direct.vt, VT_BYREF | type);
  }
  BYTE bytes[] = {1, 2};
  EXPECT_EQ(count(Reference(VT_UI1, bytes)).status, S_OK);
  EXPECT_EQ(bytes[1], 2);
  DECIMAL decimal{};
  decimal.wReserved = 5;
  EXPECT_EQ(count(Reference(VT_DECIMAL, &decimal)).status, S_OK);
  EXPECT_EQ(decimal.Lo64, 130u);
  EXPECT_EQ(count(Variant::FromI4(3).detach()).status, S_OK);

  CHAR small = 5;
  SAFEARRAY* array = nullptr;
  Variant word = Variant::FromText(u"twelve");
  using Refusal = std::pair<VARIANT, HRESULT>;
  for (const auto& [place, status] :
       {Refusal{Reference(VT_I1, &small), DISP_E_OVERFLOW},
        Refusal{Reference(VT_VARIANT, word.ptr()), DISP_E_TYPEMISMATCH},
        Refusal{Reference(VT_ARRAY | VT_I4, &array), DISP_E_TYPEMISMATCH}}) {
    const Answer refused = count(place);
    EXPECT_EQ(refused.status, status);
    EXPECT_EQ(refused.argument, 0u);
  }
  EXPECT_EQ(small, 5);
  EXPECT_EQ(TakeError(), "");
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
