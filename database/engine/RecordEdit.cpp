#include "database/engine/RecordEdit.h"

#include <algorithm>
#include <array>

#include "database/dialect/Lexer.h"

namespace orxdb {
namespace {

/// Words that are values as they stand in a column's default.
constexpr std::array kDefaultKeywords = {"NULL",         "TRUE",         "FALSE",
                                         "CURRENT_DATE", "CURRENT_TIME", "CURRENT_TIMESTAMP"};

bool IsUpdatable(const Field& field) {
  return (field.info.m_lAttributes & dbUpdatableField) != 0;
}

std::string KeyColumn(const QuerySource& source) {
  return Quoted(source.fields[static_cast<std::size_t>(source.keyField)].info.m_strSourceField);
}

SqlValue Owned(const CellView& cell) {
  switch (cell.kind) {
    case CellView::Kind::Integer:
      return cell.integer;
    case CellView::Kind::Real:
      return cell.real;
    case CellView::Kind::Text:
      return std::string(cell.text);
    case CellView::Kind::Bytes:
      return Blob(cell.text.begin(), cell.text.end());
    default:
      return std::monostate();
  }
}

/// A column's default as an expression; a lone name in it stands for its own text.
SqlText DefaultExpression(const std::string& text) {
  const std::vector<Token> tokens = Tokenize(text, LexicalRules::Sqlite);
  const Token& first = tokens.front();
  const bool keyword = std::any_of(kDefaultKeywords.begin(), kDefaultKeywords.end(),
                                   [&](const char* each) { return first.IsWord(each); });
  if (tokens.size() == 2 && first.IsName() && !keyword) return {"?", {first.text}};
  return {"(" + text + "\n)", {}};  // the text may end in a comment
}

[[noreturn]] void RaiseDeleted() {
  throw CDaoException(DaoError::RecordDeleted, "The record has been deleted");
}

/// While it lives, commits to a write-ahead log do not wait for the disk. A reserved key may be
/// forgotten by a power failure: nothing durable can hold it by then.
class RelaxedCommit {
 public:
  explicit RelaxedCommit(Connection& connection)
      : m_connection(connection), m_relaxed(!connection.GetTransactions().InTransaction()) {
    if (m_relaxed) m_connection.RelaxCommits();
  }
  ~RelaxedCommit() {
    if (m_relaxed) m_connection.RestoreCommits();
  }
  RelaxedCommit(const RelaxedCommit&) = delete;
  RelaxedCommit& operator=(const RelaxedCommit&) = delete;

