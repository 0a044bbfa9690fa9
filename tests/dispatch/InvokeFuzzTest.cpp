// Random arguments for every method. ORXDB_FUZZ_SECONDS makes the run longer, ORXDB_FUZZ_SEED
// repeats one.
#include <chrono>
#include <cstdlib>
#include <deque>
#include <random>
#include <set>

#include "platform/automation/TypeInfo.h"
#include "tests/dispatch/LateCall.h"

namespace orxdb::test {
namespace {

class RandomArguments {
 public:
  explicit RandomArguments(unsigned seed) : m_random(seed) {}

  int Below(int limit) { return static_cast<int>(m_random() % static_cast<unsigned>(limit)); }

  /// A value, for the caller to clear, or a reference to one that lasts until Forget. Methods
  /// overwrite what they return in variants: those get nothing that would be lost.
  VARIANT Make(bool overwritten) {
    if (Below(40) == 0) return Broken();
    Variant value = overwritten ? Number() : Value(2);
    if (Below(2) == 0) return value.detach();
    VARIANT& kept = *m_values.emplace_back(std::move(value)).ptr();
    if (kept.vt != VT_EMPTY && kept.vt != VT_NULL && Below(2) == 0) {
      return Reference(kept.vt, &kept.llVal);
    }
    const VARIANT reference = Reference(VT_VARIANT, &kept);
    if (Below(8) != 0) return reference;
    m_references.push_back(reference);
    return Reference(VT_VARIANT, &m_references.back());
  }

  void Forget() {
    m_values.clear();
    m_references.clear();
  }

 private:
  VARIANT Broken() {
    VARIANT broken{};
    constexpr VARTYPE types[] = {VT_VARIANT, VT_RECORD,          VT_VOID,
                                 99,         VT_BYREF | VT_BSTR, VT_BYREF | VT_VARIANT,
                                 VT_BYREF,   VT_VECTOR | VT_I4,  VT_BYREF | VT_ARRAY | VT_I4};
    broken.vt = types[Below(std::size(types))];
    return broken;
  }

  Variant Text() {
    constexpr std::u16string_view texts[] = {
        u"TAP", u"MILL", u"EMPTY", u"",      u"Name", u"ID",      u"Diameter > 5", u"Name DESC",
        u"mm",  u"'",    u"HSS",   u"Q_TAP", u"-1e3", u"\xD800(", u"TOOL_TYPES"};
    return Variant::FromText(texts[Below(std::size(texts))]);
  }

  Variant Number() {
    switch (Below(6)) {
      case 0:
        return Variant::Null();
      case 1:
        return Variant::FromI4(Below(2) ? Below(5) : static_cast<LONG>(m_random()));
      case 2:
        return Variant::FromR8(std::ldexp(Below(1000) - 500, Below(80) - 20));
      case 3:
        return Below(2) ? Variant::FromBool(true) : Variant::FromUI1(200);
      default:
        return {};
    }
  }

  Variant Value(int depth) {
    switch (Below(depth > 0 ? 10 : 7)) {
      case 0:
      case 1:
      case 2:
        return Number();
      case 7:
        return Array(VT_BSTR, [this] { return Text().detach().bstrVal; });
      case 8:
        return Array(VT_VARIANT, [this, depth] { return Value(depth - 1).detach(); });
      case 9:
        return OddArray();
      default:
        return Text();
    }
  }

  template <typename Make>
  Variant Array(VARTYPE type, Make make) {
    SafeArray array = SafeArray::Vector(type, static_cast<ULONG>(Below(4)));
    for (auto& element : ArrayAccess<decltype(make())>(array.get())) element = make();
    return Variant::FromArray(type, std::move(array));
  }

