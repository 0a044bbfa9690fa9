#include "platform/automation/Decimals.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "platform/automation/Ascii.h"

namespace orxdb {
namespace {

constexpr int kMostDigits = 38;
constexpr int kMostScale = 28;
constexpr UInt128 kMost96Bits = (UInt128{1} << 96) - 1;
// Exponents beyond this are as good as it: no type reaches that far.
constexpr int kMostExponent = 100000;

constexpr UInt128 PowerOfTen(int exponent) {
  UInt128 power = 1;
  while (exponent-- > 0) power *= 10;
  return power;
}

/// Drops the last `digits` digits, rounding half to even.
UInt128 DropDigits(UInt128 magnitude, int digits) {
  if (digits <= 0) return magnitude;
  if (digits > kMostDigits) return 0;
  const UInt128 divisor = PowerOfTen(digits);
  const UInt128 quotient = magnitude / divisor;
  const UInt128 rest = magnitude % divisor;
  const UInt128 half = divisor / 2;
  return quotient + (rest > half || (rest == half && quotient % 2 == 1) ? 1 : 0);
}

/// Appends `digits` zeros; false when the number gets longer than a magnitude may be.
bool AppendZeros(UInt128& magnitude, int digits) {
  if (magnitude == 0 || digits <= 0) return true;
  if (digits > kMostDigits || magnitude > (PowerOfTen(kMostDigits) - 1) / PowerOfTen(digits)) {
    return false;
  }
  magnitude *= PowerOfTen(digits);
  return true;
}

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

bool TakeSign(std::string_view& text) {
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  return negative;
}

/// Digits behind &H or &O, the text behind the ampersand; at most 64 bits.
bool ParseRadix(std::string_view text, Decimal& number) {
  if (text.size() < 2) return false;
  const bool hexadecimal = text[0] == 'H' || text[0] == 'h';
  if (!hexadecimal && text[0] != 'O' && text[0] != 'o') return false;
  ULONGLONG value = 0;
  const char* end = text.data() + text.size();
  const auto [behind, error] = std::from_chars(text.data() + 1, end, value, hexadecimal ? 16 : 8);
  number.magnitude = value;
  return error == std::errc() && behind == end;
}

/// Collects digits, at most 38 significant ones.
class Digits {
 public:
  explicit Digits(Decimal& number) : m_number(number) {}

  /// Takes digits off the front; each counts `decimals` (0 or 1) towards the scale.
  bool Take(std::string_view& text, int decimals) {
    bool any = false;
    for (; !text.empty() && IsDigit(text[0]); text.remove_prefix(1), any = true) {
      const auto digit = static_cast<unsigned>(text[0] - '0');
      if (m_number.magnitude < PowerOfTen(kMostDigits - 1)) {
        m_number.magnitude = m_number.magnitude * 10 + digit;
        m_number.scale = Add(m_number.scale, decimals);
      } else {
        m_number.scale = Add(m_number.scale, decimals - 1);
        m_lost = m_lost || digit != 0;
      }
    }
    return any;
  }
  /// Lost digits must still break a tie: a last digit of 0 or 5 gets one more.
  void Finish() {
    if (m_lost && m_number.magnitude % 5 == 0) m_number.magnitude += 1;
  }
  static int Add(int scale, int more) {
    return std::clamp(scale + more, -2 * kMostExponent, 2 * kMostExponent);
  }