 private:
  Connection& m_connection;
  bool m_relaxed;  ///< not within a transaction, which is stored at its end
};

/// A key that no record has or had: counted on in the database, so that no other process gets it,
/// whether or not the record is ever stored.
std::int64_t ReserveKey(Connection& connection, const QuerySource& source) {
  const TableInfo& table = connection.GetSchema().Table(source.table);
  const std::string highest =
      "(SELECT ifnull(max(" + Quoted(table.key) + "), 0) FROM " + Quoted(table.name) + ")";
  if (!table.autoIncrement) {
    const StatementUse next = connection.Use("SELECT " + highest + " + 1");
    next->Step();
    return next->Integer(0);
  }
  const RelaxedCommit relaxed(connection);
  Transaction transaction(connection);
  const std::string counted = "UPDATE sqlite_sequence SET seq = max(seq, ?1, " + highest +
                              ") + 1 WHERE name = ?2 RETURNING seq";
  const std::string begun = "INSERT INTO sqlite_sequence (seq, name) VALUES (max(?1, " + highest +
                            ") + 1, ?2)"
                            " RETURNING seq";
  // The first record of a table begins the count.
  for (const std::string& sql : {counted, begun}) {
    const StatementUse reserved = connection.Use(sql);
    reserved->Bind(connection.GetTransactions().LastReserved(table.name))
        .Bind(std::string_view(table.name));
    if (!reserved->Step()) continue;
    const std::int64_t key = reserved->Integer(0);
    reserved->Run();
    reserved->Reset();
    transaction.Commit();
    connection.GetTransactions().Reserved(table.name, key);
    return key;
  }
  throw CDaoException(DaoError::Engine, "No key could be reserved");
}

}  // namespace

RecordEdit::RecordEdit(const QuerySource& source, bool adding, std::int64_t key)
    : m_source(&source), m_adding(adding), m_key(key), m_values(source.fields.size()) {}

RecordEdit RecordEdit::Adding(Connection& connection, const QuerySource& source) {
  RecordEdit edit(source, true, ReserveKey(connection, source));
  edit.ReadDefaults(connection);
  return edit;
}

RecordEdit RecordEdit::Editing(const QuerySource& source, std::int64_t key) {
  return {source, false, key};
}

void RecordEdit::ReadDefaults(Connection& connection) {
  SqlText defaults;
  for (std::size_t i = 0; i < m_values.size(); ++i) {
    const Field& field = m_source->fields[i];
    if (static_cast<int>(i) == m_source->keyField) {
      m_values[i] = m_key;
      continue;
    }
    m_values[i] = std::monostate();
    if (IsUpdatable(field) && !field.info.m_strDefaultValue.empty()) {
      defaults.Append(defaults.text.empty() ? "SELECT " : ", ");
      defaults.Append(DefaultExpression(field.info.m_strDefaultValue));
    }
  }
  if (defaults.text.empty()) return;
  const StatementUse row = connection.Use(defaults.text, Origin::Host);
  row->Bind(defaults.values);
  row->Step();
  int column = 0;
  for (std::size_t i = 0; i < m_values.size(); ++i) {
    const Field& field = m_source->fields[i];
    if (IsUpdatable(field) && !field.info.m_strDefaultValue.empty()) {
      m_values[i] = Owned(row->Cell(column++));
    }
  }
}

const SqlValue* RecordEdit::Value(std::size_t field) const noexcept {
  return m_values[field] ? &*m_values[field] : nullptr;
}

void RecordEdit::Set(std::size_t field, const VARIANT& value) {
  const Field& target = m_source->fields[field];
  if (!IsUpdatable(target)) {
    throw CDaoException(DaoError::ReadOnly,
                        "Field " + target.info.m_strName + " cannot be changed");
  }
  m_values[field] = StoreValue(target, value);
}

void RecordEdit::Store(Connection& connection) const {
  connection.Listeners().Tell({connection.GetSchema().Table(m_source->table), m_adding});
  std::string columns;
  std::string marks;
  std::vector<CellView> values;
  for (std::size_t i = 0; i < m_values.size(); ++i) {
    const Field& field = m_source->fields[i];
    if (!m_values[i] || !IsUpdatable(field)) continue;
    columns += (columns.empty() ? "" : ", ") + Quoted(field.info.m_strSourceField) +
               (m_adding ? "" : " = ?");
    marks += ", ?";
    values.push_back(CellOf(*m_values[i]));
  }
  const std::string table = Quoted(m_source->table);
  const std::string key = KeyColumn(*m_source);
  if (!m_adding && columns.empty()) return;
  Transaction transaction(connection);
  if (m_adding) {
    const std::string separator = columns.empty() ? "" : ", ";
    const StatementUse insert = connection.Use("INSERT INTO " + table + " (" + key + separator +
                                               columns + ") VALUES (?" + marks + ")");
    insert->Bind(m_key).Bind(values).Run();
  } else {
    const StatementUse update =
        connection.Use("UPDATE " + table + " SET " + columns + " WHERE " + key + " = ?");
    if (update->Bind(values).Bind(m_key).Run() == 0) RaiseDeleted();
  }
  transaction.Commit();
}

void RecordEdit::Remove(Connection& connection, const QuerySource& source, std::int64_t key) {
  connection.Listeners().Tell({connection.GetSchema().Table(source.table), false});
  Transaction transaction(connection);
  {
    const StatementUse remove = connection.Use("DELETE FROM " + Quoted(source.table) + " WHERE " +
                                               KeyColumn(source) + " = ?");
    if (remove->Bind(key).Run() == 0) RaiseDeleted();
  }
  transaction.Commit();
}

}  // namespace orxdb
