// Adding, changing and deleting tools.
//
// A tool is written through a short-lived recordset over the tool table itself; the table's own
// cursor is only asked about fields and runs its query again afterwards. The rules of the tool
// domain hold in every write:
// - some fields of taps are never written;
// - a lookup field, one that the table's query shows from another table, is given as that table's
//   text and written as the `ID` of the record with the text;
// - "Absent" (in the user's language) as a `TappingHead` is written as no value;
// - a value that its field cannot hold is passed over, the others are written.
#pragma once

#include "database/ToolDbData.h"
#include "interface/IOrxDbObj.h"

namespace orxdb {

/// Adds a tool from a caller's pair of property arrays, paired by position from the lower bound of
/// each. Empty and null values leave the fields at their defaults. In TAPPING_HEAD a `Name` in use
/// shows a message and ends the adding. `id` is set before anything is checked, also when the tool
/// is then not stored. The cursor goes to the first record.
///
/// E_FAIL when the arrays do not pair up or the name is in use. Raises CDaoException for a name
/// that is no field of the table's query and for what the database refuses; nothing is stored then.
HRESULT AddTool(CDaoDatabase& database, const CToolTableInfo& table, const VARIANT& names,
                const VARIANT& values, LONG& id, IOrxDbObj& own);

/// Changes fields of the tool with that `ID`; arrays as in AddTool, except that the values may have
/// more than one dimension, of which the first counts. Empty and null values set the fields to
/// null; names are not checked for uniqueness. The cursor stays on its record.
///
/// E_FAIL when there is no such tool or the arrays do not pair up. Raises as AddTool, and for a
/// lookup text without a record; nothing is changed then.
HRESULT ChangeTool(CDaoDatabase& database, const CToolTableInfo& table, LONG id,
                   const VARIANT& names, const VARIANT& values);

/// Deletes the tool with that `ID` if there is one. The cursor stays on its record, or goes to the
/// last one when its own was deleted.
void DeleteTool(const CToolTableInfo& table, LONG id);

}  // namespace orxdb
