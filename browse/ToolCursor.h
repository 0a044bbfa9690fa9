// The cursor of a tool table: its recordset's current record, its ordering and its filter. Every
// operation raises CDaoException for a table without an open recordset, unless it says otherwise.
#pragma once

#include <string>

#include "database/ToolTableInfo.h"
#include "platform/automation/Variant.h"

namespace orxdb {

/// Stores the criteria, and with a non-empty ordering opens the cursor anew in that order, on its
/// first record. The criteria stay also when the ordering is refused, and the cursor is then
/// closed until a good ordering comes.
void SetTabFilter(CToolTableInfo& table, std::string where, const std::string& order);

/// Moves to the first record that the filter selects and gives its values (see `FieldValues`);
/// empty when there is none.
Variant FirstTool(CToolTableInfo& table);

/// As `FirstTool` for the next selected record; empty also for a table without a recordset.
Variant NextTool(CToolTableInfo& table);

/// The number of records that the recordset has reached once the last selected one was looked for:
/// all of them, filter or not. 0 when there is no current record. The cursor stays where it was.
LONG CountSelectedRecords(CToolTableInfo& table);

/// The bookmark of the current record; empty without one, also for a table without a recordset.
Variant GetToolBookmark(const CToolTableInfo& table);

/// Moves to the record of a bookmark; does nothing when the cursor has no current record, also for
/// a table without a recordset.
void SetToolBookmark(CToolTableInfo& table, const VARIANT& bookmark);

/// Puts a tool cursor back on a bookmark taken before; on the last record when that is empty or no
/// longer accepted. Does nothing at either end. Always true.
bool RepositionToolCursor(CDaoRecordset& tools, const VARIANT* bookmark);

/// Where a cursor stands, for RepositionToolCursor: its bookmark, empty without a current record.
Variant ToolPosition(const CDaoRecordset& tools);

/// Moves to the first record that meets the criteria, whatever the filter, runs `use(found)` there
/// and puts the cursor back. When anything raises the cursor stays where it then is.
template <typename Use>
void UseFoundTool(CDaoRecordset& tools, const std::string& criteria, Use&& use) {
  const Position position = tools.GetPosition();
  use(tools.FindFirst(criteria));
  if (!tools.ReturnTo(position)) RepositionToolCursor(tools, &Variant().get());
}

/// Criteria for the tool with that `ID`. The key is qualified with the table's name, for the
/// stored query may join tables that have one, too.
std::string ToolCriteria(const std::string& table, LONG id);

}  // namespace orxdb
