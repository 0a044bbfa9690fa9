#include "platform/framework/NewFile.h"

#include <cerrno>
#include <fcntl.h>
#include <string>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace orxdb {
namespace {

/// The error of waiting for what is open under a name to reach the disk; none after success.
std::error_code Synchronise(const std::filesystem::path& path, int flags) noexcept {
  const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | flags);
  const bool stored = descriptor >= 0 && fsync(descriptor) == 0;
  const std::error_code error =
      stored ? std::error_code() : std::error_code(errno, std::generic_category());
  if (descriptor >= 0) close(descriptor);
  return error;
}

}  // namespace

NewFile::NewFile(std::filesystem::path target)
    : m_target(std::move(target)), m_path(m_target.string() + ".new" + std::to_string(getpid())) {}

NewFile::~NewFile() {
  std::error_code ignored;
  std::filesystem::remove(m_path, ignored);
}

void NewFile::Store() const {
  const std::error_code error = Synchronise(m_path, 0);
  if (error) throw std::filesystem::filesystem_error("fsync", m_path, error);
}

void NewFile::TakeName(bool replace) {
  std::error_code error;
  if (!replace) {
    std::filesystem::create_hard_link(m_path, m_target, error);
    if (!error) return StoreFolder(m_target.parent_path());
    // File systems without such links leave a moment between looking and naming.
    if (error == std::errc::file_exists || std::filesystem::exists(m_target)) {
      error = std::make_error_code(std::errc::file_exists);
      throw std::filesystem::filesystem_error("link", m_target, error);
    }
  }
  std::filesystem::rename(m_path, m_target);
  StoreFolder(m_target.parent_path());
}

void StoreFolder(const std::filesystem::path& folder) noexcept {
  Synchronise(folder.empty() ? "." : folder, O_DIRECTORY);
}

}  // namespace orxdb
