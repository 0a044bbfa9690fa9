// Exact decimal numbers: the common ground of currency, decimals, whole numbers and number text.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "platform/automation/Types.h"

namespace orxdb {

__extension__ typedef __int128 Int128;
__extension__ typedef unsigned __int128 UInt128;

/// magnitude / 10^scale, negated if `negative`; the magnitude has 38 digits at most and the scale
/// may be below zero.
struct Decimal {
  UInt128 magnitude = 0;
  int scale = 0;
  bool negative = false;
};

inline constexpr int kCurrencyScale = 4;

Decimal DecimalFromWhole(Int128 value, int scale = 0) noexcept;

/// False for a scale or sign that no decimal has.
bool DecimalFromVariant(const DECIMAL& value, Decimal& decimal) noexcept;

/// Rounds half to even until the value fits 96 bits and 28 decimals. False when it is too large.
/// `wReserved` is left alone.
bool DecimalToVariant(Decimal decimal, DECIMAL& value) noexcept;

/// `decimal` in units of 10^-scale, rounded half to even. False beyond 126 bits.
bool DecimalToWhole(Decimal decimal, int scale, Int128& value) noexcept;

/// Number text taken apart.
struct NumberText {
  Decimal exact;
  /// Digits, full stop and exponent without the sign; empty for hexadecimal and octal numbers.
  std::string_view body;
};

/// Reads a number in the form that VariantChangeType tells. False for any other text.
bool ParseNumber(std::string_view text, NumberText& number) noexcept;

/// The nearest real. False when it is too large.
bool NumberToReal(const NumberText& number, double& value) noexcept;

using NumberBuffer = std::array<char, 64>;

/// Plain digits, no exponent, no zeros behind the last decimal; for scales from 0 to 28.
std::string_view FormatDecimal(const Decimal& decimal, NumberBuffer& buffer) noexcept;

/// As printf's %.<digits>G in the C locale, with zero never negative.
std::string_view FormatReal(double value, int digits, NumberBuffer& buffer) noexcept;

}  // namespace orxdb
