#include "host/StarterDatabase.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <memory>
#include <sqlite3.h>
#include <string>
#include <unistd.h>

#include "host/HostError.h"

namespace orxdb {
namespace {

/// The file while it is being built; removed unless it got its final name.
class NewFile {
 public:
  explicit NewFile(const std::filesystem::path& target)
      : m_path(target.string() + ".new" + std::to_string(getpid())) {}
  ~NewFile() {
    std::error_code ignored;
    std::filesystem::remove(m_path, ignored);
  }
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;

  const std::filesystem::path& Path() const { return m_path; }

  /// Gives the file its name once all of it is on the disk.
  void RenameTo(const std::filesystem::path& target) const {
    const int descriptor = open(m_path.c_str(), O_RDONLY | O_CLOEXEC);
    const bool stored = descriptor >= 0 && fsync(descriptor) == 0;
    const std::error_code reason(errno, std::generic_category());
    if (descriptor >= 0) close(descriptor);
    if (!stored) throw std::filesystem::filesystem_error("fsync", m_path, reason);
    std::filesystem::rename(m_path, target);
  }

 private:
  std::filesystem::path m_path;
};

struct Closer {
  void operator()(sqlite3* handle) const { sqlite3_close(handle); }
};
using Handle = std::unique_ptr<sqlite3, Closer>;

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
  const Handle handle(opened);
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
  const std::string name = file.string();
  std::error_code error;
  if (std::filesystem::is_directory(file, error)) throw HostError(name + " is a folder.");
  if (std::filesystem::exists(file, error) && !replace) {
    throw HostError(name + " is there already; --force replaces it, with all its tools.");
  }
  try {
    if (file.has_parent_path()) std::filesystem::create_directories(file.parent_path());
    const NewFile building(file);
    Build(building.Path());
    // The log of a replaced database must never be taken for one of the new file.
    for (const char* suffix : {"-wal", "-shm", "-journal"}) std::filesystem::remove(name + suffix);
    building.RenameTo(file);
  } catch (const std::filesystem::filesystem_error& e) {
    throw HostError(name + " cannot be created: " + e.code().message() + '.');
  }
}

}  // namespace orxdb
