#include "platform/automation/Variants.h"

#include <cstring>

#include "platform/automation/BString.h"
#include "platform/automation/SafeArrays.h"
#include "platform/automation/Unknown.h"
#include "platform/automation/VariantTypes.h"

namespace orxdb {

HRESULT Dereference(const VARIANT& source, VARIANT& view) noexcept {
  if (!IsVariantType(source.vt)) return DISP_E_BADVARTYPE;
  view = source;
  if (!(source.vt & VT_BYREF)) return S_OK;
  if (!source.byref) return E_INVALIDARG;

  const auto type = static_cast<VARTYPE>(source.vt & ~VT_BYREF);
  if (type == VT_VARIANT) {
    if (source.pvarVal->vt == (VT_BYREF | VT_VARIANT)) return E_INVALIDARG;
    return Dereference(*source.pvarVal, view);
  }
  if (type == VT_DECIMAL) {
    view.decVal = *source.pdecVal;
  } else {
    const UINT size = (type & VT_ARRAY) ? sizeof(PVOID) : SizeOfType(type);
    std::memcpy(&view.llVal, source.byref, size);
  }
  view.vt = type;
  return S_OK;
}

namespace {

/// Makes what `value` refers to its own: on failure `value` must be forgotten, not cleared.
HRESULT Duplicate(VARIANT& value) {
  if (OwnsNothing(value.vt)) return S_OK;
  if (value.vt & VT_ARRAY) return SafeArrayCopy(value.parray, &value.parray);
  if (value.vt == VT_BSTR) {
    value.bstrVal = SysAllocStringByteLen(reinterpret_cast<const char*>(value.bstrVal),
                                          SysStringByteLen(value.bstrVal));
    return value.bstrVal ? S_OK : E_OUTOFMEMORY;
  }
  if (value.punkVal) value.punkVal->AddRef();
  return S_OK;
}

/// Puts a duplicate of `view` into `target`, which may own what the view shows.
HRESULT CopyView(VARIANT& target, VARIANT view) {
  HRESULT status = Duplicate(view);
  if (FAILED(status)) return status;
  status = VariantClear(&target);
  if (FAILED(status)) {
    VariantClear(&view);
    return status;
  }
  target = view;
  return S_OK;
}

}  // namespace
}  // namespace orxdb

void VariantInit(VARIANT* variant) {
  if (variant) *variant = VARIANT{};
}

HRESULT VariantClear(VARIANT* variant) {
  if (!variant) return E_INVALIDARG;
  const VARTYPE type = variant->vt;
  if (!orxdb::OwnsNothing(type)) {
    if (type == VT_BSTR) {
      SysFreeString(variant->bstrVal);
    } else if (!orxdb::IsVariantType(type)) {
      return DISP_E_BADVARTYPE;
    } else if (type & VT_ARRAY) {
      const HRESULT status = SafeArrayDestroy(variant->parray);
      if (FAILED(status)) return status;
    } else if (variant->punkVal) {
      variant->punkVal->Release();
    }
  } else if (!orxdb::IsVariantType(type)) {
    return DISP_E_BADVARTYPE;
  }
  variant->vt = VT_EMPTY;
  return S_OK;
}

HRESULT VariantCopy(VARIANT* target, const VARIANT* source) {
  if (!target || !source) return E_INVALIDARG;
  if (!orxdb::IsVariantType(source->vt)) return DISP_E_BADVARTYPE;
  return target == source ? S_OK : orxdb::CopyView(*target, *source);
}

HRESULT VariantCopyInd(VARIANT* target, const VARIANT* source) {
  if (!target || !source) return E_INVALIDARG;
  if (target == source && !(source->vt & VT_BYREF)) return VariantCopy(target, source);
  VARIANT view{};
  const HRESULT status = orxdb::Dereference(*source, view);
  return FAILED(status) ? status : orxdb::CopyView(*target, view);
}
