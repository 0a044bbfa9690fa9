#include "database/engine/DatabaseFile.h"

#include <memory>
#include <sqlite3.h>

#include "database/engine/Statement.h"
#include "platform/framework/DaoException.h"

namespace orxdb {
namespace {

constexpr int kLongestWait = 5000;  // milliseconds, for a lock of others

struct CloseHandle {
  void operator()(sqlite3* database) const { sqlite3_close(database); }
};
using Handle = std::unique_ptr<sqlite3, CloseHandle>;

/// Null memory aside there is a handle to ask why, also when the file could not be opened.
Handle OpenHandle(const std::filesystem::path& file, int flags, int& status) {
  sqlite3* opened = nullptr;
  status = sqlite3_open_v2(file.c_str(), &opened, flags, nullptr);
  return Handle(opened);
}

Handle Open(const std::filesystem::path& file, int flags) {
  int status = SQLITE_OK;
  Handle database = OpenHandle(file, flags, status);
  if (status != SQLITE_OK) {
    throw CDaoException(DaoError::Engine, PlainWords(status, sqlite3_errmsg(database.get())));
  }
  sqlite3_busy_timeout(database.get(), kLongestWait);
  return database;
}

void Run(sqlite3* database, const BuildScript& script) {
  const std::string sql(script.sql);
  if (sqlite3_exec(database, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
    throw CDaoException(DaoError::Engine,
                        std::string(script.name) + ": " + sqlite3_errmsg(database));
  }
}

void Picture(sqlite3_context* context, int, sqlite3_value** arguments) {
  const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(arguments[0]));
  const std::string_view name = text ? text : "";
  const auto* const source = static_cast<const PictureSource*>(sqlite3_user_data(context));
  if (const std::optional<std::string_view> bytes = (*source)(name)) {
    sqlite3_result_blob64(context, bytes->data(), bytes->size(), SQLITE_STATIC);
  } else {
    sqlite3_result_error(context, ("no picture " + std::string(name)).c_str(), -1);
  }
}

}  // namespace

void BuildDatabase(const std::filesystem::path& file, std::span<const BuildScript> scripts,
                   PictureSource pictures) {
  const Handle database = Open(file, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
  sqlite3_create_function_v2(database.get(), "picture", 1, SQLITE_UTF8, &pictures, Picture, nullptr,
                             nullptr, nullptr);
  // Nobody sees the file before it is whole, so it needs no journal yet.
  Run(database.get(), {"start", "PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF; BEGIN"});
  for (const BuildScript& script : scripts) Run(database.get(), script);
  Run(database.get(), {"end", "COMMIT; PRAGMA synchronous = FULL; PRAGMA journal_mode = WAL"});
}

void CopyDatabase(const std::filesystem::path& source, const std::filesystem::path& target) {
  const Handle from = Open(source, SQLITE_OPEN_READONLY);
  const Handle to = Open(target, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
  sqlite3_backup* backup = sqlite3_backup_init(to.get(), "main", from.get(), "main");
  // A database that is in use is told by the step alone.
  const int copied = backup ? sqlite3_backup_step(backup, -1) : sqlite3_errcode(to.get());
  const int ended = sqlite3_backup_finish(backup);
  if (copied != SQLITE_DONE || ended != SQLITE_OK) {
    const int status = copied != SQLITE_DONE ? copied : ended;
    throw CDaoException(DaoError::Engine, PlainWords(status, sqlite3_errstr(status)));
  }
}

void RemoveDatabaseRemains(const std::filesystem::path& file) {
  for (const char* suffix : {"-wal", "-shm", "-journal"}) {
    std::error_code error;
    std::filesystem::remove(file.string() + suffix, error);
    if (error) throw CDaoException(DaoError::Engine, error.message());
  }
}

DatabaseFileState StateOfFile(const std::filesystem::path& file) {
  std::error_code error;
  const std::filesystem::file_status status = std::filesystem::status(file, error);
  if (status.type() == std::filesystem::file_type::not_found) return DatabaseFileState::Absent;
  if (std::filesystem::is_directory(status)) return DatabaseFileState::Folder;
  if (std::filesystem::file_size(file, error) == 0 && !error) return DatabaseFileState::Empty;
  int result = SQLITE_OK;
  const Handle database = OpenHandle(file, SQLITE_OPEN_READONLY, result);
  if (result == SQLITE_OK) {
    result = sqlite3_exec(database.get(), "SELECT count(*) FROM sqlite_schema", nullptr, nullptr,
                          nullptr);
  }
  switch (result) {
    case SQLITE_CANTOPEN:
      return DatabaseFileState::Unreadable;
    case SQLITE_NOTADB:
      return DatabaseFileState::NotDatabase;
    case SQLITE_BUSY:
      return DatabaseFileState::InUse;
    default:
      return DatabaseFileState::Database;
  }
}

}  // namespace orxdb
