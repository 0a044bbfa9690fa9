// Values of properties as people write them.
#pragma once

#include <string>

#include "host/library/ToolDatabase.h"

namespace orxdb {

/// The type of a property as schemas name it ("DOUBLE"); "?" for one that the component does not
/// know.
std::string TypeName(VARTYPE type);

/// The value that a text means for a property: numbers with a full stop, flags as yes or no, true
/// or false, 1 or 0, dates as YYYY-MM-DD with or without HH:MM:SS, bytes as hexadecimal digits.
/// Throws HostError for a text that is no such value and for numbers beyond the property's type.
Variant ParseValue(const Property& property, const std::string& text);

}  // namespace orxdb
