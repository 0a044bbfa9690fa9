// Finding methods and calling them late: names, counts, named arguments, failures.
#include <algorithm>
#include <climits>

#include "platform/framework/Text.h"
#include "tests/dispatch/FailingAllocations.h"
#include "tests/dispatch/LateCall.h"

namespace orxdb::test {

namespace {

class InvokeTest : public ComponentTest {
 protected:
  std::vector<DISPID> Ids(std::vector<std::u16string> names, HRESULT expected) {
    std::vector<LPOLESTR> pointers(names.size());
    std::ranges::transform(names, pointers.begin(), [](auto& name) { return name.data(); });
    std::vector<DISPID> ids(names.size(), 77);
    const auto count = static_cast<UINT>(names.size());
    EXPECT_EQ(m_db->GetIDsOfNames(IID_NULL, pointers.data(), count, 0, ids.data()), expected);
    return ids;
  }

  /// Calls without asking for anything but the status.
  HRESULT Bare(DISPID id, DISPPARAMS* params, REFIID iid = IID_NULL) {
    return m_db->Invoke(id, iid, 0, DISPATCH_METHOD, params, nullptr, nullptr, nullptr);
  }
};

TEST_F(InvokeTest, FindsIdentifiersByNameInAnyCase) {
  using Numbers = std::vector<DISPID>;
  EXPECT_EQ(Ids({u"gettooltypesBYSTOREDQUERY", u"PTYPES", u"bstrQueryName"}, S_OK),
            (Numbers{41, 1, 0}));
  EXPECT_EQ(Ids({u"GetNextTool", u"pPropNames", u"pProps"}, DISP_E_UNKNOWNNAME),
            (Numbers{4, -1, 1}));
  EXPECT_EQ(Ids({u"Quit", u"pProps"}, DISP_E_UNKNOWNNAME), (Numbers{-1, -1}));
  EXPECT_EQ(Ids({}, E_INVALIDARG), Numbers{});
}

TEST_F(InvokeTest, RefusesWhatIsNoCall) {
  std::vector<VARIANT> none;
  const DISPID open = IdOf(*m_db, u"OpenDefaultDataBase");
  for (const WORD flags : {DISPATCH_PROPERTYGET, DISPATCH_PROPERTYPUT, DISPATCH_PROPERTYPUTREF,
                           WORD{DISPATCH_METHOD | DISPATCH_PROPERTYPUT}, WORD{0}}) {
    EXPECT_EQ(Invoke(*m_db, open, none, {}, flags).status, DISP_E_MEMBERNOTFOUND) << flags;
  }
  EXPECT_EQ(Invoke(*m_db, open, none, {}, DISPATCH_METHOD | DISPATCH_PROPERTYGET).status, S_OK);
  for (const DISPID id : {0, -1, 42, INT_MIN, INT_MAX}) {
    EXPECT_EQ(Invoke(*m_db, id, none).status, DISP_E_MEMBERNOTFOUND) << id;
  }
  DISPPARAMS params{};
  EXPECT_EQ(Bare(open, &params, IID_IDispatch), DISP_E_UNKNOWNINTERFACE);
  EXPECT_EQ(Bare(open, nullptr), E_INVALIDARG);
  params.cNamedArgs = 1;
  EXPECT_EQ(Bare(open, &params), E_INVALIDARG);
  params.cArgs = 1;
  EXPECT_EQ(Bare(open, &params), E_INVALIDARG);
}

// VariantToUIString(pvarValue, bstrValue, iPrecision = -1)
TEST_F(InvokeTest, SortsArgumentsByPositionAndName) {
  BSTR text = nullptr;
  const VARIANT half = Variant::FromR8(0.5).detach();
  const VARIANT two = Variant::FromI4(2).detach();
  const VARIANT out = Reference(VT_BSTR, &text);
  VARIANT missing{};
  missing.vt = VT_ERROR;
  missing.scode = DISP_E_PARAMNOTFOUND;
  struct Case {
    std::vector<VARIANT> reversed;
    std::vector<DISPID> names;
    HRESULT status;
    UINT argument = 99;
    std::u16string_view text{};
  };
  for (const Case& row : {
           Case{{two, out, half}, {}, S_OK, 99, u"0.50"},
           {{out, half}, {}, S_OK, 99, u"0.5"},
           {{missing, out, half}, {}, S_OK, 99, u"0.5"},
           {{two, out, half}, {2}, S_OK, 99, u"0.50"},
           {{half, two, out}, {0, 2, 1}, S_OK, 99, u"0.50"},
           {{half, out}, {0, 1}, S_OK, 99, u"0.5"},
           {{half}, {}, DISP_E_BADPARAMCOUNT},
           {{}, {}, DISP_E_BADPARAMCOUNT},
           {{two, two, out, half}, {}, DISP_E_BADPARAMCOUNT},
           {{two, half}, {2}, DISP_E_PARAMNOTOPTIONAL},
           {{missing, half}, {}, DISP_E_PARAMNOTOPTIONAL, 0},
           {{two, out, missing}, {}, DISP_E_PARAMNOTOPTIONAL, 2},
           {{two, out, half}, {3}, DISP_E_PARAMNOTFOUND, 0},
           {{two, out, half}, {2, -3}, DISP_E_PARAMNOTFOUND, 1},
           {{two, out, half}, {1}, DISP_E_PARAMNOTFOUND, 0},
           {{two, two, half}, {2, 2}, DISP_E_PARAMNOTFOUND, 1},
           {{out, half}, {0, 1, 2}, E_INVALIDARG},
       }) {
    auto reversed = row.reversed;
    const Answer answer = Invoke(*m_db, 10, reversed, row.names);
    EXPECT_EQ(answer.status, row.status) << reversed.size();
    EXPECT_EQ(answer.argument, row.argument) << answer.status;
    EXPECT_EQ(View(text), row.text);
    SysFreeString(std::exchange(text, nullptr));
  }
  EXPECT_EQ(TakeError(), "");
}

TEST_F(InvokeTest, FailingMethodsAreExceptionsWithTheErrorReport) {
  Variant names;
  Variant values;
  const std::vector<VARIANT> arguments{Variant::FromI4(12).detach(),
                                       Reference(VT_VARIANT, names.ptr()),
                                       Reference(VT_VARIANT, values.ptr())};
  const Answer answer = Call(*m_db, u"GetFirstTool", arguments);
  EXPECT_EQ(answer.status, DISP_E_EXCEPTION);
  EXPECT_EQ(answer.exception, kReportedError);
  EXPECT_EQ(TakeError(), kReportedError);
  std::vector<VARIANT> reversed(arguments.rbegin(), arguments.rend());
  DISPPARAMS params{reversed.data(), nullptr, 3, 0};
  EXPECT_EQ(Bare(3, &params), DISP_E_EXCEPTION);
  // A success leaves the report of an earlier failure alone.
  EXPECT_EQ(Call(*m_db, u"OpenDefaultDataBase", {}).status, S_OK);
  EXPECT_EQ(TakeError(), kReportedError);
  // A call that is refused is none of the object's failures.
  EXPECT_EQ(Call(*m_db, u"GetFirstTool", {}).status, DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(TakeError(), "");
}

TEST_F(InvokeTest, SurvivesEveryFailingAllocation) {
  OpenSeeded();
  const Variant sentence = Variant::FromText(u"a text too long to be kept without an allocation");
  int failures = 0;
  for (int left = 0;; ++left) {
    BSTR text = nullptr;
    std::vector<VARIANT> reversed{Reference(VT_BSTR, &text), sentence.get()};
    DISPPARAMS params{reversed.data(), nullptr, 2, 0};
    FailAllocationsAfter(left);
    const HRESULT status = Bare(9, &params);
    FailAllocationsAfter(-1);
    EXPECT_EQ(View(text), status == S_OK ? View(sentence.get().bstrVal) : u"");
    SysFreeString(text);
    if (status == S_OK) break;
    EXPECT_THAT(status, testing::AnyOf(DISP_E_EXCEPTION, E_OUTOFMEMORY));
    ++failures;
  }
  EXPECT_GT(failures, 0);
}

}  // namespace
}  // namespace orxdb::test
