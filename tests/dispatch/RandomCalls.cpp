#include "tests/dispatch/RandomCalls.h"

#include <algorithm>
#include <cmath>

#include "platform/automation/TypeInfo.h"

namespace orxdb::test {

RandomCalls::RandomCalls(IDispatch& object, std::function<unsigned()> next)
    : m_object(object), m_next(std::move(next)) {
  ComPtr<ITypeInfo> info;
  EXPECT_EQ(object.GetTypeInfo(0, 0, info.put()), S_OK);
  FUNCDESC* function = nullptr;
  for (UINT i = 0; info->GetFuncDesc(i, &function) == S_OK; ++i) {
    for (SHORT position = 0; position < function->cParams; ++position) {
      const ELEMDESC& element = function->lprgelemdescParam[position];
      const TYPEDESC& type = element.tdesc.vt == VT_PTR ? *element.tdesc.lptdesc : element.tdesc;
      const bool out = (element.paramdesc.wParamFlags & PARAMFLAG_FOUT) != 0;
      m_parameters[function->memid].push_back({type.vt, out && type.vt == VT_VARIANT});
    }
    info->ReleaseFuncDesc(function);
  }
}

HRESULT RandomCalls::Call() {
  const DISPID id = Below(20) ? 1 + Below(41) : Below(100) - 30;
  const std::vector<Parameter>& parameters = m_parameters[id];
  const int count = Below(8) ? static_cast<int>(parameters.size()) : Below(7);
  const WORD flags = static_cast<WORD>(Below(30) ? DISPATCH_METHOD : Below(16));
  std::vector<DISPID> names;
  if (Below(5) == 0) names.resize(static_cast<std::size_t>(Below(count + 1)));
  for (DISPID& name : names) name = Below(8) - 1;
  std::vector<VARIANT> reversed;
  for (int i = 0; i < count; ++i) {
    const auto index = static_cast<std::size_t>(i);
    const DISPID position = index < names.size() ? names[index] : count - 1 - i;
    const auto place = static_cast<std::size_t>(position);
    reversed.push_back(Make(place < parameters.size() ? parameters[place] : Parameter{}));
  }
  const HRESULT status = Invoke(m_object, id, reversed, names, flags).status;
  EXPECT_THAT(status,
              testing::AnyOf(S_OK, DISP_E_EXCEPTION, DISP_E_MEMBERNOTFOUND, DISP_E_BADPARAMCOUNT,
                             DISP_E_PARAMNOTFOUND, DISP_E_PARAMNOTOPTIONAL, DISP_E_TYPEMISMATCH,
                             DISP_E_OVERFLOW, DISP_E_BADVARTYPE, E_INVALIDARG))
      << std::hex << status;
  for (VARIANT& argument : reversed) VariantClear(&argument);
  m_values.clear();
  m_references.clear();
  return status;
}

/// A value, for the caller to clear, or a reference to one that lasts as long as the call. Methods
/// overwrite what they return in variants: those get nothing that would be lost.
VARIANT RandomCalls::Make(const Parameter& parameter) {
  if (Below(40) == 0) return Broken();
  const bool text = parameter.type == VT_BSTR && Below(4) != 0;
  Variant value = parameter.returned ? Number() : text ? Text() : Value(2);
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

VARIANT RandomCalls::Broken() {
  VARIANT broken{};
  constexpr VARTYPE types[] = {VT_VARIANT, VT_RECORD,          VT_VOID,
                               99,         VT_BYREF | VT_BSTR, VT_BYREF | VT_VARIANT,
                               VT_BYREF,   VT_VECTOR | VT_I4,  VT_BYREF | VT_ARRAY | VT_I4};
  broken.vt = types[Below(std::size(types))];
  return broken;
}

/// A text that means something here, or any other that leads to no other folder.
Variant RandomCalls::Text() {
  if (Below(6) == 0) {
    std::u16string any(static_cast<std::size_t>(Below(12)), u' ');
    std::ranges::generate(any, [this] { return static_cast<char16_t>(m_next() & 0x3ff); });
    std::erase_if(any, [](char16_t c) { return c == u'/' || c == u'\\'; });
    return Variant::FromText(any);
  }
  constexpr std::u16string_view texts[] = {
      u"TAP",          u"MILL",      u"EMPTY",      u"",          u"Name",    u"ID",
      u"Diameter > 5", u"Name DESC", u"mm",         u"'",         u"HSS",     u"Q_TAP",
      u"-1e3",         u"\xD800(",   u"TOOL_TYPES", u"tools.txt", u"Diameter"};
  return Variant::FromText(texts[Below(std::size(texts))]);
}

Variant RandomCalls::Number() {
  switch (Below(6)) {
    case 0:
      return Variant::Null();
    case 1:
      return Variant::FromI4(Below(2) ? Below(5) : static_cast<LONG>(m_next() * 2654435761U));
    case 2:
      return Variant::FromR8(std::ldexp(Below(1000) - 500, Below(80) - 20));
    case 3:
      return Below(2) ? Variant::FromBool(true) : Variant::FromUI1(200);
    default:
      return {};
  }
}

Variant RandomCalls::Value(int depth) {
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

template <typename Maker>
Variant RandomCalls::Array(VARTYPE type, Maker make) {
  SafeArray array = SafeArray::Vector(type, static_cast<ULONG>(Below(4)));
  for (auto& element : ArrayAccess<decltype(make())>(array.get())) element = make();
  return Variant::FromArray(type, std::move(array));
}

// Null, of two dimensions, of bytes, or of numbers that are said to be strings.
Variant RandomCalls::OddArray() {
  if (Below(4) == 0) {
    Variant lie = Array(VT_I8, [this] { return LONGLONG{Below(100)}; });
    lie.ptr()->vt = VT_ARRAY | VT_BSTR;
    return lie;
  }
  SafeArray array;
  const VARTYPE type = Below(2) ? VT_VARIANT : VT_UI1;
  const SAFEARRAYBOUND bounds[] = {{2, -5}, {static_cast<ULONG>(Below(3)), 7}};
  if (Below(3)) array.attach(SafeArrayCreate(type, static_cast<UINT>(1 + Below(2)), bounds));
  return Variant::FromArray(type, std::move(array));
}

}  // namespace orxdb::test
