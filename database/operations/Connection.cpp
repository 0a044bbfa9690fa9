#include "database/operations/Connection.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <mutex>
#include <thread>

#include "database/operations/DialectFunctions.h"
#include "database/operations/Lexer.h"

namespace orxdb {
namespace {

constexpr std::int64_t kLongestWait = 5'000'000'000;  // nanoseconds, for a lock of others
constexpr int kProgressOperations = 20000;
/// Also for the layer's own statements: a file's triggers run inside them.
constexpr std::int64_t kLongestStatement = 10'000'000'000;  // nanoseconds
constexpr std::size_t kCachedStatements = 256;

/// SQLite's own functions that stored queries and host texts may call; the dialect's functions
/// are allowed besides.
constexpr std::array kAllowedFunctions = {
    "abs",     "avg",   "char",   "coalesce", "count",        "date",      "datetime",  "format",
    "glob",    "hex",   "ifnull", "iif",      "group_concat", "instr",     "julianday", "length",
    "like",    "lower", "ltrim",  "max",      "min",          "nullif",    "printf",    "quote",
    "replace", "round", "rtrim",  "sign",     "strftime",     "substr",    "substring", "sum",
    "time",    "total", "trim",   "typeof",   "unicode",      "unixepoch", "upper"};

struct Registry {
  std::mutex mutex;
  std::vector<std::weak_ptr<Connection>> connections;
};

Registry& OpenConnections() {
  static Registry registry;
  return registry;
}

std::int64_t Now() {
  return std::chrono::steady_clock::now().time_since_epoch() / std::chrono::nanoseconds(1);
}

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

}  // namespace

// --- Statement

Statement::Statement(Connection& connection, const std::string& sql, Origin origin)
    : m_connection(connection), m_origin(origin) {
  sqlite3* database = connection.Handle();
  connection.m_origin = origin;
  connection.m_uses = {};
  const char* tail = nullptr;
  const int code =
      sqlite3_prepare_v3(database, sql.data(), static_cast<int>(sql.size()),
                         SQLITE_PREPARE_PERSISTENT | SQLITE_PREPARE_NO_VTAB, &m_handle, &tail);
  connection.m_origin = Origin::Own;
  if (code != SQLITE_OK) connection.Raise();
  if (m_handle == nullptr || tail != sql.data() + sql.size()) {
    sqlite3_finalize(m_handle);
    throw CDaoException(DaoError::Syntax, "More or less than one statement");
  }
}

Statement::~Statement() {
  sqlite3_finalize(m_handle);
}

Statement& Statement::Bind(std::int64_t value) {
  sqlite3_bind_int64(m_handle, ++m_bound, value);
  return *this;
}

Statement& Statement::Bind(double value) {
  sqlite3_bind_double(m_handle, ++m_bound, value);
  return *this;
}

Statement& Statement::Bind(std::string_view text) {
  if (sqlite3_bind_text64(m_handle, ++m_bound, text.data() == nullptr ? "" : text.data(),
                          text.size(), SQLITE_TRANSIENT, SQLITE_UTF8) != SQLITE_OK) {
    m_connection.Raise();
  }
  return *this;
}

Statement& Statement::Bind(const CellView& cell) {
  switch (cell.kind) {
    case CellView::Kind::Null:
      sqlite3_bind_null(m_handle, ++m_bound);
      return *this;
    case CellView::Kind::Integer:
      return Bind(cell.integer);
    case CellView::Kind::Real:
      return Bind(cell.real);
    case CellView::Kind::Text:
      return Bind(cell.text);
    case CellView::Kind::Bytes:
      if (sqlite3_bind_blob64(m_handle, ++m_bound, cell.text.empty() ? "" : cell.text.data(),
                              cell.text.size(), SQLITE_TRANSIENT) != SQLITE_OK) {
        m_connection.Raise();
      }
  }
  return *this;
}

Statement& Statement::Bind(const std::vector<SqlValue>& values) {
  for (const SqlValue& value : values) Bind(value);
  return *this;
}

bool Statement::Step() {
  if (sqlite3_stmt_busy(m_handle) == 0) m_connection.m_statementStart = 0;
  m_connection.m_origin = m_origin;
  const int code = sqlite3_step(m_handle);
  m_connection.m_origin = Origin::Own;
  if (code == SQLITE_ROW) return true;
  if (code != SQLITE_DONE) m_connection.Raise();
  return false;
}

void Statement::Run() {
  while (Step()) {
  }
}

void Statement::Reset() noexcept {
  sqlite3_reset(m_handle);
  m_bound = 0;
}

std::string Statement::Text(int column) const {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(m_handle, column));
  return text == nullptr
             ? std::string()
             : std::string(text, static_cast<std::size_t>(sqlite3_column_bytes(m_handle, column)));
}