 private:
  Decimal& m_number;
  bool m_lost = false;
};

/// Reads "E", a sign and digits; no exponent is fine too.
bool TakeExponent(std::string_view& text, int& exponent) {
  exponent = 0;
  if (text.empty() || (text[0] != 'e' && text[0] != 'E')) return true;
  text.remove_prefix(1);
  const bool negative = TakeSign(text);
  const bool any = !text.empty() && IsDigit(text[0]);
  for (; !text.empty() && IsDigit(text[0]); text.remove_prefix(1)) {
    exponent = std::min(exponent * 10 + (text[0] - '0'), kMostExponent);
  }
  if (negative) exponent = -exponent;
  return any;
}

}  // namespace

Decimal DecimalFromWhole(Int128 value, int scale) noexcept {
  const bool negative = value < 0;
  const auto bits = static_cast<UInt128>(value);
  return {negative ? UInt128{0} - bits : bits, scale, negative};
}

bool DecimalFromVariant(const DECIMAL& value, Decimal& decimal) noexcept {
  decimal = {(UInt128{value.Hi32} << 64) | value.Lo64, value.scale, value.sign == DECIMAL_NEG};
  return value.scale <= kMostScale && (value.sign == 0 || value.sign == DECIMAL_NEG);
}

bool DecimalToVariant(Decimal decimal, DECIMAL& value) noexcept {
  if (decimal.scale < 0) {
    if (!AppendZeros(decimal.magnitude, -decimal.scale)) return false;
    decimal.scale = 0;
  }
  int dropped = std::max(decimal.scale - kMostScale, 0);
  UInt128 magnitude = DropDigits(decimal.magnitude, dropped);
  while (magnitude > kMost96Bits && dropped < decimal.scale) {
    // Always from the full number: rounding twice could go astray.
    magnitude = DropDigits(decimal.magnitude, ++dropped);
  }
  if (magnitude > kMost96Bits) return false;
  value.Lo64 = static_cast<ULONGLONG>(magnitude);
  value.Hi32 = static_cast<ULONG>(magnitude >> 64);
  value.scale = static_cast<BYTE>(decimal.scale - dropped);
  value.sign = decimal.negative && magnitude != 0 ? DECIMAL_NEG : BYTE{0};
  return true;
}

bool DecimalToWhole(Decimal decimal, int scale, Int128& value) noexcept {
  UInt128 magnitude = DropDigits(decimal.magnitude, decimal.scale - scale);
  if (!AppendZeros(magnitude, scale - decimal.scale)) return false;
  if (magnitude >> 126 != 0) return false;
  value = static_cast<Int128>(magnitude);
  if (decimal.negative) value = -value;
  return true;
}

bool ParseNumber(std::string_view text, NumberText& number) noexcept {
  number = {};
  text = Trim(text, " \t\r\n\v\f");
  if (text.starts_with('&')) return ParseRadix(text.substr(1), number.exact);

  number.exact.negative = TakeSign(text);
  number.body = text;
  Digits digits(number.exact);
  bool any = digits.Take(text, 0);
  if (text.starts_with('.')) {
    text.remove_prefix(1);
    any = digits.Take(text, 1) || any;
  }
  digits.Finish();
  int exponent = 0;
  if (!any || !TakeExponent(text, exponent) || !text.empty()) return false;
  number.exact.scale = Digits::Add(number.exact.scale, -exponent);
  return true;
}

bool NumberToReal(const NumberText& number, double& value) noexcept {
  value = 0;
  if (number.body.empty()) {
    value = static_cast<double>(number.exact.magnitude);
    return true;
  }
  const char* end = number.body.data() + number.body.size();
  if (std::from_chars(number.body.data(), end, value).ec == std::errc::result_out_of_range) {
    // Too small reads as zero. No magnitude spans the range between the two.
    if (number.exact.scale < 0) return false;
    value = 0;
  }
  if (number.exact.negative) value = -value;
  return std::isfinite(value);
}

std::string_view FormatDecimal(const Decimal& decimal, NumberBuffer& buffer) noexcept {
  // Written from the end: the decimals first, then at least one digit before the full stop.
  char* const end = buffer.data() + buffer.size();
  char* at = end;
  UInt128 rest = decimal.magnitude;
  int scale = decimal.scale;
  for (; scale > 0 && rest % 10 == 0; --scale) rest /= 10;
  const bool hasDecimals = scale > 0;
  for (; scale > 0; --scale, rest /= 10)
    *--at = static_cast<char>('0' + static_cast<int>(rest % 10));
  if (hasDecimals) *--at = '.';
  do {
    *--at = static_cast<char>('0' + static_cast<int>(rest % 10));
    rest /= 10;
  } while (rest != 0);
  if (decimal.negative && decimal.magnitude != 0) *--at = '-';
  return {at, static_cast<std::size_t>(end - at)};
}

std::string_view FormatReal(double value, int digits, NumberBuffer& buffer) noexcept {
  if (value == 0) value = 0;  // minus zero as well
  const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                          std::chars_format::general, digits);
  std::transform(buffer.data(), end, buffer.data(), UpperAscii);
  return {buffer.data(), static_cast<std::size_t>(end - buffer.data())};
}

}  // namespace orxdb
