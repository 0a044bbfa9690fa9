#include "database/CatalogueRow.h"

#include "platform/automation/Variant.h"

namespace orxdb {

std::string TextField(const CDaoRecordset& records, const std::string& column) {
  const Variant value = records.GetFieldValue(column);
  return value.type() == VT_BSTR ? std::string(Bytes(value.get().bstrVal)) : std::string();
}

CatalogueRow CatalogueRow::Read(const CDaoRecordset& records) {
  CatalogueRow row;
  row.tableName = TextField(records, "TOOLTABLE_NAME").erase(0, 2);
  row.type = TextField(records, "TOOL_TYPE");
  row.subtype = TextField(records, "TOOL_SUBTYPE");
  return row;
}

}  // namespace orxdb
