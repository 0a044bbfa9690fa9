#include "database/engine/RowCopy.h"

#include <utility>

namespace orxdb {

RowCopy::RowCopy(std::shared_ptr<Connection> connection, const SelectText& select,
                 const QuerySource& source)
    : m_connection(std::move(connection)),
      m_source(source),
      m_rows(static_cast<int>(source.fields.size())) {
  const SqlText sql = select.Ordered();
  const StatementUse rows = m_connection->Use(sql.text, Origin::Host);
  rows->Bind(sql.values);
  while (rows->Step()) {
    m_rows.Append(*rows, source.keyField >= 0 ? rows->Integer(source.keyField)
                                              : static_cast<std::int64_t>(m_rows.Size()));
    TextGuard::RequireRoom(m_rows.Bytes());
  }
}

RowCopy::~RowCopy() {
  if (!m_table.empty() && m_connection->IsOpen()) Drop(m_table);
}

void RowCopy::Drop(const std::string& table) noexcept {
  try {
    m_connection->Execute("DROP TABLE temp." + table);
  } catch (...) {
    // The table goes with the connection.
  }
}

void RowCopy::FillTable() {
  const std::string table = m_connection->TemporaryName();
  std::string columns;
  std::string marks;
  for (const Field& field : m_source.fields) {
    const ValueKind kind = field.Type().kind;
    columns += ", " + Quoted(field.info.m_strName);
    if (kind != ValueKind::Unknown) columns += kind == ValueKind::Text ? " TEXT" : " NUMERIC";
    marks += ", ?";
  }
  m_connection->Execute("CREATE TEMP TABLE " + table + " (orx_row INTEGER PRIMARY KEY" + columns +
                        ")");
  try {
    Statement insert =
        m_connection->Prepare("INSERT INTO temp." + table + " VALUES (?" + marks + ")");
    for (std::size_t row = 0; row < m_rows.Size(); ++row) {
      insert.Bind(static_cast<std::int64_t>(row));
      for (std::size_t i = 0; i < m_source.fields.size(); ++i) insert.Bind(m_rows.Cell(row, i));
      insert.Run();
      insert.Reset();
    }
  } catch (...) {
    Drop(table);  // half of it would answer "not found"
    throw;
  }
  m_table = table;
  m_rollbacks = m_connection->GetTransactions().Rollbacks();
}

std::optional<std::size_t> RowCopy::Find(const Criteria& criteria, Which which, std::size_t from) {
  if (!m_table.empty() && m_rollbacks != m_connection->GetTransactions().Rollbacks()) {
    Drop(std::exchange(m_table, {}));
  }
  if (m_table.empty()) FillTable();
  const StatementUse found =
      m_connection->Use("SELECT q.orx_row FROM temp." + m_table + " AS q WHERE (" + criteria.text +
                            ") AND q.orx_row >= ? ORDER BY q.orx_row" +
                            (which == Which::Last ? " DESC" : "") + " LIMIT 1",
                        Origin::Host);
  found->Bind(criteria.values).Bind(static_cast<std::int64_t>(which == Which::Next ? from : 0));
  if (!found->Step()) return std::nullopt;
  return static_cast<std::size_t>(found->Integer(0));
}

}  // namespace orxdb
