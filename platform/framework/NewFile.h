#pragma once

#include <filesystem>

#include "platform/automation/Types.h"

namespace orxdb {

/// A file that is there whole or not at all: it is made under a name of its own in the folder of
/// its target, and removed again unless it took the target's name. Only a process that is killed
/// leaves it. Operations throw std::filesystem::filesystem_error.
class AUTOMATION_API NewFile {
 public:
  explicit NewFile(std::filesystem::path target);
  ~NewFile();
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;

  /// Where the file is to be made.
  const std::filesystem::path& Path() const noexcept { return m_path; }

  /// Waits until all of the file is on the disk.
  void Store() const;
  /// Gives the stored file the name of its target; fails with std::errc::file_exists when there is
  /// such a file already, unless it may be replaced.
  void TakeName(bool replace);

 private:
  std::filesystem::path m_target;
  std::filesystem::path m_path;
};

/// Waits until the names in a folder are on the disk, where the system can do that.
AUTOMATION_API void StoreFolder(const std::filesystem::path& folder) noexcept;

}  // namespace orxdb
