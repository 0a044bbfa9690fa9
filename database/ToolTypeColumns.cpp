#include "database/ToolTypeColumns.h"

#include "platform/automation/Variant.h"

namespace orxdb {

std::string TextField(const CDaoRecordset& records, const std::string& column) {
  const Variant value = records.GetFieldValue(column);
  return value.type() == VT_BSTR ? std::string(Bytes(value.get().bstrVal)) : std::string();
}

CToolType ReadToolType(const CDaoRecordset& records) {
  CToolType type;
  type.tableName = TextField(records, "TOOLTABLE_NAME").erase(0, 2);
  type.type = TextField(records, "TOOL_TYPE");
  type.subtype = TextField(records, "TOOL_SUBTYPE");
  return type;
}

}  // namespace orxdb
