#include "browse/ToolProperties.h"

#include <memory>

#include "browse/ToolCursor.h"
#include "interface/KnownNames.h"
#include "platform/framework/Text.h"

namespace orxdb {
namespace {

Variant OneString(const OLECHAR* text) {
  return MakeVector(VT_BSTR, 1, [&](std::size_t) { return Bstr(text).detach(); });
}

Variant OneValue(std::u16string_view text) {
  return MakeVector(VT_VARIANT, 1, [&](std::size_t) { return Variant::FromText(text).detach(); });
}

/// Adds the temporary tool; -1 when it got no identifier.
LONG AddTemporaryTool(BSTR table, IOrxDbObj& own) {
  Variant names = OneString(OLESTR("Name"));
  Variant values = OneValue(kTemporaryToolName);
  LONG id = -1;
  own.AddNewRecord(table, names.ptr(), values.ptr(), &id);
  return id;
}

/// Whether the table still has that cursor. The message that AddNewRecord may show lets the host
/// run, which can end the data object or put another in its place.
bool IsCursorOf(std::string_view table, const std::shared_ptr<CDaoRecordset>& tools) {
  const CToolTableInfo* entry = g_pToolDbData ? g_pToolDbData->FindToolTable(table) : nullptr;
  return entry && entry->m_pToolSet == tools;
}

}  // namespace

PropertyArrays FindToolProperties(const CToolTableInfo& table, LONG id) {
  PropertyArrays properties;
  CDaoRecordset& tools = table.ToolSet();
  UseFoundTool(tools, ToolCriteria(table.m_strTableName, id), [&](bool found) {
    if (found) properties = ReadRecord(tools);
  });
  return properties;
}

Variant SearchParamNames(const CToolTableInfo& table) {
  const std::size_t count = table.m_searchParamNames.size();
  if (count == 0) return {};
  CDaoFieldInfo unused;
  return MakeVector(VT_BSTR, count, [&](std::size_t i) {
    // Hosts count on a failure when the table cannot be read.
    table.ToolSet().GetFieldInfo(static_cast<int>(i), unused);
    return WidenToBstr(table.m_searchParamNames[i]).detach();
  });
}

void ReadDefaultProperties(const CToolTableInfo& entry, BSTR table, VARIANT* names, VARIANT* values,
                           IOrxDbObj& own) {
  const std::shared_ptr<CDaoRecordset> tools = entry.m_pToolSet;  // the entry may not outlive this
  const Variant position = ToolPosition(*tools);
  const LONG id = AddTemporaryTool(table, own);
  if (!IsCursorOf(NarrowBstr(table), tools)) return;
  if (id != -1) {
    own.GetToolProps(table, id, names, values);
    // A tool that got an identifier but was not stored is not found. The record at the cursor is
    // then deleted all the same: hosts have always met it so.
    tools->FindFirst(NarrowBstr(table) + ".ID=" + std::to_string(id));
    tools->Delete();
    tools->Requery();
  }
  RepositionToolCursor(*tools, &position.get());
}

}  // namespace orxdb
