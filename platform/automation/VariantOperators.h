// Joining texts and comparing values. The same in every locale.
#pragma once

#include "platform/automation/Types.h"

/// What the comparisons find; VARCMP_NULL when there is no order.
inline constexpr HRESULT VARCMP_LT = 0;
inline constexpr HRESULT VARCMP_EQ = 1;
inline constexpr HRESULT VARCMP_GT = 2;
inline constexpr HRESULT VARCMP_NULL = 3;

/// Comparison flag: the case of ASCII letters does not count.
inline constexpr ULONG NORM_IGNORECASE = 0x1;

extern "C" {

/// A new string of the bytes of both.
AUTOMATION_API HRESULT VarBstrCat(BSTR left, BSTR right, BSTR* result);

/// Compares texts character by character.
AUTOMATION_API HRESULT VarBstrCmp(BSTR left, BSTR right, LCID locale, ULONG flags);

/// Compares values, by-reference too. Numbers, dates and flags compare as numbers, exactly unless
/// one is a real or a date; texts as VarBstrCmp; any number comes before any text; empty is 0
/// beside a number and "" beside a text. VARCMP_NULL when one is null or not a number;
/// DISP_E_TYPEMISMATCH for arrays, objects and errors, DISP_E_BADVARTYPE for impossible types.
AUTOMATION_API HRESULT VarCmp(VARIANT* left, VARIANT* right, LCID locale, ULONG flags);
}
