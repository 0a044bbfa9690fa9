#pragma once

#include <string>

#include "platform/automation/Types.h"

namespace orxdb {

/// The folder for a person's own data files: XDG_DATA_HOME, or ~/.local/share. Empty when the
/// environment names none.
AUTOMATION_API std::string OwnDataFolder();

}  // namespace orxdb
