#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "database/engine/TextGuard.h"
#include "platform/framework/DaoException.h"
#include "values/StoredValue.h"

struct sqlite3_stmt;

namespace orxdb {

/// A column that a statement gives, and the column of a base table that its values come from
/// through whatever joins and stored queries; `table` is empty where they are computed.
struct ColumnOrigin {
  std::string name;
  std::string declaredType;
  std::string table;
  std::string field;
};

/// A prepared statement. Every use runs it to its end or resets it before the operation returns,
/// since an unfinished read would block other processes.
class Statement {
 public:
  /// Prepares one statement; `uses` learns what a host's text is for.
  Statement(sqlite3* database, TextGuard& guard, const std::string& sql, Origin origin,
            TextUses* uses = nullptr);
  ~Statement();
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;

  /// Binds the next question mark.
  Statement& Bind(std::int64_t value);
  Statement& Bind(double value);
  Statement& Bind(std::string_view text);
  Statement& Bind(const CellView& value);
  Statement& Bind(const SqlValue& value) { return Bind(CellOf(value)); }
  /// Binds the next question marks.
  template <typename Value>
  Statement& Bind(const std::vector<Value>& values) {
    for (const Value& value : values) Bind(value);
    return *this;
  }
  /// True while there is a row.
  bool Step();
  /// Runs it to its end and tells how many records a change changed.
  std::int64_t Run();
  /// Ready for the next use; never raises.
  void Reset() noexcept;

  std::int64_t Integer(int column) const;
  std::string Text(int column) const;
  bool IsNull(int column) const;
  /// A value of the current row, which lives until the next step.
  CellView Cell(int column) const;
  std::vector<ColumnOrigin> Columns() const;
  sqlite3_stmt* Handle() const noexcept { return m_handle; }

 private:
  void Check(int code) const;

  TextGuard& m_guard;
  sqlite3_stmt* m_handle = nullptr;
  Origin m_origin;
  int m_bound = 0;
};

/// A host's text: what it uses, and the statement that runs it.
struct HostText {
  HostText(sqlite3* database, TextGuard& guard, const std::string& sql)
      : statement(database, guard, sql, Origin::Host, &uses) {}

  TextUses uses;
  Statement statement;
};

/// Resets a borrowed statement on every way out.
class StatementUse {
 public:
  explicit StatementUse(Statement& statement) : m_statement(statement) {}
  ~StatementUse() { m_statement.Reset(); }
  StatementUse(const StatementUse&) = delete;
  StatementUse& operator=(const StatementUse&) = delete;
  Statement* operator->() const noexcept { return &m_statement; }
  Statement& operator*() const noexcept { return m_statement; }

 private:
  Statement& m_statement;
};

/// What the engine says with a code, in plain words where people meet it.
std::string PlainWords(int code, const std::string& message);

/// Raises the error of the connection's last operation.
[[noreturn]] void RaiseError(sqlite3* database);

}  // namespace orxdb
