#include "host/DatabaseFile.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <string_view>
#include <unistd.h>

#include "platform/framework/ExecutablePath.h"

namespace orxdb {
namespace {

constexpr std::string_view kMagic("SQLite format 3\0", 16);

/// An open file, for reading.
class File {
 public:
  explicit File(const std::filesystem::path& path)
      : m_descriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC)) {}
  ~File() {
    if (m_descriptor >= 0) close(m_descriptor);
  }
  File(const File&) = delete;
  File& operator=(const File&) = delete;

  bool IsOpen() const { return m_descriptor >= 0; }

  bool StartsWith(std::string_view bytes) const {
    std::string start(bytes.size(), '\0');
    return pread(m_descriptor, start.data(), start.size(), 0) ==
               static_cast<ssize_t>(start.size()) &&
           start == bytes;
  }

  /// Whether another process holds the bytes that the database engine locks for writing.
  bool IsLocked() const {
    struct flock range = {};
    range.l_type = F_RDLCK;
    range.l_whence = SEEK_SET;
    range.l_start = 0x40000000;
    range.l_len = 512;
    return fcntl(m_descriptor, F_GETLK, &range) == 0 && range.l_type != F_UNLCK;
  }

 private:
  int m_descriptor;
};

}  // namespace

std::filesystem::path ProgramFolder() {
  return std::filesystem::path(NativePath(ExecutablePath())).parent_path();
}

std::filesystem::path DefaultDatabase() {
  return ProgramFolder().parent_path() / "CAM" / "TOOLS" / "tools.mdb";
}

std::string WhyUnusable(const std::filesystem::path& path) {
  std::error_code error;
  const std::string name = path.string();
  const auto status = std::filesystem::status(path, error);
  if (status.type() == std::filesystem::file_type::not_found) {
    return "There is no tool database " + name + ". `orxdb create " + name + "` makes one.";
  }
  if (std::filesystem::is_directory(status)) return name + " is a folder, not a tool database.";
  const File file(path);
  if (!file.IsOpen()) return name + " cannot be read: " + std::strerror(errno) + '.';
  if (std::filesystem::file_size(path, error) == 0) return name + " is empty, not a tool database.";
  if (!file.StartsWith(kMagic)) return name + " is not a database.";
  if (file.IsLocked()) return name + " is in use by another program; try again later.";
  return name + " is a database without a readable catalogue of tools (the query TOOL_TYPES).";
}

}  // namespace orxdb
