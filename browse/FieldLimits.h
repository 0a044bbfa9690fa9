// What the values of a tool table's fields must keep to.
#pragma once

#include <string>

#include "database/ToolDbData.h"
#include "platform/automation/Variant.h"

namespace orxdb {

struct FieldLimits {
  LONG longest = 0;       ///< characters of a text, counted as code points; 0 for no limit
  bool required = false;  ///< no value is none: the tool table's column takes no null
  Variant lowest;         ///< in the field's type; both empty when numbers have no bounds
  Variant highest;
};

/// The limits of a field as the table's query shows it. A lookup field has the length of the texts
/// that it is looked up by and, when the tool table has a column of that name, must have a value as
/// that must. Raises for a field that the query does not have.
FieldLimits LimitsOfField(CDaoDatabase& database, const CToolTableInfo& table,
                          const std::string& name);

}  // namespace orxdb
