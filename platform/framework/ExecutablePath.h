// Where the host's program is, and paths with either separator.
#pragma once

#include <string>
#include <string_view>

#include "platform/automation/Types.h"

namespace orxdb {

/// Full path of the host process's program with backslashes between folders
/// (`\opt\cam\bin\host`), as path rules of components expect it. Empty when the system does not
/// tell. It may be longer than the 260 characters that such rules allow for; cutting is theirs.
AUTOMATION_API std::string ExecutablePath();

/// The same path with `/` between folders, to open files with. A file whose name really holds a
/// backslash cannot be named this way.
AUTOMATION_API std::string NativePath(std::string_view path);

}  // namespace orxdb
