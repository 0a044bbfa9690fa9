#pragma once

#include <filesystem>

namespace orxdb {

/// A new, empty folder for temporary files, removed with all that it holds, also when the program
/// is interrupted (not when it is killed). One at a time, for a tools.mdb or a tools.txt. Throws
/// HostError.
class ScratchFolder {
 public:
  ScratchFolder();
  ~ScratchFolder();
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  std::filesystem::path operator/(const char* name) const { return m_path / name; }

 private:
  std::filesystem::path m_path;
};

}  // namespace orxdb
