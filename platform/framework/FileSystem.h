#pragma once

#include <filesystem>
#include <string>

#include "platform/automation/Types.h"

namespace orxdb {

/// Where a file is kept.
struct FileSystem {
  std::string type;       ///< as the system names it, such as "ext4" or "nfs4"; empty if unknown
  bool network = false;   ///< other machines may use the file, unseen by this one
  bool readOnly = false;  ///< nothing can be written there by this machine
};

/// The file system of a file, or of its folder when there is no such file yet. `mounts` is the
/// system's list of file systems, as Linux writes it.
AUTOMATION_API FileSystem FileSystemOf(const std::filesystem::path& file,
                                       const char* mounts = "/proc/self/mountinfo");

}  // namespace orxdb
