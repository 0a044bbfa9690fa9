// Values as the host shows them.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

#include "platform/automation/Ascii.h"
#include "platform/automation/Types.h"

namespace orxdb {

/// One value to show. Null has no text, numbers are plain with a full stop, flags are "true" or
/// "false", dates "YYYY-MM-DD HH:MM:SS" without a time of midnight, bytes hexadecimal digits.
struct Cell {
  enum class Kind { Null, Text, Number, Flag };

  Kind kind = Kind::Null;
  std::string text;

  static Cell Text(std::string_view text) { return {Kind::Text, std::string(text)}; }
  static Cell Number(long long number) { return {Kind::Number, std::to_string(number)}; }
  /// Reals get the shortest text that reads back as the same number.
  static Cell Of(const VARIANT& value);
  static Cell Real(double number);

  bool operator==(const Cell&) const = default;
};

/// The element with the name that a person wrote: written the same, or else in another case.
template <typename Range, typename Projection>
auto FindNamed(Range& range, std::string_view name, Projection projection) {
  const auto same = std::ranges::find(range, name, projection);
  if (same != range.end()) return same;
  return std::ranges::find_if(
      range, [name](std::string_view other) { return EqualNoCase(other, name); }, projection);
}

}  // namespace orxdb