  /// Null, of two dimensions, or of bytes.
  Variant OddArray() {
    SafeArray array;
    const VARTYPE type = Below(2) ? VT_VARIANT : VT_UI1;
    const SAFEARRAYBOUND bounds[] = {{2, -5}, {static_cast<ULONG>(Below(3)), 7}};
    if (Below(3)) array.attach(SafeArrayCreate(type, static_cast<UINT>(1 + Below(2)), bounds));
    return Variant::FromArray(type, std::move(array));
  }

  std::mt19937 m_random;
  std::deque<Variant> m_values;
  std::deque<VARIANT> m_references;
};

int Setting(const char* name, int otherwise) {
  const char* const text = std::getenv(name);
  return text ? std::atoi(text) : otherwise;
}

/// Identifier and position of every parameter through which a method returns a variant.
std::set<std::pair<DISPID, DISPID>> ReturnedVariants(IDispatch& object) {
  std::set<std::pair<DISPID, DISPID>> returned;
  ComPtr<ITypeInfo> info;
  EXPECT_EQ(object.GetTypeInfo(0, 0, info.put()), S_OK);
  FUNCDESC* function = nullptr;
  for (UINT i = 0; info->GetFuncDesc(i, &function) == S_OK; ++i) {
    for (SHORT position = 0; position < function->cParams; ++position) {
      const ELEMDESC& element = function->lprgelemdescParam[position];
      if ((element.paramdesc.wParamFlags & PARAMFLAG_FOUT) &&
          element.tdesc.lptdesc->vt == VT_VARIANT) {
        returned.emplace(function->memid, position);
      }
    }
    info->ReleaseFuncDesc(function);
  }
  return returned;
}

using InvokeFuzzTest = ComponentTest;

TEST_F(InvokeFuzzTest, RandomArgumentsGiveStandardStatuses) {
  using Clock = std::chrono::steady_clock;
  const auto seed =
      static_cast<unsigned>(Setting("ORXDB_FUZZ_SEED", static_cast<int>(std::random_device()())));
  std::printf("ORXDB_FUZZ_SEED=%u\n", seed);
  RecordProperty("seed", std::to_string(seed));
  OpenSeeded();
  RandomArguments arguments(seed);
  std::map<HRESULT, int> seen;
  const auto end = Clock::now() + std::chrono::seconds(Setting("ORXDB_FUZZ_SECONDS", 1));
  const auto returned = ReturnedVariants(*m_db);
  // Files that exports write stay in the test's folder.
  const auto home = std::filesystem::current_path();
  std::filesystem::current_path(m_file.parent_path());
  while (Clock::now() < end) {
    const DISPID id = arguments.Below(20) ? 1 + arguments.Below(41) : arguments.Below(100) - 30;
    const int count = arguments.Below(7);
    std::vector<DISPID> names;
    if (arguments.Below(5) == 0) names.resize(static_cast<std::size_t>(arguments.Below(count + 1)));
    for (DISPID& name : names) name = arguments.Below(8) - 1;
    std::vector<VARIANT> reversed;
    for (int i = 0; i < count; ++i) {
      const auto index = static_cast<std::size_t>(i);
      const DISPID position = index < names.size() ? names[index] : count - 1 - i;
      reversed.push_back(arguments.Make(returned.contains({id, position})));
    }
    const HRESULT status = Invoke(*m_db, id, reversed, names).status;
    EXPECT_THAT(status,
                testing::AnyOf(S_OK, DISP_E_EXCEPTION, DISP_E_MEMBERNOTFOUND, DISP_E_BADPARAMCOUNT,
                               DISP_E_PARAMNOTFOUND, DISP_E_PARAMNOTOPTIONAL, DISP_E_TYPEMISMATCH,
                               DISP_E_OVERFLOW, DISP_E_BADVARTYPE, E_INVALIDARG))
        << std::hex << status;
    ++seen[status];
    for (VARIANT& argument : reversed) VariantClear(&argument);
    arguments.Forget();
  }
  std::filesystem::current_path(home);
  EXPECT_GE(seen.size(), 8u);
}

}  // namespace
}  // namespace orxdb::test
