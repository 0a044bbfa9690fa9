#include "browse/FieldLimits.h"

namespace orxdb {
namespace {

/// A bound in the type of the field.
Variant Bound(const FieldType& type, double number) {
  Variant bound;
  const Variant exact = Variant::FromR8(number);
  if (FAILED(VariantChangeType(bound.ptr(), &exact.get(), 0, type.variantType))) bound.clear();
  return bound;
}

/// Whether the tool table's own column, which holds the key of a looked-up record, must have one.
bool IsColumnRequired(CDaoDatabase& database, const std::string& table, const std::string& name) {
  CDaoRecordset records(&database);
  records.Open(dbOpenSnapshot, "SELECT * FROM " + table + " WHERE False");
  CDaoFieldInfo column;
  for (int i = 0; i < records.GetFieldCount(); ++i) {
    if (records.GetFieldName(i) == name) records.GetFieldInfo(i, column);
  }
  return column.m_bRequired;
}

}  // namespace

FieldLimits LimitsOfField(CDaoDatabase& database, const CToolTableInfo& table,
                          const std::string& name) {
  CDaoFieldInfo field;
  table.ToolSet().GetFieldInfo(name, field, AFX_DAO_SECONDARY_INFO);
  const FieldType& type = FieldTypeOf(field.m_nType);
  FieldLimits limits;
  limits.required = table.IsLookupField(field)
                        ? IsColumnRequired(database, table.m_strTableName, name)
                        : field.m_bRequired;
  if (type.kind == ValueKind::Text) limits.longest = static_cast<LONG>(field.m_lSize);
  if (type.range) {
    limits.lowest = Bound(type, type.range->lowest);
    limits.highest = Bound(type, type.range->highest);
  }
  return limits;
}

}  // namespace orxdb
