#include "host/library/PropertyText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "host/library/Cause.h"
#include "platform/automation/Dates.h"
#include "platform/framework/Text.h"

namespace orxdb {
namespace {

constexpr VARTYPE kBytes = VT_ARRAY | VT_UI1;

/// How a text fails to be a value of a property.
HostError Refusal(const Property& property, const std::string& text, const std::string& how) {
  return HostError(property.name + ": " + Cited(text) + ' ' + how + '.');
}

/// Reads the whole text as a number.
template <typename Number>
std::errc Read(const std::string& text, Number& number) {
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  return error == std::errc() && stop != end ? std::errc::invalid_argument : error;
}

template <typename Whole>
Whole ParseWhole(const Property& property, const std::string& text) {
  using Limits = std::numeric_limits<Whole>;
  Whole number = 0;
  if (Read(text, number) != std::errc()) {
    throw Refusal(property, text,
                  "is no whole number from " + std::to_string(Limits::min()) + " to " +
                      std::to_string(Limits::max()));
  }
  return number;
}

HostError BeyondRange(const Property& property, const std::string& text) {
  return Refusal(property, text, "is beyond the range of the type " + TypeName(property.type));
}

template <typename Real>
Real ParseReal(const Property& property, const std::string& text) {
  Real number = 0;
  const std::errc error = Read(text, number);
  if (error == std::errc::result_out_of_range) throw BeyondRange(property, text);
  if (error != std::errc() || !std::isfinite(number)) {
    throw Refusal(property, text, "is no number" + CommaHint(text));
  }
  return number;
}

bool ParseFlag(const Property& property, const std::string& text) {
  const auto isOneOf = [&text](const std::array<std::string_view, 5>& words) {
    return std::ranges::any_of(words,
                               [&](std::string_view word) { return EqualNoCase(text, word); });
  };
  if (isOneOf({"yes", "true", "on", "1", "-1"})) return true;
  if (isOneOf({"no", "false", "off", "0", "-0"})) return false;
  throw Refusal(property, text, "is neither yes nor no");
}

Variant ParseCurrency(const Property& property, const std::string& text) {
  ParseReal<double>(property, text);
  const Variant digits = Variant::FromBstr(WidenToBstr(text));
  Variant amount;
  if (FAILED(VariantChangeType(amount.ptr(), &digits.get(), 0, VT_CY))) {
    throw BeyondRange(property, text);
  }
  return amount;
}

Variant ParseDateValue(const Property& property, const std::string& text) {
  DATE date = 0;
  if (!ParseDate(text, date)) {
    throw Refusal(property, text, "is no date like 2024-12-31 or 2024-12-31 23:59:59");
  }
  return Variant::FromDate(date);
}

Variant ParseBytes(const Property& property, const std::string& text) {
  SafeArray array = SafeArray::Vector(VT_UI1, static_cast<ULONG>(text.size() / 2));
  bool valid = text.size() % 2 == 0;
  {
    const ArrayAccess<BYTE> bytes(array.get());
    for (std::size_t i = 0; i < bytes.size(); ++i) {
      const char* digits = text.data() + 2 * i;
      valid &= std::from_chars(digits, digits + 2, bytes[i], 16).ptr == digits + 2;
    }
  }
  if (!valid) throw Refusal(property, text, "is no row of bytes, two hexadecimal digits each");
  return Variant::FromArray(VT_UI1, std::move(array));
}

}  // namespace

std::string TypeName(VARTYPE type) {
  switch (type) {
    case VT_BOOL:
      return "BOOLEAN";
    case VT_UI1:
      return "BYTE";
    case VT_I2:
      return "SHORT";
    case VT_I4:
      return "LONG";
    case VT_CY:
      return "CURRENCY";
    case VT_R4:
      return "SINGLE";
    case VT_R8:
      return "DOUBLE";
    case VT_DATE:
      return "DATETIME";
    case VT_BSTR:
      return "TEXT";
    case kBytes:
      return "LONGBINARY";
    case VT_CLSID:
      return "GUID";
    default:
      return "?";
  }
}

Variant ParseValue(const Property& property, const std::string& text) {
  switch (property.type) {
    case VT_BOOL:
      return Variant::FromBool(ParseFlag(property, text));
    case VT_UI1:
      return Variant::FromUI1(ParseWhole<BYTE>(property, text));
    case VT_I2:
      return Variant::FromI2(ParseWhole<SHORT>(property, text));
    case VT_I4:
      return Variant::FromI4(ParseWhole<LONG>(property, text));
    case VT_CY:
      return ParseCurrency(property, text);
    case VT_R4:
      return Variant::FromR4(ParseReal<FLOAT>(property, text));
    case VT_R8:
      return Variant::FromR8(ParseReal<DOUBLE>(property, text));
    case VT_DATE:
      return ParseDateValue(property, text);
    case VT_BSTR:
      return Variant::FromBstr(WidenToBstr(text));
    case kBytes:
    case VT_CLSID:
      return ParseBytes(property, text);
    default:
      throw Refusal(property, text, "cannot be given: the component does not know the type");
  }
}

}  // namespace orxdb
