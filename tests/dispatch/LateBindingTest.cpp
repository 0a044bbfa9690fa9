// Late-bound calls: names, arguments by position and name, their values, results, failures.
#include <algorithm>
#include <climits>

#include "platform/automation/ErrorInfo.h"
#include "platform/automation/LateBinding.h"
#include "platform/framework/Text.h"
#include "tests/component/ComponentFixture.h"
#include "tests/support/FailingAllocations.h"

namespace orxdb::test {
namespace {

class LateBindingTest : public ComponentTest {
 protected:
  ComPtr<ITypeInfo> Type() {
    ComPtr<ITypeInfo> type;
    EXPECT_EQ(m_db->GetTypeInfo(0, 0, type.put()), S_OK);
    return type;
  }
  std::vector<DISPID> Ids(std::vector<std::u16string> names, HRESULT expected) {
    std::vector<LPOLESTR> pointers(names.size());
    std::ranges::transform(names, pointers.begin(), [](auto& name) { return name.data(); });
    std::vector<DISPID> ids(names.size(), 77);
    auto described = ids;
    const auto count = static_cast<UINT>(names.size());
    EXPECT_EQ(m_db->GetIDsOfNames(IID_NULL, pointers.data(), count, 0, ids.data()), expected);
    EXPECT_EQ(DispGetIDsOfNames(Type().get(), pointers.data(), count, described.data()), expected);
    EXPECT_EQ(described, ids);
    return ids;
  }
  /// Calls through the description, asking for nothing but the status.
  HRESULT Bare(DISPID id, DISPPARAMS* params) {
    return DispInvoke(m_db.get(), Type().get(), id, DISPATCH_METHOD, params, nullptr, nullptr,
                      nullptr);
  }
  /// Calls with the arguments as they stand in DISPPARAMS: reversed, those named by `names` first.
  HRESULT Invoke(DISPID id, std::vector<VARIANT>& reversed, std::vector<DISPID> names = {},
                 int flags = DISPATCH_METHOD) {
    DISPPARAMS params{reversed.data(), names.data(), static_cast<UINT>(reversed.size()),
                      static_cast<UINT>(names.size())};
    VARIANT result = Variant::FromI4(7).detach();
    EXCEPINFO exception{};
    m_argument = 99;
    const HRESULT status = m_db->Invoke(id, IID_NULL, 0, static_cast<WORD>(flags), &params, &result,
                                        &exception, &m_argument);
    EXPECT_EQ(result.vt, VT_EMPTY);
    EXPECT_EQ(exception.scode, status == DISP_E_EXCEPTION ? E_FAIL : S_OK);
    m_source.attach(exception.bstrSource);
    m_description.attach(exception.bstrDescription);
    return status;
  }
  /// Calls with arguments from left to right; the variants stay the caller's.
  HRESULT Call(std::u16string method, std::vector<VARIANT> arguments) {
    std::ranges::reverse(arguments);
    return Invoke(Ids({std::move(method)}, S_OK)[0], arguments);
  }

