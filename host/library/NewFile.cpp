#include "host/library/NewFile.h"

#include <cerrno>
#include <fcntl.h>
#include <string>
#include <unistd.h>

#include "host/library/HostError.h"

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

  /// Waits until all of the file is on the disk.
  void Store() const {
    const int descriptor = open(m_path.c_str(), O_RDONLY | O_CLOEXEC);
    const bool stored = descriptor >= 0 && fsync(descriptor) == 0;
    const std::error_code reason(errno, std::generic_category());
    if (descriptor >= 0) close(descriptor);
    if (!stored) throw std::filesystem::filesystem_error("fsync", m_path, reason);
  }

 private:
  std::filesystem::path m_path;
};

}  // namespace

void WriteNewFile(const std::filesystem::path& target, bool replace, const char* loss,
                  const std::function<void(const std::filesystem::path&)>& write,
                  const std::function<void()>& beforeNaming) {
  const std::string name = target.string();
  std::error_code error;
  if (std::filesystem::is_directory(target, error)) throw HostError(name + " is a folder.");
  if (std::filesystem::exists(target, error)) {
    if (!std::filesystem::is_regular_file(target, error)) throw HostError(name + " is no file.");
    if (!replace) throw HostError(name + " is there already; --force replaces it" + loss + '.');
  }
  try {
    const NewFile building(target);
    write(building.Path());
    building.Store();
    beforeNaming();
    std::filesystem::rename(building.Path(), target);
  } catch (const std::filesystem::filesystem_error& e) {
    throw HostError(name + " cannot be created: " + e.code().message() + '.');
  }
}

}  // namespace orxdb
