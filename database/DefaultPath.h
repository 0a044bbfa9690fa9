#pragma once

#include <string>

namespace orxdb {

/// The default database for a host program: CAM\TOOLS\tools.mdb under the parent of the program's
/// folder. `programPath` separates with backslashes, and at most its first 259 characters count. A
/// path without folders to leave is kept as far as it goes.
std::string DefaultDatabasePath(std::string programPath);

}  // namespace orxdb
