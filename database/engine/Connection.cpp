#include "database/engine/Connection.h"

#include <chrono>
#include <mutex>
#include <sqlite3.h>
#include <thread>
#include <vector>

#include "database/engine/DialectFunctions.h"

namespace orxdb {
namespace {

constexpr std::int64_t kLongestWait = 5'000'000'000;  // nanoseconds, for a lock of others

struct Registry {
  std::mutex mutex;
  std::vector<std::weak_ptr<Connection>> connections;
};

Registry& OpenConnections() {
  static Registry registry;
  return registry;
}

}  // namespace

std::shared_ptr<Connection> Connection::Open(const std::string& path, bool exclusive,
                                             bool readOnly) {
  std::shared_ptr<Connection> connection(new Connection);
  // All calls come from the thread of one apartment: SQLite need not lock for each column.
  const int flags = (readOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE) |
                    SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE;
  if (sqlite3_open_v2(path.c_str(), &connection->m_handle, flags, nullptr) != SQLITE_OK) {
    RaiseError(connection->m_handle);
  }
  connection->Configure(exclusive);
  Registry& registry = OpenConnections();
  const std::lock_guard lock(registry.mutex);
  std::erase_if(registry.connections, [](const auto& each) { return each.expired(); });
  registry.connections.push_back(connection);
  return connection;
}

void Connection::Configure(bool exclusive) {
  if (exclusive) Execute("PRAGMA locking_mode = EXCLUSIVE");
  sqlite3_busy_handler(m_handle, &Connection::OnBusy, this);
  m_guard.Protect(m_handle);
  RegisterDialectFunctions(m_handle);
  Execute("PRAGMA synchronous = FULL");
  Execute("PRAGMA temp_store = MEMORY");  // where the guard sees it grow
  {
    // SQLite takes an empty file for an empty database; here it is no database at all.
    const StatementUse pages = Use("PRAGMA page_count");
    if (!pages->Step() || pages->Integer(0) == 0) {
      throw CDaoException(DaoError::Engine, "The file is empty");
    }
  }
  m_transactions.Follow(m_handle);
  m_schema.Follow();
  WatchCommits();
}

Connection::~Connection() {
  Close();
}

void Connection::Close() noexcept {
  m_transactions.Close();
  m_statements.Clear();
  m_schema.Clear();
  m_commits = {};
  sqlite3_close_v2(m_handle);
  m_handle = nullptr;
}

sqlite3* Connection::Handle() const {
  if (m_handle == nullptr) throw CDaoException(DaoError::Closed, "The database is closed");
  return m_handle;
}

StatementUse Connection::Use(const std::string& sql, Origin origin) {
  sqlite3* const database = Handle();
  if (m_restoreDue) RestoreCommits();
  if (m_restoreDue) RaiseError(database);  // better no writes than writes that are not durable
  if (Statement* known = m_statements.Find(sql)) return StatementUse(*known);
  return StatementUse(
      m_statements.Keep(sql, std::make_unique<Statement>(database, m_guard, sql, origin)));
}

void Connection::RelaxCommits() noexcept {
  if (m_writeAheadLog) SetSynchronous("PRAGMA synchronous = NORMAL");
}

void Connection::RestoreCommits() noexcept {
  if (m_writeAheadLog) m_restoreDue = !SetSynchronous("PRAGMA synchronous = FULL");
}

bool Connection::SetSynchronous(const char* pragma) noexcept {
  m_guard.Start();
  return sqlite3_exec(m_handle, pragma, nullptr, nullptr, nullptr) == SQLITE_OK;
}

void Connection::WatchCommits() {
  Use("PRAGMA schema_version")->Step();  // a read, for which SQLite opens what log there is
  const StatementUse mode = Use("PRAGMA journal_mode");
  m_writeAheadLog = mode->Step() && mode->Text(0) == "wal";
  m_commits = CommitWatch(m_handle, m_writeAheadLog, m_commits.Commits() + 1);
}

ChangeStamp Connection::Stamp() {
  Handle();
  if (m_commits.LogAppeared()) WatchCommits();
  return {sqlite3_total_changes64(m_handle) + m_transactions.Rollbacks(), m_commits.Commits()};
}

// Short pauses of uneven length: with those of SQLite's own timeout, which grow to a tenth of a
// second, a host starved for seconds beside others that write without a break.
int Connection::OnBusy(void* self, int earlier) noexcept {
  auto& connection = *static_cast<Connection*>(self);
  const std::int64_t now =
      std::chrono::steady_clock::now().time_since_epoch() / std::chrono::nanoseconds(1);
  if (earlier == 0) connection.m_waitStart = now;
  if (now - connection.m_waitStart > kLongestWait) return 0;
  std::this_thread::sleep_for(std::chrono::nanoseconds(500'000 + now % 2'000'000));
  return 1;
}

void CloseAllConnections() noexcept {
  Registry& registry = OpenConnections();
  const std::lock_guard lock(registry.mutex);
  for (const auto& each : registry.connections) {
    if (const auto connection = each.lock()) connection->Close();
  }
  registry.connections.clear();
}

}  // namespace orxdb
