#include "host/library/Cell.h"

#include <array>
#include <charconv>
#include <cmath>

#include "platform/automation/SafeArray.h"
#include "platform/automation/Variant.h"
#include "platform/framework/Text.h"

namespace orxdb {
namespace {

template <typename Real>
Cell OfReal(Real value) {
  if (!std::isfinite(value))
    return Cell::Text(std::isnan(value) ? "NaN" : value > 0 ? "Inf" : "-Inf");
  // Plain digits as long as people read them well.
  const Real size = std::abs(value);
  const auto format = value == 0 || (size >= Real(1e-6) && size < Real(1e15))
                          ? std::chars_format::fixed
                          : std::chars_format::general;
  std::array<char, 64> text{};
  const auto end = std::to_chars(text.data(), text.data() + text.size(), value, format).ptr;
  return {Cell::Kind::Number, std::string(text.data(), end)};
}

Cell OfBytes(SAFEARRAY* bytes) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string text;
  for (const BYTE byte : ArrayAccess<BYTE>(bytes).elements()) {
    text += kDigits[byte >> 4];
    text += kDigits[byte & 15];
  }
  return Cell::Text(text);
}

}  // namespace

Cell Cell::Of(const VARIANT& value) {
  switch (value.vt) {
    case VT_EMPTY:
    case VT_NULL:
      return {};
    case VT_BSTR:
      return Text(NarrowBstr(value.bstrVal));
    case VT_BOOL:
      return {Kind::Flag, value.boolVal ? "true" : "false"};
    case VT_R4:
      return OfReal(value.fltVal);
    case VT_R8:
      return OfReal(value.dblVal);
    case VT_ARRAY | VT_UI1:
      return OfBytes(value.parray);
    default: {
      Variant text;
      if (FAILED(VariantChangeType(text.ptr(), &value, 0, VT_BSTR))) return Text("?");
      const bool isText = value.vt == VT_DATE || value.vt > VT_UINT;
      return {isText ? Kind::Text : Kind::Number, NarrowBstr(text.get().bstrVal)};
    }
  }
}

Cell Cell::Real(double number) {
  return OfReal(number);
}

}  // namespace orxdb
