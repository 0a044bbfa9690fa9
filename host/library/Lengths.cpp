#include "host/library/Lengths.h"

#include <algorithm>
#include <array>

#include "host/library/Names.h"

namespace orxdb {

bool IsLength(const Property& property) {
  constexpr auto kWords =
      std::to_array<std::string_view>({"Diameter", "Length", "Width", "Radius", "Pitch", "Bore",
                                       "Overhang", "Height", "Depth", "Thickness", "Tap_Drill"});
  const std::string& name = property.name;
  const bool real = property.type == VT_R8 || property.type == VT_R4;
  return real && !HasPart(name, "Angle") && !name.starts_with("AUX_") &&
         std::ranges::any_of(kWords,
                             [&name](std::string_view word) { return HasPart(name, word); });
}

}  // namespace orxdb
