#include "database/engine/PlainHandle.h"

#include <sqlite3.h>

#include "database/engine/Statement.h"
#include "platform/framework/DaoException.h"

namespace orxdb {
namespace {

void Require(int status, sqlite3* database) {
  if (status == SQLITE_OK) return;
  throw CDaoException((status & 0xff) == SQLITE_BUSY ? DaoError::Busy : DaoError::Engine,
                      PlainWords(status, sqlite3_errmsg(database)));
}

}  // namespace

void ClosePlainHandle::operator()(sqlite3* database) const {
  sqlite3_close(database);
}

PlainHandle TryOpenPlain(const std::filesystem::path& file, int flags, int& status) {
  sqlite3* opened = nullptr;
  status = sqlite3_open_v2(file.c_str(), &opened, flags, nullptr);
  return PlainHandle(opened);
}

PlainHandle OpenPlain(const std::filesystem::path& file, int flags) {
  int status = SQLITE_OK;
  PlainHandle database = TryOpenPlain(file, flags, status);
  Require(status, database.get());
  return database;
}

int TryRun(sqlite3* database, const char* sql, std::string* value) {
  const auto keep = [](void* last, int count, char** values, char**) {
    const char* const text = values[count - 1];
    if (last != nullptr) *static_cast<std::string*>(last) = text ? text : "";
    return 0;
  };
  return sqlite3_exec(database, sql, keep, value, nullptr);
}

void Run(sqlite3* database, const char* sql, std::string* value) {
  Require(TryRun(database, sql, value), database);
}

}  // namespace orxdb