// --- TableInfo

const TableColumn* TableInfo::Find(std::string_view column) const noexcept {
  const auto found = std::find_if(columns.begin(), columns.end(), [&](const TableColumn& each) {
    return SameName(each.name, column);
  });
  return found == columns.end() ? nullptr : &*found;
}

// --- Connection

std::shared_ptr<Connection> Connection::Open(const std::string& path, bool exclusive,
                                             bool readOnly) {
  std::shared_ptr<Connection> connection(new Connection);
  // All calls come from the thread of one apartment: SQLite need not lock for each column.
  const int flags = (readOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE) |
                    SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE;
  if (sqlite3_open_v2(path.c_str(), &connection->m_handle, flags, nullptr) != SQLITE_OK) {
    connection->Raise();
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
  sqlite3_set_authorizer(m_handle, &Connection::OnAuthorize, this);
  sqlite3_progress_handler(m_handle, kProgressOperations, &Connection::OnProgress, this);
  for (const auto& [option, on] : {std::pair{SQLITE_DBCONFIG_DEFENSIVE, 1},
                                   {SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0},
                                   {SQLITE_DBCONFIG_DQS_DML, 0},
                                   {SQLITE_DBCONFIG_DQS_DDL, 0},
                                   {SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 0}}) {
    sqlite3_db_config(m_handle, option, on, nullptr);
  }
  RegisterDialectFunctions(m_handle);
  Execute("PRAGMA synchronous = FULL");
  Execute("PRAGMA temp_store = MEMORY");
  {
    // SQLite takes an empty file for an empty database; here it is no database at all.
    const StatementUse pages = Use("PRAGMA page_count");
    if (!pages->Step() || pages->Integer(0) == 0) {
      throw CDaoException(DaoError::Engine, "The file is empty");
    }
  }
  FollowSchema();
  WatchCommits();
}

Connection::~Connection() {
  Close();
}

void Connection::Close() noexcept {
  m_cacheIndex.clear();
  m_cache.clear();
  m_sources.clear();
  m_commits = {};
  sqlite3_close_v2(m_handle);
  m_handle = nullptr;
}

sqlite3* Connection::Handle() const {
  if (m_handle == nullptr) throw CDaoException(DaoError::Closed, "The database is closed");
  return m_handle;
}

StatementUse Connection::Use(const std::string& sql, Origin origin) {
  Handle();
  if (m_restoreDue) RestoreCommits();
  if (m_restoreDue) Raise();  // better no writes at all than writes that are not durable
  const auto found = m_cacheIndex.find(sql);
  if (found != m_cacheIndex.end()) {
    m_cache.splice(m_cache.begin(), m_cache, found->second);
    return StatementUse(*m_cache.front().statement);
  }
  auto statement = std::make_unique<Statement>(*this, sql, origin);
  if (m_cache.size() >= kCachedStatements) {
    m_cacheIndex.erase(m_cache.back().sql);
    m_cache.pop_back();
  }
  m_cache.push_front({sql, std::move(statement)});
  m_cacheIndex.emplace(m_cache.front().sql, m_cache.begin());
  return StatementUse(*m_cache.front().statement);
}

void Connection::Execute(const std::string& sql) {
  Statement(*this, sql, Origin::Own).Run();
}

void Connection::RelaxCommits() noexcept {
  if (m_writeAheadLog) SetSynchronous("PRAGMA synchronous = NORMAL");
}

void Connection::RestoreCommits() noexcept {
  if (m_writeAheadLog) m_restoreDue = !SetSynchronous("PRAGMA synchronous = FULL");
}

bool Connection::SetSynchronous(const char* pragma) noexcept {
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
  return {sqlite3_total_changes64(m_handle), m_commits.Commits()};
}

void Connection::FollowSchema() {
  std::int64_t version = 0;
  {
    const StatementUse schema = Use("PRAGMA schema_version");
    schema->Step();
    version = schema->Integer(0);
  }
  if (version == m_schemaVersion) return;
  m_views.clear();
  m_tables.clear();
  m_sources.clear();
  const StatementUse rows =
      Use("SELECT type, name, sql FROM main.sqlite_schema WHERE type IN ('table', 'view')");
  while (rows->Step()) {
    const std::string name = rows->Text(1);
    if (rows->Text(0) == "view") {
      m_views.emplace(FoldedName(name), rows->Text(2));
    } else {
      m_tables[FoldedName(name)].name = name;
    }
  }
  m_schemaVersion = version;
}

std::optional<std::string> Connection::StoredQuery(std::string_view name) {
  FollowSchema();
  const auto found = m_views.find(FoldedName(name));
  if (found == m_views.end()) return std::nullopt;
  // CREATE VIEW name AS SELECT …; with a column list only the view itself knows its names.
  const std::vector<Token> tokens = Tokenize(found->second, LexicalRules::Sqlite);
  for (const Token& token : tokens) {
    if (token.IsSymbol("(")) return "SELECT * FROM " + Quoted(name);
    if (token.IsWord("AS")) return found->second.substr(token.begin + 2);
  }
  throw CDaoException(DaoError::Engine, "The stored query cannot be read");
}

bool Connection::HasSource(std::string_view name) {
  FollowSchema();
  const std::string key = FoldedName(name);
  return m_views.contains(key) || m_tables.contains(key);
}

const TableInfo& Connection::Table(std::string_view name) {
  FollowSchema();
  const auto found = m_tables.find(FoldedName(name));
  if (found == m_tables.end()) {
    throw CDaoException(DaoError::NotFound, "There is no table " + std::string(name));
  }
  if (!found->second.columns.empty()) return found->second;

  TableInfo table;  // kept when it has been read to its end
  table.name = found->second.name;
  int keyColumns = 0;
  std::string key;
  Statement rows(*this, "PRAGMA main.table_info(" + Quoted(table.name) + ")", Origin::Own);
  while (rows.Step()) {
    table.columns.push_back({rows.Text(1), rows.Text(2), rows.Text(4), rows.Integer(3) != 0});
    if (rows.Integer(5) == 0) continue;
    ++keyColumns;
    if (SameName(rows.Text(2), "INTEGER")) key = rows.Text(1);
  }
  if (keyColumns == 1 && !key.empty()) {
    table.key = key;
    int autoIncrement = 0;
    sqlite3_table_column_metadata(m_handle, "main", table.name.c_str(), key.c_str(), nullptr,
                                  nullptr, nullptr, nullptr, &autoIncrement);
    table.autoIncrement = autoIncrement != 0;
  }
  return found->second = std::move(table);
}

std::unordered_map<std::string, std::shared_ptr<const QuerySource>>& Connection::Sources() {
  FollowSchema();
  return m_sources;
}

void Connection::Raise() const {
  throw CDaoException(ErrorOf(sqlite3_errcode(m_handle)), sqlite3_errmsg(m_handle));
}

int Connection::Authorize(int action, const char* first, const char* second, const char* view) {
  if (m_origin == Origin::Own) return SQLITE_OK;
  if (view != nullptr) m_uses.views.insert(FoldedName(view));
  switch (action) {
    case SQLITE_SELECT:
      return SQLITE_OK;
    case SQLITE_READ:
      return std::string_view(first).starts_with("sqlite_") ? SQLITE_DENY : SQLITE_OK;
    case SQLITE_FUNCTION: {
      const std::string name = FoldedName(second);
      m_uses.functions.insert(name);
      return IsDialectFunction(name) ||
                     std::find(kAllowedFunctions.begin(), kAllowedFunctions.end(), name) !=
                         kAllowedFunctions.end()
                 ? SQLITE_OK
                 : SQLITE_DENY;
    }
    default:
      return SQLITE_DENY;
  }
}

int Connection::OnAuthorize(void* self, int action, const char* first, const char* second,
                            const char* /*database*/, const char* view) noexcept {
  try {
    return static_cast<Connection*>(self)->Authorize(action, first, second, view);
  } catch (...) {
    return SQLITE_DENY;
  }
}

int Connection::OnProgress(void* self) noexcept {
  auto& connection = *static_cast<Connection*>(self);
  const std::int64_t now = Now();
  if (connection.m_statementStart == 0) connection.m_statementStart = now;
  return now - connection.m_statementStart > kLongestStatement ? 1 : 0;
}

// Short pauses of uneven length: with those of SQLite's own timeout, which grow to a tenth of a
// second, a host starved for seconds beside others that write without a break.
int Connection::OnBusy(void* self, int earlier) noexcept {
  auto& connection = *static_cast<Connection*>(self);
  const std::int64_t now = Now();
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
