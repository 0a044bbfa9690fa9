// What the runtime knows of each variant type.
#pragma once

#include "platform/automation/Types.h"

namespace orxdb {

/// Bytes of one value of a plain type (no VT_ARRAY, no VT_BYREF); 0 for types that no variant and
/// no array can hold. Records are not supported.
constexpr UINT SizeOfType(VARTYPE type) noexcept {
  switch (type) {
    case VT_I1:
    case VT_UI1:
      return 1;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
      return 2;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_ERROR:
    case VT_R4:
      return 4;
    case VT_I8:
    case VT_UI8:
    case VT_R8:
    case VT_CY:
    case VT_DATE:
    case VT_BSTR:
    case VT_DISPATCH:
    case VT_UNKNOWN:
      return 8;
    case VT_DECIMAL:
      return sizeof(DECIMAL);
    case VT_VARIANT:
      return sizeof(VARIANT);
    default:
      return 0;
  }
}

/// True for the types that a variant may have: scalars, arrays and references to both. A variant
/// within a variant needs VT_BYREF or VT_ARRAY.
constexpr bool IsVariantType(VARTYPE type) noexcept {
  if (type == VT_EMPTY || type == VT_NULL) return true;
  if ((type & (VT_VECTOR | VT_RESERVED)) != 0) return false;
  const auto base = static_cast<VARTYPE>(type & VT_TYPEMASK);
  return type != VT_VARIANT && SizeOfType(base) != 0;
}

/// A view of the value that `source` holds or, by reference, refers to (through one referred-to
/// variant). It owns nothing: never clear it. E_INVALIDARG for null references and for variants
/// referring to variants that refer to variants; DISP_E_BADVARTYPE for impossible types.
HRESULT Dereference(const VARIANT& source, VARIANT& view) noexcept;

}  // namespace orxdb
