#include "database/engine/DatabaseFile.h"

#include <sqlite3.h>

#include "database/engine/NetworkFolder.h"
#include "database/engine/PlainHandle.h"
#include "platform/framework/DaoException.h"

namespace orxdb {
namespace {

/// Runs a part of a new database; the message for a failure names it.
void RunScript(sqlite3* database, const BuildScript& script) {
  if (TryRun(database, std::string(script.sql).c_str()) == SQLITE_OK) return;
  throw CDaoException(DaoError::Engine, std::string(script.name) + ": " + sqlite3_errmsg(database));
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
  PlainHandle database = OpenPlain(file, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
  sqlite3_create_function_v2(database.get(), "picture", 1, SQLITE_UTF8, &pictures, Picture, nullptr,
                             nullptr, nullptr);
  // Nobody sees the file before it is whole, so it needs no journal yet.
  RunScript(database.get(),
            {"start", "PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF; BEGIN"});
  for (const BuildScript& script : scripts) RunScript(database.get(), script);
  RunScript(database.get(),
            {"end", "COMMIT; PRAGMA synchronous = FULL; PRAGMA journal_mode = WAL"});
}

DatabaseFileState StateOfFile(const std::filesystem::path& file) {
  std::error_code error;
  const std::filesystem::file_status status = std::filesystem::status(file, error);
  if (status.type() == std::filesystem::file_type::not_found) return DatabaseFileState::Absent;
  if (std::filesystem::is_directory(status)) return DatabaseFileState::Folder;
  if (std::filesystem::file_size(file, error) == 0 && !error) return DatabaseFileState::Empty;
  int result = SQLITE_OK;
  const PlainHandle database = TryOpenPlain(file, SQLITE_OPEN_READONLY, result);
  if (result == SQLITE_OK && !NetworkOfLog(database.get(), file).empty()) {
    return DatabaseFileState::SharedLog;
  }
  if (result == SQLITE_OK) result = TryRun(database.get(), "SELECT count(*) FROM sqlite_schema");
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
