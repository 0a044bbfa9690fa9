#include "lookups/PermissibleValues.h"

#include <vector>

#include "database/ToolRules.h"
#include "database/engine/Connection.h"
#include "platform/framework/Text.h"
#include "values/StringVariants.h"
#include "values/ValueText.h"

namespace orxdb {
namespace {

Variant ToArray(std::vector<Variant> values) {
  return MakeVector(VT_VARIANT, values.size(), [&](std::size_t i) { return values[i].detach(); });
}

Variant WideFieldValue(const CDaoRecordset& records, const std::string& field) {
  Variant value = records.GetFieldValue(field);
  WidenStringVariant(value.ptr());
  return value;
}

/// The text of a value as the automation runtime converts it; empty for what has none.
std::u16string Text(const Variant& value) {
  Variant text;
  VariantChangeType(text.ptr(), &value.get(), 0, VT_BSTR);
  return std::u16string(text.type() == VT_BSTR ? View(text.get().bstrVal) : u"");
}

bool HasList(const CToolTableInfo& table, const std::string& property, const CDaoFieldInfo& field) {
  return table.IsLookupField(field) && !IsTapOperationField(property);
}

/// A text as criteria have it.
std::string QuotedText(const std::string& text) {
  std::string quoted = "'";
  for (const char c : text) quoted.append(c == '\'' ? 2 : 1, c);
  return quoted + "'";
}

}  // namespace

void AddPermissibleValue(CDaoDatabase& database, const CToolTableInfo& table,
                         const std::string& property, const std::string& text) {
  CDaoFieldInfo field;
  table.ToolSet().GetFieldInfo(property, field, AFX_DAO_SECONDARY_INFO);
  if (!HasList(table, property, field)) {
    throw CDaoException(DaoError::BadField, "Field " + property + " has no list");
  }
  if (text.find_first_not_of(" \t\r\n") == std::string::npos) {
    throw CDaoException(DaoError::BadValue, "Field " + property + ": the new value is blank");
  }
  const Variant value = Variant::FromBstr(Bstr::FromBytes(text));
  Transaction transaction(*database.GetConnection());
  CDaoRecordset list(&database);
  list.Open(AFX_DAO_USE_DEFAULT_TYPE, "SELECT * FROM " + field.m_strSourceTable);
  if (list.FindFirst("[" + field.m_strSourceField + "] = " + QuotedText(text))) return;
  list.AddNew();
  list.SetFieldValue(field.m_strSourceField, value.get());
  list.Update();
  transaction.Commit();
}

Variant PermissibleValues(CDaoDatabase& database, const CToolTableInfo& table,
                          const std::string& property, double tapDiameter) {
  CDaoFieldInfo field;
  table.ToolSet().GetFieldInfo(property, field, AFX_DAO_SECONDARY_INFO);
  const std::string& source = field.m_strSourceTable;
  const std::string column = "[" + field.m_strSourceField + "]";
  if (!HasList(table, property, field)) return {};
  const bool headsOfTap =
      tapDiameter > 0 && property == "TappingHead" && IsTapTable(table.m_strTableName);
  std::string sql = "SELECT " + column + " FROM ";
  if (headsOfTap) {
    sql += StoredQueryOf(source) + " WHERE " + HeadsTaking(DoubleToString(tapDiameter, 6));
  } else {
    sql += source;
  }
  CDaoRecordset rows(&database);
  rows.Open(AFX_DAO_USE_DEFAULT_TYPE, sql + " ORDER BY " + column);
  std::vector<Variant> values;
  for (; HasCurrentRecord(rows); rows.MoveNext()) {
    values.push_back(WideFieldValue(rows, field.m_strSourceField));
  }
  if (values.empty()) return {};
  if (headsOfTap) values.push_back(Variant::Null());
  return ToArray(std::move(values));
}

ShownValues StandardDiameters(CDaoDatabase& database, const std::string& table,
                              const std::string& property) {
  if (property != "Diameter" || !HasStandardDiameters(table)) return {};
  CDaoRecordset rows(&database);
  rows.Open(AFX_DAO_USE_DEFAULT_TYPE,
            "SELECT [METRIC], [IMP_DECIM], [LET_NUM_FRACT] FROM T_FEM_TEMPL "
            "WHERE CCNO IS NOT NULL OR CCYES IS NOT NULL ORDER BY IMP_DECIM");
  std::vector<Variant> values;
  std::vector<Variant> texts;
  std::u16string shown;  // goes on from row to row
  for (; HasCurrentRecord(rows); rows.MoveNext()) {
    Variant decimal = WideFieldValue(rows, "IMP_DECIM");
    if (!decimal.isNull()) shown = Text(decimal);
    const std::u16string fraction = Text(WideFieldValue(rows, "LET_NUM_FRACT"));
    if (!fraction.empty()) shown += u'(' + fraction + u')';
    values.push_back(std::move(decimal));
    texts.push_back(Variant::FromText(shown));
  }
  if (values.empty()) return {};
  return {.values = ToArray(std::move(values)), .texts = ToArray(std::move(texts))};
}

}  // namespace orxdb
