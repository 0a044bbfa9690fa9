#include "database/engine/Connection.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <mutex>
#include <sqlite3.h>
#include <system_error>
#include <thread>
#include <vector>

#include "database/engine/DialectFunctions.h"
#include "database/engine/NetworkFolder.h"

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

/// Whether a file could not be read because there is no room or no leave for a log beside it, and
/// whether it holds all that was committed: what is not in it is in the log.
bool IsWholeWithoutLog(sqlite3* database, const std::string& path) {
  switch (sqlite3_extended_errcode(database)) {
    case SQLITE_CANTOPEN:
    case SQLITE_READONLY_CANTINIT:
    case SQLITE_READONLY_DIRECTORY:
    case SQLITE_FULL:
    case SQLITE_IOERR_SHMSIZE:
    case SQLITE_IOERR_SHMOPEN:
      break;
    default:
      return false;
  }
  std::error_code error;
  if (std::filesystem::file_size(path, error) == 0 || error) return false;
  return std::filesystem::file_size(path + "-wal", error) == 0 ||
         error == std::errc::no_such_file_or_directory;
}

/// The name by which SQLite reads a file without locks and without a log.
std::string UnchangingName(const std::string& path) {
  std::string name = path.starts_with('/') ? "file://" : "file:";
  for (const char c : path) {
    switch (c) {
      case '%':
        name += "%25";
        break;
      case '?':
        name += "%3f";
        break;
      case '#':
        name += "%23";
        break;
      default:
        name += c;
    }
  }
  return name + "?immutable=1";
}

}  // namespace

std::shared_ptr<Connection> Connection::Open(const std::string& path, bool exclusive,
                                             bool readOnly) {
  std::shared_ptr<Connection> connection(new Connection(path));
  try {
    connection->OpenFile(path, readOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE);
    const std::string network = NetworkOfLog(connection->m_handle, path);
    if (!network.empty()) {
      throw CDaoException(
          DaoError::Engine,
          "A database with a log cannot be used in a network folder (" + network + ")");
    }
    connection->Configure(exclusive);
  } catch (const CDaoException&) {
    if (!IsWholeWithoutLog(connection->m_handle, path)) throw;
    connection.reset(new Connection(path));
    connection->m_unchanging = true;
    connection->OpenFile(UnchangingName(path), SQLITE_OPEN_READONLY | SQLITE_OPEN_URI);
    connection->Configure(exclusive);
  }
  Registry& registry = OpenConnections();
  const std::lock_guard lock(registry.mutex);
  std::erase_if(registry.connections, [](const auto& each) { return each.expired(); });
  registry.connections.push_back(connection);
  return connection;
}

void Connection::OpenFile(const std::string& name, int flags) {
  // All calls come from the thread of one apartment: SQLite need not lock for each column.
  flags |= SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE;
  if (sqlite3_open_v2(name.c_str(), &m_handle, flags, nullptr) != SQLITE_OK) RaiseError(m_handle);
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
  if (!m_unchanging) WatchCommits();
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
  if (m_unchanging) return {0, 0};
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

bool IsOpenHere(const std::filesystem::path& file) {
  Registry& registry = OpenConnections();
  const std::lock_guard lock(registry.mutex);
  return std::ranges::any_of(registry.connections, [&](const auto& each) {
    const auto connection = each.lock();
    std::error_code error;
    return connection && connection->IsOpen() &&
           std::filesystem::equivalent(connection->Path(), file, error);
  });
}

}  // namespace orxdb
