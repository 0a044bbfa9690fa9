#include "database/engine/NetworkFolder.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <sqlite3.h>
#include <sstream>

#include "platform/framework/FileSystem.h"

namespace orxdb {
namespace {

namespace fs = std::filesystem;

fs::path RealPlace(const fs::path& path) {
  std::error_code error;
  return fs::weakly_canonical(fs::absolute(path, error), error);
}

bool IsBelow(const fs::path& file, const fs::path& folder) {
  return std::ranges::mismatch(folder, file).in1 == folder.end();
}

bool IsServedToOthers(const fs::path& file) {
  const char* const listed = std::getenv("ORXDB_NETWORK_FOLDERS");
  if (listed == nullptr) return false;
  std::istringstream folders(listed);
  for (std::string folder; std::getline(folders, folder, ':');) {
    if (!folder.empty() && IsBelow(RealPlace(file), RealPlace(folder))) return true;
  }
  return false;
}

}  // namespace

std::string NetworkOf(const fs::path& file) {
  const FileSystem system = FileSystemOf(file);
  if (system.network) return system.type;
  return IsServedToOthers(file) ? "shared" : "";
}

bool HeaderSaysLog(sqlite3* database) noexcept {
  constexpr sqlite3_int64 kVersions = 18;  // to write and to read, a byte each
  constexpr unsigned char kWithLog = 2;
  sqlite3_file* file = nullptr;
  sqlite3_file_control(database, "main", SQLITE_FCNTL_FILE_POINTER, &file);
  std::array<unsigned char, 2> versions{};
  return file != nullptr && file->pMethods != nullptr &&
         file->pMethods->xRead(file, versions.data(), versions.size(), kVersions) == SQLITE_OK &&
         versions[0] == kWithLog;
}

std::string NetworkOfLog(sqlite3* database, const fs::path& file) {
  return HeaderSaysLog(database) && !FileSystemOf(file).readOnly ? NetworkOf(file) : "";
}

}  // namespace orxdb
