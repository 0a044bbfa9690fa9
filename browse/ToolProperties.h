// One tool's properties, and what a table tells of its own.
#pragma once

#include <string>

#include "browse/PropertyArrays.h"
#include "database/ToolDbData.h"
#include "interface/IOrxDbObj.h"

namespace orxdb {

/// The properties of the tool with that `ID`, whatever the table's filter. The cursor stays on its
/// record; one without a current record ends on the last tool when a tool was found.
PropertyArrays FindToolProperties(const CToolTableInfo& table, LONG id);

/// The names of the search parameters, VT_ARRAY | VT_BSTR; empty when there are none. Raises for a
/// table that is not open and for one with fewer fields than parameters.
Variant SearchParamNames(const CToolTableInfo& table);

/// What a new tool would start with, read from a temporary one that is added and deleted again by
/// AddNewRecord and GetToolProps of the component; their failures leave the arrays empty. Shares
/// the table's cursor, and leaves all as it is when the table has lost it meanwhile.
///
/// Deletes the record at the cursor when the temporary tool got an identifier but is not found: in
/// TAPPING_HEAD while a head of that name exists, wherever the file refuses the row (a column that
/// must have a value, a constraint, a full or locked file), and where the table's query leaves it
/// out.
void ReadDefaultProperties(const CToolTableInfo& entry, BSTR table, VARIANT* names, VARIANT* values,
                           IOrxDbObj& own);

}  // namespace orxdb
