#include "database/operations/RowReader.h"

#include <algorithm>

namespace orxdb {
namespace {

/// A block ends early when its rows are long, pictures for instance.
constexpr std::size_t kBlockBytes = 1 << 20;

}  // namespace

void RowReader::Restart() {
  const StatementUse highest = m_connection.Use(
      "SELECT max(" +
      Quoted(m_source.fields[static_cast<std::size_t>(m_source.keyField)].info.m_strSourceField) +
      ") FROM " + Quoted(m_source.table));
  highest->Step();
  m_limit = highest->IsNull(0) ? std::numeric_limits<std::int64_t>::min() : highest->Integer(0);
  m_admitted.clear();
}

bool RowReader::Admits(std::int64_t key) const noexcept {
  return key <= m_limit || std::find(m_admitted.begin(), m_admitted.end(), key) != m_admitted.end();
}

std::string RowReader::Key() const {
  return "q." + Quoted(m_source.fields[static_cast<std::size_t>(m_source.keyField)].info.m_strName);
}

SqlText RowReader::Membership() const {
  SqlText sql{Key() + " <= ?", {m_limit}};
  if (m_admitted.empty()) return sql;
  sql.text = "(" + sql.text + " OR " + Key() + " IN (";
  for (const std::int64_t key : m_admitted) sql.text += std::to_string(key) + ",";
  sql.text.back() = ')';
  sql.text += ")";
  return sql;
}

SqlText RowReader::Select(const std::string& columns, const SqlText& rows,
                          const Criteria& criteria) const {
  SqlText sql{"SELECT " + columns + " FROM (", {}};
  sql.Append(rows);
  sql.Append(") AS q WHERE ");
  if (!criteria.text.empty()) {
    sql.Append(SqlText{"(" + criteria.text + ") AND ", criteria.values});
  }
  sql.Append(Membership());
  return sql;
}

void RowReader::Append(RowBlock& rows, const Statement& row) const {
  rows.Append(row.Handle(), row.Integer(m_source.keyField));
}

bool RowReader::Read(const Criteria& criteria, Which which, std::int64_t after, std::size_t most,
                     RowBlock& rows) const {
  rows.Clear();
  const bool last = which == Which::Last;
  SqlText sql = m_source.inKeyOrder ? Select("*", m_select.body, criteria)
                                    : Select("*", m_select.Ordered(last, KeyPosition()), criteria);
  if (m_source.inKeyOrder) {
    if (which == Which::Next) sql.Append(SqlText{" AND " + Key() + " > ?", {after}});
    sql.Append(" ORDER BY " + Key() + (last ? " DESC" : ""));
  }
  sql.Append(SqlText{" LIMIT ?", {static_cast<std::int64_t>(most)}});
  const StatementUse found = m_connection.Use(sql.text, Origin::Host);
  found->Bind(sql.values);
  std::int64_t previous = after;
  while (found->Step()) {
    const std::int64_t key = found->Integer(m_source.keyField);
    // Without this a walk over a damaged file could run in a circle.
    if (m_source.inKeyOrder && which == Which::Next &&
        (key < previous || (rows.Size() == 0 && key == after))) {
      throw CDaoException(DaoError::Engine, "The file is damaged: its records are out of order");
    }
    previous = key;
    // A join that meets more than one row shows its record once.
    if (rows.Size() == 0 || rows.Key(rows.Size() - 1) != key) Append(rows, *found);
    if (rows.Bytes() > kBlockBytes) break;
  }
  return sqlite3_stmt_status(found->Handle(), SQLITE_STMTSTATUS_SORT, 1) > 0;
}

void RowReader::ReadKeys(const Criteria& criteria, KeyList& keys) const {
  keys.Clear();
  const SqlText sql = Select(Key(), m_select.Ordered(false, KeyPosition()), criteria);
  const StatementUse found = m_connection.Use(sql.text, Origin::Host);
  found->Bind(sql.values);
  while (found->Step()) keys.Add(found->Integer(0));
  keys.DropRepeats();
}

void RowReader::ReadListed(const KeyList& keys, std::size_t first, std::size_t most,
                           RowBlock& rows) const {
  rows.Clear();
  const std::size_t count = std::min({most, kBlockRows, keys.Size() - first});
  // Two statements only, for one record and for a full block; what is missing to a full block is
  // filled up with its first key.
  const std::size_t marks = count == 1 ? 1 : kBlockRows;
  std::string text = "SELECT * FROM (" + m_select.body.text + ") AS q WHERE " + Key() + " IN (?";
  for (std::size_t i = 1; i < marks; ++i) text += ",?";
  text += ")";
  const StatementUse found = m_connection.Use(text, Origin::Host);
  found->Bind(m_select.body.values);
  for (std::size_t i = 0; i < marks; ++i) found->Bind(keys[first + (i < count ? i : 0)]);
  RowBlock byKey(static_cast<int>(m_source.fields.size()));
  while (found->Step()) Append(byKey, *found);
  for (std::size_t i = first; i < first + count; ++i) {
    const std::size_t row = byKey.Find(keys[i]);
    if (row < byKey.Size()) rows.AppendFrom(byKey, row);
  }
}

void RowReader::ReadRecord(std::int64_t key, RowBlock& rows) const {
  KeyList keys;
  keys.Add(key);
  ReadListed(keys, 0, 1, rows);
}

bool RowReader::HasAny() const {
  const SqlText sql = Select("1", m_select.body, {});
  const StatementUse found = m_connection.Use(sql.text + " LIMIT 1", Origin::Host);
  found->Bind(sql.values);
  return found->Step();
}

std::int64_t RowReader::Count(std::int64_t last) const {
  SqlText sql = Select("count(DISTINCT " + Key() + ")", m_select.body, {});
  sql.Append(SqlText{" AND " + Key() + " <= ?", {last}});
  const StatementUse found = m_connection.Use(sql.text, Origin::Host);
  found->Bind(sql.values);
  found->Step();
  return found->Integer(0);
}

}  // namespace orxdb
