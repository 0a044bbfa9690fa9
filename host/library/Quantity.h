// Numbers as people write them, with their units.
#pragma once

#include <string>
#include <string_view>

namespace orxdb {

/// What a unit measures.
enum class Unit { None, Millimetre, Inch, Degree };

/// "mm", "in", "deg" or nothing.
std::string_view NameOf(Unit unit);

/// A number as a decimal text with a full stop, all digits as they were written.
struct Quantity {
  std::string number;
  Unit unit = Unit::None;
  bool fraction = false;  ///< written as one
};

/// The unit of lengths that a text names in any usual way ("inch", "Zoll", "″", "millimetres");
/// Unit::None for every other text.
Unit LengthUnitNamed(std::string_view text);

/// Reads a number: decimals with a full stop, or with a comma where that can mean nothing else,
/// fractions ("1/4", "1 1/2", "1-1/2", "½"), and a unit behind it. Throws HostError with the end of
/// a sentence that begins with the text.
Quantity ReadQuantity(std::string_view text);

/// The number of a length in the other unit of lengths; of one inch to 25.4 mm, exactly.
std::string Converted(const std::string& number, Unit from, Unit to);

}  // namespace orxdb
