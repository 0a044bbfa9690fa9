#pragma once

#include <filesystem>

#include "platform/automation/Types.h"

namespace orxdb {

/// Whether a file is open, in this process or any other of this machine.
enum class FileUse {
  Unused,
  Open,
  Unknown,  ///< the system does not tell: another person's file, or a folder of another machine
};

/// Looks without disturbing anybody, but for this process: whoever has locks on the file here loses
/// them.
AUTOMATION_API FileUse UseOf(const std::filesystem::path& file) noexcept;

}  // namespace orxdb
