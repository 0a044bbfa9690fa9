#include "platform/automation/VariantOperators.h"

#include <algorithm>
#include <compare>
#include <limits>
#include <string_view>

#include "platform/automation/Ascii.h"
#include "platform/automation/Bstr.h"
#include "platform/automation/Decimals.h"
#include "platform/automation/Variant.h"
#include "platform/automation/VariantTypes.h"

namespace orxdb {
namespace {

HRESULT Found(std::partial_ordering order) {
  if (std::is_lt(order)) return VARCMP_LT;
  if (std::is_gt(order)) return VARCMP_GT;
  return std::is_eq(order) ? VARCMP_EQ : VARCMP_NULL;
}

HRESULT CompareTexts(std::u16string_view left, std::u16string_view right, ULONG flags) {
  const auto weigh = [&](char16_t a, char16_t b) {
    return flags & NORM_IGNORECASE ? LowerAscii(a) <=> LowerAscii(b) : a <=> b;
  };
  return Found(std::lexicographical_compare_three_way(left.begin(), left.end(), right.begin(),
                                                      right.end(), weigh));
}

/// Plain digits order by the length of their whole part first.
std::strong_ordering CompareDigits(std::string_view left, std::string_view right) {
  const auto whole = [](std::string_view text) { return std::min(text.find('.'), text.size()); };
  const auto lengths = whole(left) <=> whole(right);
  return std::is_neq(lengths) ? lengths : left <=> right;
}

std::strong_ordering CompareExactly(const DECIMAL& left, const DECIMAL& right) {
  Decimal a;
  Decimal b;
  DecimalFromVariant(left, a);
  DecimalFromVariant(right, b);
  if (a.negative != b.negative) {
    const bool zeros = a.magnitude == 0 && b.magnitude == 0;
    return zeros ? std::strong_ordering::equal : b.negative <=> a.negative;
  }
  if (a.negative) std::swap(a, b);
  a.negative = b.negative = false;
  NumberBuffer first;
  NumberBuffer second;
  return CompareDigits(FormatDecimal(a, first), FormatDecimal(b, second));
}

constexpr bool IsReal(VARTYPE type) {
  return type == VT_R4 || type == VT_R8 || type == VT_DATE;
}

HRESULT CompareNumbers(const VARIANT& left, const VARIANT& right) {
  const VARTYPE common = IsReal(left.vt) || IsReal(right.vt) ? VT_R8 : VT_DECIMAL;
  Variant a;
  Variant b;
  for (const auto& [target, source] : {std::pair(a.ptr(), &left), std::pair(b.ptr(), &right)}) {
    const HRESULT status = VariantChangeType(target, source, 0, common);
    if (FAILED(status)) return status;
  }
  return Found(common == VT_R8 ? a.get().dblVal <=> b.get().dblVal
                               : CompareExactly(a.get().decVal, b.get().decVal));
}

constexpr bool IsComparable(VARTYPE type) {
  return type == VT_EMPTY || type == VT_BSTR ||
         (OwnsNothing(type) && !(type & VT_BYREF) && type != VT_ERROR);
}

}  // namespace
}  // namespace orxdb

HRESULT VarBstrCat(BSTR left, BSTR right, BSTR* result) {
  if (!result) return E_INVALIDARG;
  *result = nullptr;
  const std::string_view first = orxdb::Bytes(left);
  const std::string_view second = orxdb::Bytes(right);
  const std::size_t length = first.size() + second.size();
  if (length > std::numeric_limits<UINT>::max()) return E_OUTOFMEMORY;
  *result = SysAllocStringByteLen(nullptr, static_cast<UINT>(length));
  if (!*result) return E_OUTOFMEMORY;
  char* const behind = std::ranges::copy(first, reinterpret_cast<char*>(*result)).out;
  std::ranges::copy(second, behind);
  return S_OK;
}

HRESULT VarBstrCmp(BSTR left, BSTR right, LCID, ULONG flags) {
  return orxdb::CompareTexts(orxdb::View(left), orxdb::View(right), flags);
}

HRESULT VarCmp(VARIANT* left, VARIANT* right, LCID, ULONG flags) {
  if (!left || !right) return E_INVALIDARG;
  VARIANT a{};
  VARIANT b{};
  for (const auto& [view, value] : {std::pair(&a, left), std::pair(&b, right)}) {
    const HRESULT status = orxdb::Dereference(*value, *view);
    if (FAILED(status)) return status;
    if (!orxdb::IsComparable(view->vt)) return DISP_E_TYPEMISMATCH;
  }
  if (a.vt == VT_NULL || b.vt == VT_NULL) return VARCMP_NULL;
  const bool aIsText = a.vt == VT_BSTR;
  const bool bIsText = b.vt == VT_BSTR;
  if (!aIsText && !bIsText) return orxdb::CompareNumbers(a, b);
  if (aIsText != bIsText && a.vt != VT_EMPTY && b.vt != VT_EMPTY) {
    return aIsText ? VARCMP_GT : VARCMP_LT;
  }
  return orxdb::CompareTexts(aIsText ? orxdb::View(a.bstrVal) : u"",
                             bIsText ? orxdb::View(b.bstrVal) : u"", flags);
}
