// Operations on variants: life cycle, copies and conversion of values.
#pragma once

#include "platform/automation/Dates.h"
#include "platform/automation/Types.h"

namespace orxdb {
/// True when a variant of this type owns nothing, so that clearing it only resets its type.
constexpr bool OwnsNothing(VARTYPE type) noexcept {
  return (type & VT_BYREF) != 0 ||
         ((type & VT_ARRAY) == 0 && type != VT_BSTR && type != VT_DISPATCH && type != VT_UNKNOWN);
}
}  // namespace orxdb

/// Conversion flag: an object is not asked for its default property.
inline constexpr USHORT VARIANT_NOVALUEPROP = 0x0001;
/// Conversion flag: flags become "True"/"False" instead of "-1"/"0".
inline constexpr USHORT VARIANT_ALPHABOOL = 0x0002;

extern "C" {

/// Makes raw memory an empty variant, without looking at what was there.
AUTOMATION_API void VariantInit(VARIANT* variant);

/// Frees the string or array, releases the object, and leaves the variant empty. By-reference
/// data is left alone. DISP_E_ARRAYISLOCKED for a locked array and DISP_E_BADVARTYPE for an
/// impossible type leave the variant unchanged; E_INVALIDARG for null.
AUTOMATION_API HRESULT VariantClear(VARIANT* variant);

/// Clears `target` and makes it a copy of `source`: strings and arrays are duplicated, objects get
/// a reference, by-reference variants still refer to the same place. A null string becomes an empty
/// one. `target` is unchanged when the copy fails. Both may be the same variant.
AUTOMATION_API HRESULT VariantCopy(VARIANT* target, const VARIANT* source);

/// As VariantCopy, but a by-reference `source` gives the value it refers to (one variant deep).
AUTOMATION_API HRESULT VariantCopyInd(VARIANT* target, const VARIANT* source);

/// Converts `source` (by-reference too) to `type` and puts the result in `target`, which may be
/// the same variant and is unchanged on failure.
///
/// - Numbers are rounded to whole ones half to even; DISP_E_OVERFLOW when they do not fit. Whole
///   numbers of one width keep their bits instead: -1 as VT_UI4 is 4294967295, and the reverse.
/// - A flag becomes the number that it holds, usually -1; for unsigned types its bits.
/// - Empty reads as 0, false, the zero date or empty text. VT_NULL, and text that is no number,
///   give DISP_E_TYPEMISMATCH, as do conversions without meaning; an impossible `type` gives
///   DISP_E_BADVARTYPE. To VT_EMPTY and VT_NULL changes everything but VT_ERROR, and null to empty.
/// - Texts are the same in every locale. To text: whole numbers plain; VT_R8 with 15 and VT_R4
///   with 7 significant digits at most, as printf's %G writes them, with a full stop; flags "-1"
///   and "0", or "True" and "False" with VARIANT_ALPHABOOL; currency and decimal plain without
///   trailing zeros; dates as told in Dates.h.
/// - From text: blanks around are ignored; a sign, digits, a full stop and an exponent; &H and &O
///   introduce hexadecimal and octal whole numbers. Flags: "True", "False", "#TRUE#", "#FALSE#" in
///   any case, or a number. Dates as told in Dates.h.
/// - A byte array and a string exchange their bytes unchanged.
/// - An object gives its default property (unless VARIANT_NOVALUEPROP) or another of its
///   interfaces.
AUTOMATION_API HRESULT VariantChangeType(VARIANT* target, const VARIANT* source, USHORT flags,
                                         VARTYPE type);

/// As VariantChangeType. The locale is accepted and ignored: texts are the same everywhere.
AUTOMATION_API HRESULT VariantChangeTypeEx(VARIANT* target, const VARIANT* source, LCID locale,
                                           USHORT flags, VARTYPE type);
}
