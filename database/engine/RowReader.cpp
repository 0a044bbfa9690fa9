#include "database/engine/RowReader.h"

#include <sqlite3.h>

namespace orxdb {
namespace {

const Field& KeyField(const QuerySource& source) {
  return source.fields[static_cast<std::size_t>(source.keyField)];
}

}  // namespace

RowReader::RowReader(Connection& connection, const SelectText& select, const QuerySource& source)
    : m_connection(connection),
      m_select(select),
      m_source(source),
      m_key("q." + Quoted(KeyField(source).info.m_strName)) {
  const std::string byKey = "SELECT * FROM (" + select.body.text + ") AS q WHERE " + m_key + " IN ";
  m_oneRow = byKey + "(?)";
  m_someRows = byKey + "(?";
  for (std::size_t i = 1; i < kBlockRows; ++i) m_someRows += ",?";
  m_someRows += ")";
}

void RowReader::Restart() {
  const std::string column = Quoted(KeyField(m_source).info.m_strSourceField);
  const std::string table = Quoted(m_source.table);
  // Asked for in one, they would cost a scan.
  const StatementUse ends = m_connection.Use("SELECT (SELECT min(" + column + ") FROM " + table +
                                             "), (SELECT max(" + column + ") FROM " + table + ")");
  ends->Step();
  const bool empty = ends->IsNull(0);
  m_first = empty ? std::numeric_limits<std::int64_t>::max() : ends->Integer(0);
  m_last = empty ? std::numeric_limits<std::int64_t>::min() : ends->Integer(1);
}

SqlText RowReader::Select(const std::string& columns, const SqlText& rows,
                          const Criteria& criteria) const {
  SqlText sql{"SELECT " + columns + " FROM (", {}};
  sql.Append(rows);
  sql.Append(") AS q WHERE ");
  if (!criteria.text.empty()) {
    sql.Append(SqlText{"(" + criteria.text + ") AND ", criteria.values});
  }
  sql.Append(SqlText{m_key + " <= ?", {m_last}});
  return sql;
}

bool RowReader::ReadInKeyOrder(const Criteria& criteria, Which which, std::int64_t after,
                               std::size_t most, RowBlock& rows) const {
  rows.Clear();
  SqlText sql = Select("*", m_select.body, criteria);
  if (which == Which::Next) sql.Append(SqlText{" AND " + m_key + " > ?", {after}});
  sql.Append(" ORDER BY " + m_key + (which == Which::Last ? " DESC" : ""));
  sql.Append(SqlText{" LIMIT ?", {static_cast<std::int64_t>(most)}});
  const StatementUse found = m_connection.Use(sql.text, Origin::Host);
  found->Bind(sql.values);
  std::int64_t previous = after;
  while (found->Step()) {
    const std::int64_t key = found->Integer(m_source.keyField);
    // Without this a walk over a damaged file could run in a circle.
    if (which == Which::Next && (key < previous || (rows.Size() == 0 && key == after))) {
      throw CDaoException(DaoError::Engine, "The file is damaged: its records are out of order");
    }
    previous = key;
    // A join that meets more than one row shows its record once.
    if (rows.Size() == 0 || rows.Key(rows.Size() - 1) != key) rows.Append(*found, key);
    if (rows.Bytes() > kBlockBytes) break;
  }
  return sqlite3_stmt_status(found->Handle(), SQLITE_STMTSTATUS_SORT, 1) > 0;
}

std::vector<std::int64_t> RowReader::ReadKeys(const SqlText& sql) const {
  const StatementUse found = m_connection.Use(sql.text, Origin::Host);
  found->Bind(sql.values);
  std::vector<std::int64_t> keys;
  while (found->Step()) {
    keys.push_back(found->Integer(0));
    TextGuard::RequireRoom(keys.size() * KeyList::kBytesPerKey);
  }
  keys.shrink_to_fit();
  return keys;
}

/// The query in the same order, but by the engine's own rule where that gives the same: an index
/// may have it, while texts with letters beyond A to Z must be sorted.
SelectText RowReader::WithOrderOfIndexes() const {
  SelectText select = m_select;
  for (OrderTerm& term : select.order) {
    if (!term.field.empty() && !HasAny({"orx_beyond(q." + Quoted(term.field) + ")", {}})) {
      term.expression = term.plain;
    }
  }
  return select;
}

std::vector<std::int64_t> RowReader::ReadKeys() const {
  return ReadKeys(Select(
      m_key, WithOrderOfIndexes().Ordered(false, std::to_string(m_source.keyField + 1)), {}));
}

std::vector<std::int64_t> RowReader::ReadKeys(const Criteria& criteria) const {
  return ReadKeys(Select(m_key, m_select.body, criteria));
}

void RowReader::ReadListed(std::span<const std::int64_t> keys, RowBlock& rows) const {
  rows.Clear();
  // Two statements only, for one record and for a full block; what is missing to a full block is
  // filled up with its first key.
  const StatementUse found =
      m_connection.Use(keys.size() == 1 ? m_oneRow : m_someRows, Origin::Host);
  found->Bind(m_select.body.values);
  for (const std::int64_t key : keys) found->Bind(key);
  for (std::size_t i = keys.size(); keys.size() > 1 && i < kBlockRows; ++i) found->Bind(keys[0]);
  while (found->Step()) rows.Append(*found, found->Integer(m_source.keyField));
  rows.Arrange(keys);
}

bool RowReader::HasAny(const Criteria& criteria) const {
  const SqlText sql = Select("1", m_select.body, criteria);
  const StatementUse found = m_connection.Use(sql.text + " LIMIT 1", Origin::Host);
  found->Bind(sql.values);
  return found->Step();
}

std::int64_t RowReader::Count(std::int64_t last) const {
  SqlText sql = Select("count(DISTINCT " + m_key + ")", m_select.body, {});
  sql.Append(SqlText{" AND " + m_key + " <= ?", {last}});
  const StatementUse found = m_connection.Use(sql.text, Origin::Host);
  found->Bind(sql.values);
  found->Step();
  return found->Integer(0);
}

RowBlock ReadFirstRow(Connection& connection, const SelectText& select, const QuerySource& source) {
  const SqlText sql = select.Ordered();
  const StatementUse first =
      connection.Use("SELECT * FROM (" + sql.text + ") LIMIT 1", Origin::Host);
  first->Bind(sql.values);
  RowBlock rows(static_cast<int>(source.fields.size()));
  if (first->Step()) rows.Append(*first, 0);
  return rows;
}

}  // namespace orxdb
