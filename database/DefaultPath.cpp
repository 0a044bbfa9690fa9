#include "database/DefaultPath.h"

namespace orxdb {

std::string DefaultDatabasePath(std::string programPath) {
  constexpr std::size_t longestPath = 259;
  if (programPath.size() > longestPath) programPath.resize(longestPath);
  // "...\Bin\host.exe" to "...\Bin", then to "...\".
  if (const auto slash = programPath.rfind('\\'); slash != programPath.npos) {
    programPath.erase(slash);
  }
  if (const auto slash = programPath.rfind('\\'); slash != programPath.npos) {
    programPath.erase(slash + 1);
  }
  return programPath + "CAM\\TOOLS\\tools.mdb";
}

}  // namespace orxdb
