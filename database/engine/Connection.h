#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>

#include "database/engine/ChangeListener.h"
#include "database/engine/CommitWatch.h"
#include "database/engine/Schema.h"
#include "database/engine/StatementCache.h"
#include "database/engine/TextGuard.h"
#include "database/engine/Transactions.h"

namespace orxdb {

/// One open database file.
class Connection {
 public:
  /// A file with a write-ahead log that can have no log now, in a folder or on a medium that cannot
  /// be written or has no room, is opened as it stands: for reading only and without locks. What
  /// others change meanwhile is then not seen, and may make reading raise. One with a log in a
  /// network folder that can be written raises.
  static std::shared_ptr<Connection> Open(const std::string& path, bool exclusive, bool readOnly);
  ~Connection();
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  /// Closes the file and finalises every statement; later operations raise.
  void Close() noexcept;
  bool IsOpen() const noexcept { return m_handle != nullptr; }
  /// The file, as it was named.
  const std::string& Path() const noexcept { return m_path; }
  /// Raises when the file is closed.
  sqlite3* Handle() const;

  /// A statement from the cache, ready to bind; it must not be used again before the use ends.
  StatementUse Use(const std::string& sql, Origin origin = Origin::Own);
  /// A statement of the layer's own that is not worth keeping.
  Statement Prepare(const std::string& sql) { return {Handle(), m_guard, sql, Origin::Own}; }
  HostText PrepareText(const std::string& sql) { return {Handle(), m_guard, sql}; }
  void Execute(const std::string& sql) { Prepare(sql).Run(); }

  Schema& GetSchema() noexcept { return m_schema; }
  ChangeStamp Stamp();
  Transactions& GetTransactions() noexcept { return m_transactions; }
  /// Told by `RecordEdit` before each change.
  ChangeListeners& Listeners() noexcept { return m_listeners; }
  /// Outside of transactions only: commits to a write-ahead log no longer wait for the disk, until
  /// `RestoreCommits`. Where that cannot restore them for want of memory, the next use does, or
  /// raises.
  void RelaxCommits() noexcept;
  void RestoreCommits() noexcept;

  /// A name for a temporary table, never given twice.
  std::string TemporaryName() { return "orx_copy_" + std::to_string(++m_temporaryTables); }

 private:
  explicit Connection(std::string path)
      : m_path(std::move(path)), m_schema(*this), m_transactions(*this) {}
  void OpenFile(const std::string& name, int flags);
  void Configure(bool exclusive);
  void WatchCommits();
  bool SetSynchronous(const char* pragma) noexcept;
  static int OnBusy(void* self, int earlier) noexcept;

  std::string m_path;
  sqlite3* m_handle = nullptr;
  TextGuard m_guard;
  StatementCache m_statements;
  Schema m_schema;
  CommitWatch m_commits;
  ChangeListeners m_listeners;
  Transactions m_transactions;
  bool m_writeAheadLog = false;
  bool m_unchanging = false;  ///< read as it stands
  bool m_restoreDue = false;  ///< commits are relaxed longer than they should be
  int m_temporaryTables = 0;
  std::int64_t m_waitStart = 0;  ///< steady clock, nanoseconds
};

/// Closes every open connection of the process.
void CloseAllConnections() noexcept;

/// Whether a connection of the process is open on that file.
bool IsOpenHere(const std::filesystem::path& file);

}  // namespace orxdb
