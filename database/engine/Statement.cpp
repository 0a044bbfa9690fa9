#include "database/engine/Statement.h"

#include <algorithm>
#include <sqlite3.h>

namespace orxdb {
namespace {

DaoError ErrorOf(int code) {
  switch (code & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return DaoError::Busy;
    case SQLITE_READONLY:
      return DaoError::ReadOnly;
    case SQLITE_CANTOPEN:
      return DaoError::NotFound;
    default:
      return DaoError::Engine;
  }
}

/// The names of columns that a message of the engine ends with, without their table's.
std::string ColumnsIn(std::string_view message) {
  std::string columns(message.substr(std::min(message.find(": ") + 2, message.size())));
  for (std::size_t at = 0; at < columns.size();) {
    columns.erase(at, columns.find('.', at) + 1 - at);
    const std::size_t next = columns.find(", ", at);
    at = next == std::string::npos ? columns.size() : next + 2;
  }
  return columns;
}

std::string TextOrEmpty(const char* text) {
  return text == nullptr ? "" : text;
}

}  // namespace

Statement::Statement(sqlite3* database, TextGuard& guard, const std::string& sql, Origin origin,
                     TextUses* uses)
    : m_guard(guard), m_origin(origin) {
  const TextGuard::Turn turn(guard, origin, uses);
  guard.Start();
  const char* tail = nullptr;
  if (sqlite3_prepare_v3(database, sql.data(), static_cast<int>(sql.size()),
                         SQLITE_PREPARE_PERSISTENT | SQLITE_PREPARE_NO_VTAB, &m_handle,
                         &tail) != SQLITE_OK) {
    RaiseError(database);
  }
  if (m_handle == nullptr || tail != sql.data() + sql.size()) {
    sqlite3_finalize(m_handle);
    throw CDaoException(DaoError::Syntax, "More or less than one statement");
  }
}

Statement::~Statement() {
  sqlite3_finalize(m_handle);
}

void Statement::Check(int code) const {
  if (code != SQLITE_OK) RaiseError(sqlite3_db_handle(m_handle));
}

Statement& Statement::Bind(std::int64_t value) {
  Check(sqlite3_bind_int64(m_handle, ++m_bound, value));
  return *this;
}

Statement& Statement::Bind(double value) {
  Check(sqlite3_bind_double(m_handle, ++m_bound, value));
  return *this;
}

Statement& Statement::Bind(std::string_view text) {
  Check(sqlite3_bind_text64(m_handle, ++m_bound, text.data() == nullptr ? "" : text.data(),
                            text.size(), SQLITE_TRANSIENT, SQLITE_UTF8));
  return *this;
}

Statement& Statement::Bind(const CellView& cell) {
  switch (cell.kind) {
    case CellView::Kind::Null:
      Check(sqlite3_bind_null(m_handle, ++m_bound));
      return *this;
    case CellView::Kind::Integer:
      return Bind(cell.integer);
    case CellView::Kind::Real:
      return Bind(cell.real);
    case CellView::Kind::Text:
      return Bind(cell.text);
    case CellView::Kind::Bytes:
      Check(sqlite3_bind_blob64(m_handle, ++m_bound, cell.text.empty() ? "" : cell.text.data(),
                                cell.text.size(), SQLITE_TRANSIENT));
  }
  return *this;
}

bool Statement::Step() {
  if (sqlite3_stmt_busy(m_handle) == 0) m_guard.Start();
  const TextGuard::Turn turn(m_guard, m_origin);
  const int code = sqlite3_step(m_handle);
  if (code == SQLITE_ROW) return true;
  if ((code & 0xff) == SQLITE_INTERRUPT) m_guard.RaiseStopped();
  if (code != SQLITE_DONE) RaiseError(sqlite3_db_handle(m_handle));
  return false;
}

std::int64_t Statement::Run() {
  while (Step()) {
  }
  return sqlite3_changes64(sqlite3_db_handle(m_handle));
}

void Statement::Reset() noexcept {
  sqlite3_reset(m_handle);
  m_bound = 0;
}

std::int64_t Statement::Integer(int column) const {
  return sqlite3_column_int64(m_handle, column);
}

std::string Statement::Text(int column) const {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(m_handle, column));
  return text == nullptr
             ? std::string()
             : std::string(text, static_cast<std::size_t>(sqlite3_column_bytes(m_handle, column)));
}

bool Statement::IsNull(int column) const {
  return sqlite3_column_type(m_handle, column) == SQLITE_NULL;
}

CellView Statement::Cell(int column) const {
  CellView cell;
  const auto take = [&](CellView::Kind kind, const void* bytes) {
    cell.kind = kind;
    cell.text = {static_cast<const char*>(bytes),
                 static_cast<std::size_t>(sqlite3_column_bytes(m_handle, column))};
  };
  switch (sqlite3_column_type(m_handle, column)) {
    case SQLITE_INTEGER:
      cell.kind = CellView::Kind::Integer;
      cell.integer = sqlite3_column_int64(m_handle, column);
      break;
    case SQLITE_FLOAT:
      cell.kind = CellView::Kind::Real;
      cell.real = sqlite3_column_double(m_handle, column);
      break;
    case SQLITE_TEXT:
      take(CellView::Kind::Text, sqlite3_column_text(m_handle, column));
      break;
    case SQLITE_BLOB:
      take(CellView::Kind::Bytes, sqlite3_column_blob(m_handle, column));
      break;
    default:
      break;
  }
  return cell;
}

std::vector<ColumnOrigin> Statement::Columns() const {
  const int count = sqlite3_column_count(m_handle);
  std::vector<ColumnOrigin> columns;
  columns.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) {
    columns.push_back({TextOrEmpty(sqlite3_column_name(m_handle, i)),
                       TextOrEmpty(sqlite3_column_decltype(m_handle, i)),
                       TextOrEmpty(sqlite3_column_table_name(m_handle, i)),
                       TextOrEmpty(sqlite3_column_origin_name(m_handle, i))});
  }
  return columns;
}

std::string PlainWords(int code, const std::string& message) {
  switch (code) {
    case SQLITE_CONSTRAINT_NOTNULL:
      return "field " + ColumnsIn(message) + " must have a value";
    case SQLITE_CONSTRAINT_UNIQUE:
    case SQLITE_CONSTRAINT_PRIMARYKEY:
      return "another record has the same " + ColumnsIn(message);
    case SQLITE_CONSTRAINT_CHECK:
      return "a rule of the table refuses the values (" + message + ")";
    case SQLITE_CONSTRAINT_FOREIGNKEY:
      return "a record would refer to one that is not there";
    default:
      break;
  }
  switch (code & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return "another program is using the database";
    case SQLITE_READONLY:
      return "the database cannot be written: it is read-only";
    case SQLITE_FULL:
      return "the disk is full";
    case SQLITE_IOERR:
      return "the disk cannot be read or written (" + message + ")";
    case SQLITE_CORRUPT:
      return "the database is damaged";
    case SQLITE_CANTOPEN:
      return "the database cannot be opened";
    case SQLITE_NOMEM:
      return "memory ran out";
    default:
      return message;
  }
}

void RaiseError(sqlite3* database) {
  const int code = sqlite3_extended_errcode(database);
  throw CDaoException(ErrorOf(code), PlainWords(code, sqlite3_errmsg(database)));
}

}  // namespace orxdb