  UINT m_argument = 99;  ///< the one to blame for the last failure; else untouched
  Bstr m_source;         ///< of the last exception
  Bstr m_description;
};

TEST_F(LateBindingTest, FindsIdentifiersByNameInAnyCase) {
  using Numbers = std::vector<DISPID>;
  EXPECT_EQ(Ids({u"gettooltypesBYSTOREDQUERY", u"PTYPES", u"bstrQueryName"}, S_OK),
            (Numbers{41, 1, 0}));
  EXPECT_EQ(Ids({u"GetNextTool", u"pPropNames", u"pProps"}, DISP_E_UNKNOWNNAME),
            (Numbers{4, -1, 1}));
  EXPECT_EQ(Ids({u"Quit", u"pProps"}, DISP_E_UNKNOWNNAME), (Numbers{-1, -1}));
  EXPECT_EQ(Ids({}, E_INVALIDARG), Numbers{});
}

TEST_F(LateBindingTest, RefusesWhatIsNoCall) {
  std::vector<VARIANT> none;
  const DISPID open = Ids({u"OpenDefaultDataBase"}, S_OK)[0];
  for (const int flags : {0, 1, 2, 3, 4, 5, 8}) {
    const bool asks = flags == 1 || flags == 3;
    EXPECT_EQ(Invoke(open, none, {}, flags), asks ? S_OK : DISP_E_MEMBERNOTFOUND) << flags;
  }
  for (const DISPID id : {0, -1, 42, INT_MIN, INT_MAX}) {
    EXPECT_EQ(Invoke(id, none), DISP_E_MEMBERNOTFOUND) << id;
  }
  EXPECT_EQ(Bare(open, nullptr), E_INVALIDARG);
  for (DISPPARAMS params :
       {DISPPARAMS{nullptr, nullptr, 0, 1}, DISPPARAMS{nullptr, nullptr, 1, 0}}) {
    Variant value;
    EXPECT_EQ(Bare(open, &params), E_INVALIDARG);
    EXPECT_EQ(DispGetParam(&params, 0, VT_I4, value.ptr(), nullptr), E_INVALIDARG);
    EXPECT_EQ(m_db->Invoke(open, IID_IDispatch, 0, 1, &params, nullptr, nullptr, nullptr),
              DISP_E_UNKNOWNINTERFACE);
  }
}

// VariantToUIString(pvarValue, bstrValue, iPrecision = -1) of a third shows which precision came.
TEST_F(LateBindingTest, SortsAndConvertsArguments) {
  BSTR text = nullptr;
  const VARIANT third = Variant::FromR8(1.0 / 3).detach();
  const VARIANT out = Reference(VT_BSTR, &text);
  const VARIANT two = Variant::FromR8(2.4).detach();
  const VARIANT null = Variant::Null().detach();
  VARIANT missing{};
  missing.vt = VT_ERROR;
  missing.scode = DISP_E_PARAMNOTFOUND;
  VARIANT impossible{};
  impossible.vt = VT_VARIANT;
  SHORT three = 3;
  const VARIANT direct = Reference(VT_I2, &three);
  const Variant four = Variant::FromText(u" 4 ");
  constexpr std::size_t kAll = 15;
  struct Case {
    std::vector<VARIANT> reversed;
    std::vector<DISPID> names;
    std::size_t decimals;
    HRESULT status = S_OK;
    UINT argument = 99;
  };
  for (Case row : {
           Case{{two, out, third}, {}, 2},
           {{two, out, third}, {2}, 2},
           {{third, two, out}, {0, 2, 1}, 2},
           {{out, third}, {}, kAll},
           {{missing, out, third}, {}, kAll},
           {{direct, out, third}, {}, 3},
           {{Reference(VT_VARIANT, &direct), out, third}, {}, 3},
           {{Reference(VT_VARIANT, &four.get()), out, third}, {}, 4},
           {{VARIANT{}, out, third}, {}, 0},
           {{third}, {}, 0, DISP_E_BADPARAMCOUNT},
           {{two, two, out, third}, {}, 0, DISP_E_BADPARAMCOUNT},
           {{two, third}, {2}, 0, DISP_E_PARAMNOTOPTIONAL},
           {{missing, third}, {}, 0, DISP_E_PARAMNOTOPTIONAL, 0},
           {{two, out, missing}, {}, 0, DISP_E_PARAMNOTOPTIONAL, 2},
           {{two, out, third}, {2, -3}, 0, DISP_E_PARAMNOTFOUND, 1},
           {{two, out, third}, {1}, 0, DISP_E_PARAMNOTFOUND, 0},
           {{two, two, third}, {2, 2}, 0, DISP_E_PARAMNOTFOUND, 1},
           {{out, third}, {0, 1, 2}, 0, E_INVALIDARG},
           {{null, out, third}, {}, 0, DISP_E_TYPEMISMATCH, 0},
           {{Reference(VT_VARIANT, nullptr), out, third}, {}, 0, E_INVALIDARG, 0},
           {{impossible, out, third}, {}, 0, DISP_E_BADVARTYPE, 0},
           {{Reference(VT_VARIANT, &impossible), out, third}, {}, 0, DISP_E_BADVARTYPE, 0},
       }) {
    const HRESULT status = Invoke(10, row.reversed, row.names);
    EXPECT_EQ(status, row.status) << row.reversed.size();
    EXPECT_EQ(m_argument, row.argument) << status;
    const std::string decimals = row.decimals ? "." + std::string(row.decimals, '3') : "";
    EXPECT_EQ(NarrowBstr(text), status == S_OK ? "0" + decimals : "");
    SysFreeString(std::exchange(text, nullptr));
    if (status != S_OK) continue;
    // What serves calls by other means finds the same.
    DISPPARAMS params{row.reversed.data(), row.names.data(), static_cast<UINT>(row.reversed.size()),
                      static_cast<UINT>(row.names.size())};
    Variant value;
    UINT index = 99;
    const bool given = row.decimals != kAll;
    EXPECT_EQ(SUCCEEDED(DispGetParam(&params, 2, VT_I2, value.ptr(), &index)), given);
    EXPECT_EQ(index, row.reversed[0].vt == VT_ERROR ? 0 : 99u);
    EXPECT_EQ(value.get().uiVal, given ? row.decimals : 0);
    EXPECT_EQ(DispGetParam(&params, 3, VT_I2, value.ptr(), &index), DISP_E_PARAMNOTFOUND);
  }
  EXPECT_EQ(TakeError(), "");
}

TEST_F(LateBindingTest, WritesResultsThroughInTheHostsType) {
  OpenSeeded(
      "INSERT INTO EMPTY (Name) WITH n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n "
      "WHERE i < 130) SELECT i FROM n;");
  const Variant table = Variant::FromText(u"EMPTY");
  const auto count = [&](VARIANT out) {
    return Call(u"GetSelectedRecordCount", {table.get(), out});
  };
  // The type of the place stays; a variant that holds its value takes the method's own.
  for (const VARTYPE type : {VT_UI1, VT_I2, VT_I4, VT_R4, VT_R8, VT_DATE, VT_BSTR}) {
    Variant place;
    VARIANT direct = Reference(type, &place.get().llVal);
    for (const VARIANT& out :
         {direct, Reference(VT_VARIANT, &direct), Reference(VT_VARIANT, &place.get())}) {
      ASSERT_EQ(VariantChangeType(place.ptr(), &Variant::FromI4(12).get(), 0, type), S_OK);
      EXPECT_EQ(count(out), S_OK) << type;
      EXPECT_EQ(place.type(), out.byref == place.ptr() ? VT_I4 : type);
      EXPECT_EQ(VariantChangeType(place.ptr(), place.ptr(), 0, VT_I4), S_OK);
      EXPECT_EQ(place.get().lVal, 130) << type;
    }
  }
  BYTE bytes[] = {1, 2};
  DECIMAL decimal{};
  decimal.wReserved = 5;
  EXPECT_EQ(count(Reference(VT_UI1, bytes)), S_OK);
  EXPECT_EQ(count(Reference(VT_DECIMAL, &decimal)), S_OK);
  EXPECT_EQ(bytes[1], 2);
  EXPECT_EQ(decimal.Lo64, 130u);

  CHAR small = 5;
  SAFEARRAY* array = nullptr;
  const Variant word = Variant::FromText(u"twelve");
  for (const VARIANT& place : {Reference(VT_I1, &small), Reference(VT_VARIANT, &word.get()),
                               Reference(VT_ARRAY | VT_I4, &array)}) {
    EXPECT_EQ(count(place), place.byref == &small ? DISP_E_OVERFLOW : DISP_E_TYPEMISMATCH);
    EXPECT_EQ(m_argument, 0u);
  }
  EXPECT_EQ(small, 5);
}

TEST_F(LateBindingTest, PassesArraysAndBookmarks) {
  const Variant name = Variant::FromText(u"TAP");
  // An array that is not what its variant says would be read as pointers.
  Variant wrong = Variant::FromArray(VT_BSTR, SafeArray::Vector(VT_R8, 2));
  for (const VARIANT& value : {wrong.get(), Reference(VT_VARIANT, wrong.ptr()),
                               Reference(VT_ARRAY | VT_BSTR, &wrong.ptr()->parray)}) {
    const std::vector<VARIANT> arguments{name.get(), value, value, VARIANT{}, VARIANT{}};
    EXPECT_EQ(Call(u"FindPropByNameInArray", arguments), DISP_E_TYPEMISMATCH);
  }
  wrong.ptr()->vt = VT_ARRAY | VT_R8;

  OpenSeeded();
  std::vector<VARIANT> direct(1);
  EXPECT_EQ(Invoke(2, direct), S_OK);
  EXPECT_EQ(Show(direct[0]), Gives(&Db::GetToolTypes));
  VariantClear(direct.data());
  SAFEARRAY* array = nullptr;
  EXPECT_EQ(Call(u"GetToolTypes", {Reference(VT_ARRAY | VT_BSTR, &array)}), DISP_E_TYPEMISMATCH);
  // A bookmark goes in by value, however it is passed.
  Variant bookmark;
  First("TAP");
  EXPECT_EQ(m_db->GetToolTableBookmark(name.get().bstrVal, bookmark.ptr()), S_OK);
  for (const VARIANT& passed : {bookmark.get(), Reference(VT_VARIANT, bookmark.ptr())}) {
    EXPECT_EQ(Next("TAP")["Name"], "M10");
    EXPECT_EQ(Call(u"SetToolTableBookmark", {name.get(), passed}), S_OK);
  }
  EXPECT_EQ(Next("TAP")["Name"], "M10");
}

TEST_F(LateBindingTest, GivesAMethodsResultBack) {
  const auto library = NewObject<Lib>(CLSID_OrxDbLibrary);
  const auto call = [&](DISPID id, std::vector<VARIANT> reversed, VARIANT* result) {
    DISPPARAMS params{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
    return library->Invoke(id, IID_NULL, 0, 3, &params, result, nullptr, nullptr);
  };
  Variant number = Variant::FromI4(7);
  EXPECT_EQ(call(1, {}, number.ptr()), DISP_E_EXCEPTION);
  EXPECT_EQ(TakeError(), kReportedLibraryError);
  EXPECT_TRUE(number.empty());
  OpenSeeded();
  EXPECT_EQ(call(1, {}, nullptr), S_OK);
  EXPECT_EQ(call(1, {}, number.ptr()), S_OK);
  EXPECT_EQ(number.type(), VT_R8);
  EXPECT_EQ(Show(number.get()), Gives(&Lib::ChangeNumber));
  DOUBLE place = 0;
  EXPECT_EQ(call(1, {Reference(VT_R8, &place)}, number.ptr()), DISP_E_BADPARAMCOUNT);
  std::u16string names[] = {u"changenumber", u"pNumber"};
  LPOLESTR pointers[] = {names[0].data(), names[1].data()};
  DISPID ids[2];
  EXPECT_EQ(library->GetIDsOfNames(IID_NULL, pointers, 2, 0, ids), DISP_E_UNKNOWNNAME);
  EXPECT_THAT(ids, testing::ElementsAre(1, DISPID_UNKNOWN));
}

TEST_F(LateBindingTest, FailingMethodsAreExceptionsWithTheErrorReport) {
  Variant names;
  Variant values;
  std::vector<VARIANT> reversed{Reference(VT_VARIANT, values.ptr()),
                                Reference(VT_VARIANT, names.ptr()), Variant::FromI4(12).detach()};
  EXPECT_EQ(Invoke(3, reversed), DISP_E_EXCEPTION);
  EXPECT_EQ(NarrowBstr(m_source.get()) + ": " + NarrowBstr(m_description.get()), kReportedError);
  EXPECT_EQ(TakeError(), kReportedError);
  DISPPARAMS params{reversed.data(), nullptr, 3, 0};
  EXPECT_EQ(Bare(3, &params), DISP_E_EXCEPTION);
  EXPECT_EQ(SetErrorInfo(0, nullptr), S_OK);
  EXPECT_EQ(TakeError(), "");
  EXPECT_EQ(Bare(3, &params), DISP_E_EXCEPTION);
  // A success leaves the report of an earlier failure alone.
  EXPECT_EQ(Call(u"OpenDefaultDataBase", {}), S_OK);
  EXPECT_EQ(TakeError(), kReportedError);
  // A call that is refused is none of the object's failures.
  EXPECT_EQ(Call(u"GetFirstTool", {}), DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(TakeError(), "");
}

TEST_F(LateBindingTest, SurvivesEveryFailingAllocation) {
  const Variant sentence = Variant::FromText(u"a text too long to be kept without an allocation");
  HRESULT status = E_FAIL;
  int left = 0;
  for (; status != S_OK; ++left) {
    BSTR text = nullptr;
    VARIANT reversed[] = {Reference(VT_BSTR, &text), sentence.get()};
    DISPPARAMS params{reversed, nullptr, 2, 0};
    FailAllocationsAfter(left);
    status = Bare(9, &params);
    FailAllocationsAfter(-1);
    EXPECT_EQ(View(text), status == S_OK ? View(sentence.get().bstrVal) : u"");
    SysFreeString(text);
    EXPECT_THAT(status, testing::AnyOf(S_OK, DISP_E_EXCEPTION, E_OUTOFMEMORY));
  }
  EXPECT_GT(left, 1);
}

}  // namespace
}  // namespace orxdb::test
