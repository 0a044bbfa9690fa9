// Lengths of tools, which are in the unit that the tool has.
#pragma once

#include <string>

#include "host/library/Quantity.h"
#include "host/library/ToolDatabase.h"

namespace orxdb {

/// Whether the property is a length in the unit of the tool.
bool IsLength(const Property& property);

/// The number of millimetres that a unit of lengths has.
constexpr double MillimetresOf(Unit unit) {
  return unit == Unit::Inch ? 25.4 : 1;
}

}  // namespace orxdb
