// Copies of a library for bad days.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

#include "host/library/Answer.h"

namespace orxdb {

/// Copies a library to a file while others work with it. Throws HostError, also when there is such
/// a file already, unless it may be replaced.
Answer BackUpTo(const std::string& library, const std::filesystem::path& file, bool replace);

/// Copies a library to a file of a folder that is named after it and the time, and then removes the
/// oldest files of such names but for `keep`. Throws HostError; no file is removed then unless the
/// new one stands.
Answer BackUpInto(const std::string& library, const std::filesystem::path& folder,
                  std::size_t keep);

/// Puts a copy of a backup, or of any library, in the place of a library, which is kept beside it
/// under another name. Throws HostError, also when somebody has the library open and, unless the
/// person is `certain`, when nobody can tell.
Answer Restore(const std::string& library, const std::filesystem::path& backup, bool certain);

}  // namespace orxdb
