#include "browse/ToolCursor.h"

#include <utility>

#include "browse/PropertyArrays.h"
#include "database/ToolRules.h"

namespace orxdb {
namespace {

/// The recordset if it has a current record, else null.
CDaoRecordset* SetWithRecord(const CToolTableInfo& table) {
  CDaoRecordset* tools = table.m_pToolSet.get();
  return tools && HasCurrentRecord(*tools) ? tools : nullptr;
}

bool MoveToFirstTool(CToolTableInfo& table) {
  CDaoRecordset& tools = table.ToolSet();
  if (tools.IsBOF() && tools.IsEOF()) return false;
  if (!table.m_strFilter.empty() && !tools.FindFirst(table.m_strFilter)) return false;
  if (table.m_strFilter.empty()) tools.MoveFirst();
  return HasCurrentRecord(tools);
}

bool MoveToNextTool(CToolTableInfo& table) {
  CDaoRecordset* tools = table.m_pToolSet.get();
  if (!tools || !HasCurrentRecord(*tools)) return false;
  if (!table.m_strFilter.empty() && !tools->FindNext(table.m_strFilter)) return false;
  if (table.m_strFilter.empty()) tools->MoveNext();
  return HasCurrentRecord(*tools);
}

/// The values of the current record if the cursor `found` one. A record that another process
/// deletes between move and reading is stepped over, like one deleted before the move.
Variant ReadTool(CToolTableInfo& table, bool found) {
  for (; found; found = MoveToNextTool(table)) {
    try {
      return FieldValues(table.ToolSet());
    } catch (const CDaoException& exception) {
      if (exception.Error() != DaoError::RecordDeleted) throw;
    }
  }
  return {};
}

}  // namespace

void SetTabFilter(CToolTableInfo& table, std::string where, const std::string& order) {
  table.m_strFilter = std::move(where);
  if (order.empty()) return;
  CDaoRecordset& tools = table.ToolSet();
  tools.Close();
  table.m_pToolQuery->Close();
  table.m_pToolQuery->Create("SELECT * FROM " + StoredQueryOf(table.m_strTableName) + " ORDER BY " +
                             order);
  tools.Open(table.m_pToolQuery.get());
}

Variant FirstTool(CToolTableInfo& table) {
  return ReadTool(table, MoveToFirstTool(table));
}

Variant NextTool(CToolTableInfo& table) {
  return ReadTool(table, MoveToNextTool(table));
}

LONG CountSelectedRecords(CToolTableInfo& table) {
  CDaoRecordset& tools = table.ToolSet();
  if (!HasCurrentRecord(tools)) return 0;
  const Position position = tools.GetPosition();
  if (table.m_strFilter.empty()) {
    tools.MoveLast();
  } else {
    tools.FindLast(table.m_strFilter);
  }
  const LONG count = static_cast<LONG>(tools.GetRecordCount());
  tools.ReturnTo(position);
  return count;
}

Variant GetToolBookmark(const CToolTableInfo& table) {
  const CDaoRecordset* tools = SetWithRecord(table);
  return tools ? tools->GetBookmark() : Variant();
}

void SetToolBookmark(CToolTableInfo& table, const VARIANT& bookmark) {
  if (CDaoRecordset* tools = SetWithRecord(table)) tools->SetBookmark(bookmark);
}

bool RepositionToolCursor(CDaoRecordset& tools, const VARIANT* bookmark) {
  if (!HasCurrentRecord(tools)) return true;
  if (bookmark->vt != VT_EMPTY) {
    try {
      tools.SetBookmark(*bookmark);
      return true;
    } catch (...) {
      // The record is gone, or the bookmark never was this table's: the last record serves.
    }
  }
  tools.MoveLast();
  return true;
}

Variant ToolPosition(const CDaoRecordset& tools) {
  if (!HasCurrentRecord(tools)) return {};
  try {
    return tools.GetBookmark();
  } catch (const CDaoException& exception) {
    // A deletion that failed half-way has left the cursor on the record that it deleted.
    if (exception.Error() != DaoError::RecordDeleted) throw;
    return {};
  }
}

std::string ToolCriteria(const std::string& table, LONG id) {
  return table + ".ID = " + std::to_string(id);
}

}  // namespace orxdb
