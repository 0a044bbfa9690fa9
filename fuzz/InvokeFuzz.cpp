// Late-bound calls. Every byte of an input is one choice; the calls end with the input.
#include <algorithm>
#include <deque>

#include "component/MethodTable.h"
#include "fuzz/FuzzHost.h"

namespace orxdb::test {
namespace {

constexpr std::size_t kPlainValues = 6;

/// Values that mean something to some method, and odd ones; those that own nothing first.
std::vector<Variant> Values() {
  std::vector<Variant> values(1);
  values.push_back(Variant::Null());
  values.push_back(Variant::FromBool(true));
  for (const double number : {2.0, -2000000011.0, 4e18}) values.push_back(Variant::FromR8(number));
  for (const char16_t* text :
       {u"TAP", u"MILL", u"EMPTY", u"", u"Name", u"ID", u"Diameter", u"Diameter > 5", u"Name DESC",
        u"mm", u"'", u"HSS", u"Q_TAP", u"-1e3", u"\xD800(", u"TOOL_TYPES", u"tools.txt"}) {
    values.push_back(Variant::FromText(text));
  }
  Properties pair;
  for (const char* name : {"Name", "Diameter", "Name"}) {
    pair.Add(name, values[values.size() % 19].Copy());
    values.push_back(Variant::CopyOf(*pair.Names()));
    values.push_back(Variant::CopyOf(*pair.Values(-5)));
  }
  // Two dimensions, no array, and numbers that are said to be strings.
  const SAFEARRAYBOUND bounds[] = {{2, -5}, {3, 7}};
  SafeArray array;
  values.push_back(Variant::FromArray(VT_I4, {}));
  array.attach(SafeArrayCreate(VT_VARIANT, 2, bounds));
  values.push_back(Variant::FromArray(VT_VARIANT, std::move(array)));
  array = SafeArray::Vector(VT_I8, 3);
  std::ranges::fill(ArrayAccess<LONGLONG>(array.get()), 77);
  values.push_back(Variant::FromArray(VT_BSTR, std::move(array)));
  return values;
}

}  // namespace
}  // namespace orxdb::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace orxdb::test;
  FuzzHost host;
  const auto home = std::filesystem::current_path();
  std::filesystem::current_path(host.m_folder / "");  // for exports
  const auto values = Values();
  const auto library = FuzzHost::NewObject<Lib>(CLSID_OrxDbLibrary);
  std::size_t used = 0;
  const auto below = [&](std::size_t limit) {
    return static_cast<int>(used < size ? data[used++] % limit : 0);
  };
  while (used < size) {
    // The methods of the second class stand behind those of the first.
    const int first = static_cast<int>(orxdb::kOrxDbObj.methods.size());
    const int all = first + static_cast<int>(orxdb::kOrxDbLibrary.methods.size());
    const int choice = below(20) ? 1 + below(static_cast<std::size_t>(all)) : below(100) - 30;
    const bool ofFirst = choice <= first;
    const DISPID id = ofFirst ? choice : choice - first;
    IDispatch& object = ofFirst ? static_cast<IDispatch&>(*host.m_db) : *library;
    const orxdb::DescribedClass& type = ofFirst ? orxdb::kOrxDbObj : orxdb::kOrxDbLibrary;
    const orxdb::Method* const method = type.Find(id);
    const auto parameters = method ? method->arguments() : std::span<const orxdb::Parameter>();
    const int count = !method || !below(8) ? below(7) : static_cast<int>(parameters.size());
    std::vector<DISPID> names(below(5) ? 0 : static_cast<std::size_t>(below(7)));
    for (DISPID& name : names) name = below(8) - 1;
    std::deque<orxdb::Variant> kept;  // what references lead to
    std::vector<VARIANT> reversed;
    for (int i = 0; i < count; ++i) {
      // Methods overwrite variants without clearing them, and named ones may go anywhere.
      const auto position = static_cast<std::size_t>(count - 1 - i);
      const bool mayOwn = names.empty() && position < parameters.size() &&
                          (parameters[position].type != VT_VARIANT ||
                           !(parameters[position].flags & PARAMFLAG_FOUT));
      const auto given = static_cast<std::size_t>(below(mayOwn ? values.size() : kPlainValues));
      VARIANT& value = *kept.emplace_back(values[given].Copy()).ptr();
      const int way = below(16);
      VARIANT broken{};
      broken.vt = static_cast<VARTYPE>(below(40) | below(8) << 13);
      reversed.push_back(way == 0   ? broken
                         : way < 6  ? kept.back().detach()
                         : way < 11 ? Reference(VT_VARIANT, &value)
                                    : Reference(value.vt, &value.llVal));
    }
    const auto flags = static_cast<WORD>(below(30) ? DISPATCH_METHOD : below(16));
    DISPPARAMS params{reversed.data(), names.data(), static_cast<UINT>(reversed.size()),
                      static_cast<UINT>(names.size())};
    orxdb::Variant result;
    EXPECT_THAT(object.Invoke(id, IID_NULL, 0, flags, &params, result.ptr(), nullptr, nullptr),
                testing::AnyOf(S_OK, DISP_E_EXCEPTION, DISP_E_MEMBERNOTFOUND, DISP_E_BADPARAMCOUNT,
                               DISP_E_PARAMNOTFOUND, DISP_E_PARAMNOTOPTIONAL, DISP_E_TYPEMISMATCH,
                               DISP_E_OVERFLOW, DISP_E_BADVARTYPE, E_INVALIDARG));
    for (VARIANT& argument : reversed) VariantClear(&argument);
  }
  EXPECT_EQ(QueryRows(host.m_file, "PRAGMA integrity_check"), "ok");
  std::filesystem::current_path(home);
  return 0;
}
