#include "host/StarterDatabase.h"

#include <algorithm>
#include <string>

#include "host/DatabaseFile.h"
#include "host/HostError.h"
#include "host/NewFile.h"

namespace orxdb {
namespace {

void Run(sqlite3* handle, const std::string& sql, std::string_view what) {
  if (sqlite3_exec(handle, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
    throw HostError("The starter database cannot be built (" + std::string(what) +
                    "): " + sqlite3_errmsg(handle) + '.');
  }
}

/// The SQL function picture(name): the bytes of a preview picture.
void Picture(sqlite3_context* context, int, sqlite3_value** arguments) {
  const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(arguments[0]));
  std::string name = text ? text : "";
  std::ranges::transform(name, name.begin(), [](char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  });
  const auto found = std::ranges::find(StarterPictures(), name, &StarterFile::name);
  if (found == StarterPictures().end()) {
    sqlite3_result_error(context, ("no picture " + name).c_str(), -1);
  } else {
    sqlite3_result_blob64(context, found->content.data(), found->content.size(), SQLITE_STATIC);
  }
}

void Build(const std::filesystem::path& file) {
  sqlite3* opened = nullptr;
  const int status = sqlite3_open(file.c_str(), &opened);
  const BareDatabase database(opened);
  if (status != SQLITE_OK) {
    throw HostError(file.string() + " cannot be created: " + sqlite3_errmsg(opened) + '.');
  }
  sqlite3_create_function_v2(opened, "picture", 1, SQLITE_UTF8, nullptr, Picture, nullptr, nullptr,
                             nullptr);
  // Nobody sees the file before it is whole, so it needs no journal yet.
  Run(opened, "PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF; BEGIN", "start");
  for (const StarterFile& script : StarterScripts()) {
    Run(opened, std::string(script.content), script.name);
  }
  Run(opened, "COMMIT; PRAGMA synchronous = FULL; PRAGMA journal_mode = WAL", "end");
}

}  // namespace

void CreateStarterDatabase(const std::filesystem::path& file, bool replace) {
  const auto build = [&](const std::filesystem::path& building) {
    if (file.has_parent_path()) std::filesystem::create_directories(file.parent_path());
    Build(building);
  };
  // The log of a replaced database must never be taken for one of the new file.
  const auto removeLogs = [&] {
    for (const char* suffix : {"-wal", "-shm", "-journal"}) {
      std::filesystem::remove(file.string() + suffix);
    }
  };
  WriteNewFile(file, replace, ", with all its tools", build, removeLogs);
}

}  // namespace orxdb
