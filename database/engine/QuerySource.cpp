#include "database/engine/QuerySource.h"

namespace orxdb {
namespace {

/// FNV-1a: only tells queries apart, so that a bookmark of another one is refused.
std::uint64_t HashOf(std::string_view text) noexcept {
  std::uint64_t hash = 0xcbf29ce484222325U;
  for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3U;
  return hash;
}

Field FieldOf(Schema& schema, const ColumnOrigin& origin, std::size_t index) {
  Field field;
  CDaoFieldInfo& info = field.info;
  info.m_strName = origin.name;
  info.m_nOrdinalPosition = static_cast<short>(index);
  info.m_strSourceTable = origin.table;
  info.m_strSourceField = origin.field;
  const DeclaredType type = ParseDeclaredType(origin.declaredType);
  info.m_nType = type.type;
  info.m_lSize = type.size;
  info.m_lAttributes = field.Type().size == 0 ? dbVariableField : dbFixedField;
  info.m_bAllowZeroLength = field.Type().kind == ValueKind::Text;
  if (!info.m_strSourceTable.empty()) {
    const TableColumn* column = schema.Table(info.m_strSourceTable).Find(info.m_strSourceField);
    if (column != nullptr) {
      info.m_bRequired = column->required && !column->generated;
      info.m_strDefaultValue = column->defaultText;
    }
  }
  return field;
}

/// Whether the rows may be records of one table at all, the stored queries beneath included.
bool RowsAreRecords(Schema& schema, const SelectText& select, const TextUses& uses,
                    bool& selective) {
  selective = select.selective;
  if (select.distinctRows || uses.overRows) return false;
  for (const std::string& view : uses.views) {
    const StoredText* text = schema.Definition(view);
    if (text == nullptr) continue;
    const SelectText& inner = text->parts;
    if (inner.distinctRows) return false;
    selective = selective || inner.selective || !inner.order.empty();
  }
  return true;
}

void ChooseTable(Schema& schema, QuerySource& source, std::string_view name) {
  if (name.size() > 2 && SameName(name.substr(0, 2), "Q_")) name.remove_prefix(2);
  for (std::size_t i = 0; i < source.fields.size(); ++i) {
    const CDaoFieldInfo& info = source.fields[i].info;
    if (info.m_strSourceTable.empty()) continue;
    const TableInfo& table = schema.Table(info.m_strSourceTable);
    if (table.key.empty() || !SameName(table.key, info.m_strSourceField)) continue;
    const bool named = SameName(table.name, name);
    if (source.keyField >= 0 && !named) continue;
    source.keyField = static_cast<int>(i);
    source.table = table.name;
    if (named) return;
  }
}

}  // namespace

std::shared_ptr<const QuerySource> QuerySource::Of(Connection& connection, const SelectText& select,
                                                   const std::string& name) {
  const std::string key = name + '\n' + select.Ordered().text;
  Schema& schema = connection.GetSchema();
  if (auto known = schema.Description(key)) return known;

  auto source = std::make_shared<QuerySource>();
  bool selective = false;
  bool records = false;
  {
    const HostText rows = connection.PrepareText("SELECT * FROM (" + select.Ordered().text + ")");
    source->tables = rows.uses.tables;
    records = RowsAreRecords(schema, select, rows.uses, selective);
    for (const ColumnOrigin& origin : rows.statement.Columns()) {
      source->fields.push_back(FieldOf(schema, origin, source->fields.size()));
    }
  }
  const std::string& named = name.empty() ? select.source : name;
  if (records) ChooseTable(schema, *source, named);
  source->inKeyOrder = source->keyField >= 0 && !selective && select.order.empty();
  source->identity = HashOf(key);
  source->scope = {named, "q", {}};
  for (std::size_t i = 0; i < source->fields.size(); ++i) {
    CDaoFieldInfo& info = source->fields[i].info;
    source->scope.columns.push_back(
        {info.m_strName, KindOf(info.m_nType), info.m_strSourceTable, info.m_strSourceField});
    if (static_cast<int>(i) == source->keyField) {
      info.m_lAttributes |= dbAutoIncrField;
    } else if (!source->table.empty() && info.m_strSourceTable == source->table) {
      const TableColumn* column = schema.Table(source->table).Find(info.m_strSourceField);
      if (column != nullptr && !column->generated) info.m_lAttributes |= dbUpdatableField;
    }
  }
  schema.Keep(key, source);
  return source;
}

int QuerySource::Find(std::string_view fieldName) const noexcept {
  for (std::size_t i = 0; i < fields.size(); ++i) {
    if (SameName(fields[i].info.m_strName, fieldName)) return static_cast<int>(i);
  }
  return -1;
}

SelectText SelectOfStoredQuery(Connection& connection, const std::string& name) {
  const StoredText* text = connection.GetSchema().Definition(name);
  if (text == nullptr) throw CDaoException(DaoError::NotFound, "There is no stored query " + name);
  SelectText select;
  if (text->namesColumns) {  // they count, not those of the SELECT
    select.source = name;
  } else {
    select = text->parts;
  }
  // The stored text is only needed where it has an ordering, to put the key behind it.
  if (select.order.empty()) {
    select.body.text = "SELECT * FROM " + Quoted(name);
    select.limit.clear();
  }
  return select;
}

SelectText SelectOfText(Connection& connection, const std::string& sql) {
  ConnectionColumns columns(connection);
  SelectText select = TranslateSelect(sql, columns);
  if (select.wholeSource && select.order.empty() &&
      connection.GetSchema().Definition(select.source) != nullptr) {
    std::string source = std::move(select.source);
    select = SelectOfStoredQuery(connection, source);
    select.source = std::move(source);
  }
  return select;
}

std::vector<ScopeColumn> ConnectionColumns::ColumnsOf(const std::string& source) {
  if (!m_connection.GetSchema().HasSource(source)) {
    throw CDaoException(DaoError::NotFound, "There is no table or stored query " + source);
  }
  SelectText all;
  all.body.text = "SELECT * FROM " + Quoted(source);
  all.source = source;
  return QuerySource::Of(m_connection, all, source)->scope.columns;
}

}  // namespace orxdb
