#include "values/ValueText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <limits>

#include "platform/automation/Variant.h"
#include "platform/framework/Exception.h"
#include "platform/framework/Text.h"

namespace orxdb {
namespace {

std::string FixedText(double value, int decimals) {
  // Sign, the digits of the largest real, full stop, decimals.
  std::array<char, std::numeric_limits<double>::max_exponent10 + 16> buffer{};
  const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                          std::chars_format::fixed, decimals);
  return {buffer.data(), end};
}

/// The C locale, whatever the process locale is. Made once and kept for the process.
locale_t PlainLocale() {
  static const locale_t locale = newlocale(LC_ALL_MASK, "C", nullptr);
  return locale;
}

/// Scans a number from the start of the text into `payload`; false leaves it unwritten.
template <typename Payload>
bool ScanInteger(const char* text, Payload& payload) {
  char* end = nullptr;
  const long long number = strtoll_l(text, &end, 10, PlainLocale());
  if (end == text) return false;
  payload = static_cast<Payload>(number);
  return true;
}

template <typename Payload>
bool ScanReal(const char* text, Payload& payload, Payload (*scan)(const char*, char**, locale_t)) {
  char* end = nullptr;
  const Payload number = scan(text, &end, PlainLocale());
  if (end == text) return false;
  payload = number;
  return true;
}

/// Scans a number into the payload of `value`, whose type is set.
bool ScanPayload(const char* text, VARIANT& value) {
  switch (value.vt) {
    case VT_I2:
      return ScanInteger(text, value.iVal);
    case VT_I4:
      return ScanInteger(text, value.lVal);
    case VT_I1:
      return ScanInteger(text, value.cVal);
    case VT_UI1:
      return ScanInteger(text, value.bVal);
    case VT_UI2:
      return ScanInteger(text, value.uiVal);
    case VT_UI4:
      return ScanInteger(text, value.ulVal);
    case VT_R4:
      return ScanReal(text, value.fltVal, &strtof_l);
    default:
      return ScanReal(text, value.dblVal, &strtod_l);
  }
}

/// The text that the automation runtime makes of a number.
std::string ConvertedText(const VARIANT& value) {
  Variant text;
  const HRESULT result = VariantChangeType(text.ptr(), &value, 0, VT_BSTR);
  // Every number has a text, so only memory can have been missing.
  if (FAILED(result)) throw CMemoryException();
  return NarrowBstr(text.get().bstrVal);
}

}  // namespace

std::optional<std::string> VariantText(const VARIANT& value) {
  switch (value.vt) {
    case VT_EMPTY:
    case VT_NULL:
      return "NULL";
    case VT_I2:
      return std::to_string(value.iVal);
    case VT_I4:
      return std::to_string(value.lVal);
    case VT_R4:
      return FixedText(value.fltVal, 6);
    case VT_R8:
      return FixedText(value.dblVal, 6);
    case VT_BSTR:
      return NarrowBstr(value.bstrVal);
    case VT_BOOL:
      return value.boolVal != VARIANT_FALSE ? "TRUE" : "FALSE";
    case VT_I1:
      return std::to_string(static_cast<signed char>(value.cVal));
    case VT_UI1:
      return std::to_string(value.bVal);
    case VT_UI2:
      return std::to_string(value.uiVal);
    case VT_UI4:
      // Printed as a signed number: existing files hold -1 for the largest one.
      return std::to_string(static_cast<LONG>(value.ulVal));
    default:
      return std::nullopt;
  }
}

HRESULT FormatVariantText(const VARIANT* value, BSTR* text) {
  if (!value || !text) return E_FAIL;
  const std::optional<std::string> narrow = VariantText(*value);
  if (!narrow) return E_FAIL;
  *text = WidenToBstr(*narrow).detach();
  return S_OK;
}

HRESULT ParseVariantText(const char* text, VARTYPE type, VARIANT& value) {
  value.vt = VT_EMPTY;
  if (!text) return E_FAIL;
  if (*text == '\0') {
    value.vt = VT_NULL;
    return S_OK;
  }
  switch (type) {
    case VT_EMPTY:
    case VT_NULL:
      value.vt = type;
      return S_OK;
    case VT_BSTR:
      value.bstrVal = WidenToBstr(text).detach();
      value.vt = VT_BSTR;
      return E_FAIL;
    case VT_BOOL:
      value.vt = VT_BOOL;
      value.boolVal = std::strcmp(text, "TRUE") == 0 ? VARIANT_TRUE : VARIANT_FALSE;
      return S_OK;
    case VT_I2:
    case VT_I4:
    case VT_R4:
    case VT_R8:
    case VT_I1:
    case VT_UI1:
    case VT_UI2:
    case VT_UI4:
      value.vt = type;
      return ScanPayload(text, value) ? S_OK : E_FAIL;
    default:
      return E_FAIL;
  }
}

std::optional<std::string> VariantDisplayText(const VARIANT& value, LONG precision,
                                              const FlagTexts& flagTexts) {
  switch (value.vt) {
    case VT_EMPTY:
    case VT_NULL:
      return std::string();
    case VT_R4:
    case VT_R8:
      if (precision < 0 || precision > 8) return ConvertedText(value);
      {
        // All eight bytes of the payload count as one real, also for a four-byte real: hosts have
        // adapted to what comes out, so a VT_R4 is not widened here.
        double payload = 0;
        std::memcpy(&payload, &value.dblVal, sizeof payload);
        return DoubleToString(payload, precision);
      }
    case VT_I2:
    case VT_I4:
    case VT_I1:
    case VT_UI1:
    case VT_UI2:
    case VT_UI4:
      return ConvertedText(value);
    case VT_BSTR:
      return NarrowBstr(value.bstrVal);
    case VT_BOOL:
      return std::string(value.boolVal != VARIANT_FALSE ? flagTexts.yes : flagTexts.no);
    default:
      return std::nullopt;
  }
}

std::string DoubleToString(double value, int precision) {
  return FixedText(value, precision);
}

std::string FilterPatternText(std::string text) {
  static constexpr std::string_view replaced = ".,\\/|~!@#$%^&()-+='\"<>?;:";
  static_assert(replaced.size() == 25);
  std::ranges::replace_if(
      text, [](char c) { return replaced.find(c) != replaced.npos; }, '?');
  return text;
}

}  // namespace orxdb
