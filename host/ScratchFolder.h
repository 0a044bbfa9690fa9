#pragma once

#include <filesystem>

namespace orxdb {

/// A new, empty folder for temporary files, removed with all that it holds. Throws HostError.
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
