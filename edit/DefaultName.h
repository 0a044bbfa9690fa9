// Default names of tools, made by a table's name format.
//
// The percent signs of a format pair up from left to right. Between the two of a pair stands the
// name of a property, whose text takes its place; text before and between pairs is copied. Text
// after the last percent sign is not, so a unit behind the last placeholder does not show. A format
// without percent signs is the name.
#pragma once

#include <string>

#include "database/ToolTableInfo.h"
#include "interface/IOrxDbObj.h"

namespace orxdb {

/// The name that a format gives for a caller's pair of property arrays (either may be VT_EMPTY),
/// read through FindPropByNameInArray and VariantToUIString of the component. A placeholder
/// without a property, a value or a text yields nothing; "__" becomes "_". `table` decides how the
/// unit "mm" shows. A `Name` without a text in the value array receives the name.
std::string BuildDefaultToolName(const std::string& format, const std::string& table,
                                 VARIANT* names, VARIANT* values, IOrxDbObj& own);

/// The format that hosts' questions for a name are answered with. Unless it is empty it ends in
/// four blanks, which show only in names made by a format without percent signs.
std::string NameFormat(const CToolTableInfo& table);

}  // namespace orxdb
