#pragma once

#include <cstdint>
#include <list>
#include <memory>
#include <optional>
#include <set>
#include <sqlite3.h>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "database/operations/CommitWatch.h"
#include "database/operations/DaoException.h"
#include "database/operations/SqlValue.h"

namespace orxdb {

class Connection;
class QuerySource;

/// Who wrote a statement's text: the layer itself, or (wholly or in part) a host or a stored
/// query. The latter may only read and call listed functions. Either runs for a limited time.
enum class Origin { Own, Host };

/// A prepared statement. Every use runs it to its end or resets it before the operation returns,
/// since an unfinished read would block other processes.
class Statement {
 public:
  Statement(Connection& connection, const std::string& sql, Origin origin);
  ~Statement();
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;

  /// Binds the next question mark.
  Statement& Bind(std::int64_t value);
  Statement& Bind(double value);
  Statement& Bind(std::string_view text);
  Statement& Bind(const CellView& value);
  Statement& Bind(const SqlValue& value) { return Bind(CellOf(value)); }
  Statement& Bind(const std::vector<SqlValue>& values);
  /// True while there is a row.
  bool Step();
  /// Runs a statement that gives no rows.
  void Run();
  /// Ready for the next use; never raises.
  void Reset() noexcept;

  std::int64_t Integer(int column) const { return sqlite3_column_int64(m_handle, column); }
  std::string Text(int column) const;
  bool IsNull(int column) const { return sqlite3_column_type(m_handle, column) == SQLITE_NULL; }
  sqlite3_stmt* Handle() const noexcept { return m_handle; }

 private:
  Connection& m_connection;
  sqlite3_stmt* m_handle = nullptr;
  Origin m_origin;
  int m_bound = 0;
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

/// Tells whether anything in the database may have changed between two looks.
struct ChangeStamp {
  std::int64_t own = -1;     ///< rows written by this connection
  std::int64_t others = -1;  ///< commits of every other connection, of this process or another

  bool operator==(const ChangeStamp&) const = default;
};

/// A column of a base table.
struct TableColumn {
  std::string name;
  std::string declaredType;
  std::string defaultText;  ///< SQL expression; empty when there is none
  bool required = false;
};

/// A base table.
struct TableInfo {
  std::string name;
  std::vector<TableColumn> columns;
  std::string key;             ///< the integer primary key; empty when there is none
  bool autoIncrement = false;  ///< keys are never used twice

  const TableColumn* Find(std::string_view column) const noexcept;
};

/// One open database file, with everything that belongs to the file: its statements, what is known
/// of its tables and stored queries, and the rules that keep host texts harmless.
class Connection : public std::enable_shared_from_this<Connection> {
 public:
  static std::shared_ptr<Connection> Open(const std::string& path, bool exclusive, bool readOnly);
  ~Connection();
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  /// Closes the file and finalises every statement; later operations raise.
  void Close() noexcept;
  bool IsOpen() const noexcept { return m_handle != nullptr; }
  sqlite3* Handle() const;

  /// A statement from the cache, ready to bind; it must not be used again before the use ends.
  StatementUse Use(const std::string& sql, Origin origin = Origin::Own);
  void Execute(const std::string& sql);
  ChangeStamp Stamp();
  /// Commits to a write-ahead log no longer wait for the disk, until `RestoreCommits`. Where that
  /// cannot restore them for want of memory, the next use does, or raises.
  void RelaxCommits() noexcept;
  void RestoreCommits() noexcept;

  /// The stored query of that name, as its SELECT; nothing when there is none. A view with its own
  /// column list is given as a SELECT of all its columns.
  std::optional<std::string> StoredQuery(std::string_view name);
  /// Whether the database has a table or a stored query of that name.
  bool HasSource(std::string_view name);
  /// Raises `NotFound` when there is no such table.
  const TableInfo& Table(std::string_view name);
  /// Descriptions of queries, kept as long as the schema stays the same; managed by `QuerySource`.
  std::unordered_map<std::string, std::shared_ptr<const QuerySource>>& Sources();

  /// A name for a temporary table, never given twice.
  std::string TemporaryName() { return "orx_copy_" + std::to_string(++m_temporaryTables); }

  /// Names of functions called and stored queries read by the host statement prepared last.
  struct Uses {
    std::set<std::string> functions;
    std::set<std::string> views;
  };
  const Uses& LastUses() const noexcept { return m_uses; }

  [[noreturn]] void Raise() const;

 private:
  friend class Statement;

  Connection() = default;
  void Configure(bool exclusive);
  void FollowSchema();
  void WatchCommits();
  bool SetSynchronous(const char* pragma) noexcept;
  int Authorize(int action, const char* first, const char* second, const char* view);
  static int OnAuthorize(void* self, int action, const char* first, const char* second,
                         const char* database, const char* view) noexcept;
  static int OnProgress(void* self) noexcept;
  static int OnBusy(void* self, int earlier) noexcept;

  struct CachedStatement {
    std::string sql;
    std::unique_ptr<Statement> statement;
  };

  sqlite3* m_handle = nullptr;
  bool m_writeAheadLog = false;
  bool m_restoreDue = false;  ///< commits are relaxed longer than they should be
  CommitWatch m_commits;
  Origin m_origin = Origin::Own;  ///< of the statement being prepared or run
  Uses m_uses;
  int m_temporaryTables = 0;
  std::int64_t m_waitStart = 0;       ///< steady clock, nanoseconds
  std::int64_t m_statementStart = 0;  ///< steady clock, nanoseconds; 0 before the first look

  std::list<CachedStatement> m_cache;  ///< last used first
  std::unordered_map<std::string_view, std::list<CachedStatement>::iterator> m_cacheIndex;

  std::int64_t m_schemaVersion = -1;
  std::unordered_map<std::string, std::string> m_views;  ///< folded name to CREATE text
  std::unordered_map<std::string, TableInfo> m_tables;   ///< folded name
  std::unordered_map<std::string, std::shared_ptr<const QuerySource>> m_sources;
};

/// Closes every open connection of the process.
void CloseAllConnections() noexcept;

}  // namespace orxdb
