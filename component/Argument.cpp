#include "component/Argument.h"

#include <cstring>

#include "platform/automation/VariantTypes.h"

namespace orxdb {
namespace {

constexpr VARTYPE kVariantReference = VT_BYREF | VT_VARIANT;

constexpr VARTYPE BaseType(VARTYPE type) noexcept {
  return static_cast<VARTYPE>(type & ~(VT_BYREF | VT_ARRAY));
}

/// Whether the elements are what the variant says they are: hosts in other languages build arrays
/// by hand, and a number taken for a string would be followed as a pointer.
bool HoldsElementsOf(SAFEARRAY* array, VARTYPE type) noexcept {
  if (!array) return true;
  if (SafeArrayGetElemsize(array) != SizeOfType(type)) return false;
  VARTYPE actual = VT_EMPTY;
  SafeArrayGetVartype(array, &actual);
  const bool plain = OwnsNothing(type) && type != VT_VARIANT;
  const bool actuallyPlain = OwnsNothing(actual) && actual != VT_VARIANT;
  return actual == type || (plain && actuallyPlain);
}

HRESULT CheckOne(const VARIANT& value) noexcept {
  if (!IsVariantType(value.vt)) return DISP_E_BADVARTYPE;
  if ((value.vt & VT_BYREF) && !value.byref) return E_INVALIDARG;
  if (!(value.vt & VT_ARRAY)) return S_OK;
  SAFEARRAY* const array = (value.vt & VT_BYREF) ? *value.pparray : value.parray;
  return HoldsElementsOf(array, BaseType(value.vt)) ? S_OK : DISP_E_TYPEMISMATCH;
}

/// Checks a value and the variant that it may refer to. A variant that refers further takes the
/// place of the reference to it.
HRESULT CheckAndResolve(VARIANTARG*& given) noexcept {
  const HRESULT status = CheckOne(*given);
  if (FAILED(status) || given->vt != kVariantReference) return status;
  VARIANT& referred = *given->pvarVal;
  if (referred.vt == kVariantReference) return E_INVALIDARG;
  if (referred.vt & VT_BYREF) given = &referred;
  return CheckOne(referred);
}

void StoreAt(void* place, VARIANT value) noexcept {
  if (value.vt == VT_DECIMAL) {
    value.decVal.wReserved = 0;
    std::memcpy(place, &value.decVal, sizeof(DECIMAL));
  } else {
    std::memcpy(place, &value.llVal, SizeOfType(value.vt));
  }
}

}  // namespace

HRESULT Argument::Own(HRESULT status) noexcept {
  m_place = &m_value.ptr()->llVal;
  return status;
}

HRESULT Argument::Bind(const Parameter& parameter, VARIANTARG* given) {
  if (!given || (given->vt == VT_ERROR && given->scode == DISP_E_PARAMNOTFOUND)) {
    if (!(parameter.flags & PARAMFLAG_FOPT)) return DISP_E_PARAMNOTOPTIONAL;
    m_value = Variant::FromI4(parameter.defaultValue);
    return Own(S_OK);
  }
  const HRESULT status = CheckAndResolve(given);
  if (FAILED(status)) return status;
  if (parameter.type == VT_VARIANT) {
    if (parameter.byReference) return BindVariantReference(parameter, *given);
    m_place = m_value.ptr();
    return VariantCopyInd(m_value.ptr(), given);
  }
  if (parameter.byReference) return BindScalarReference(parameter, *given);
  return Own(VariantChangeType(m_value.ptr(), given, 0, parameter.type));
}

HRESULT Argument::BindResult(const Parameter& parameter) noexcept {
  if (parameter.type != VT_VARIANT) {
    m_value.ptr()->vt = parameter.type;  // all zero is a value of every type
    return Own(S_OK);
  }
  m_place = m_value.ptr();
  return S_OK;
}

HRESULT Argument::BindScalarReference(const Parameter& parameter, VARIANTARG& given) {
  const bool byReference = (given.vt & VT_BYREF) != 0;
  if (byReference && BaseType(given.vt) == parameter.type && parameter.type != VT_BSTR) {
    if (given.vt & VT_ARRAY) return DISP_E_TYPEMISMATCH;
    m_place = given.byref;
    return S_OK;
  }
  if (byReference && (given.vt & VT_ARRAY)) return DISP_E_TYPEMISMATCH;
  if (byReference) m_target = &given;
  const HRESULT status = VariantChangeType(m_value.ptr(), &given, 0, parameter.type);
  // Methods overwrite strings without freeing them.
  if (parameter.type == VT_BSTR && SUCCEEDED(status)) m_value = Variant::FromBstr({});
  return Own(status);
}

HRESULT Argument::BindVariantReference(const Parameter& parameter, VARIANTARG& given) {
  if (!(given.vt & VT_BYREF)) {
    m_place = &given;
  } else if (given.vt == kVariantReference) {
    m_place = given.pvarVal;
  } else if (parameter.flags & PARAMFLAG_FOUT) {
    return DISP_E_TYPEMISMATCH;
  } else if (given.vt & VT_ARRAY) {
    m_view.vt = static_cast<VARTYPE>(given.vt & ~VT_BYREF);
    m_view.parray = *given.pparray;
    m_place = &m_view;
  } else {
    m_place = m_value.ptr();
    return VariantCopyInd(m_value.ptr(), &given);
  }
  return S_OK;
}

HRESULT Argument::WriteBack() {
  const bool untouched = m_value.type() == VT_BSTR && !m_value.get().bstrVal;
  if (!m_target || untouched) return S_OK;
  if (m_target->vt == kVariantReference) {
    const HRESULT status = VariantClear(m_target->pvarVal);
    if (SUCCEEDED(status)) *m_target->pvarVal = m_value.detach();
    return status;
  }
  Variant result;
  const HRESULT status = VariantChangeType(result.ptr(), &m_value.get(), 0, BaseType(m_target->vt));
  if (FAILED(status)) return status;
  if (result.type() == VT_BSTR) SysFreeString(*m_target->pbstrVal);
  StoreAt(m_target->byref, result.detach());
  return S_OK;
}

}  // namespace orxdb
