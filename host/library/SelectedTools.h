// Changes of all tools that meet a condition, each in one group.
#pragma once

#include <functional>
#include <string>

#include "host/library/Answer.h"
#include "host/library/ToolInput.h"

namespace orxdb {

/// Which tools, and how far it goes.
struct Selection {
  std::string where;    ///< a condition; empty for all tools
  bool dryRun = false;  ///< then all is taken back
  /// Is asked before many tools are changed, told how many; throws when they are not to be. No
  /// other program waits meanwhile.
  std::function<void(std::size_t count)> consent;
};

/// Changes properties of all tools that meet the condition, or of none when one cannot be changed,
/// and gives a row for every value that is then another one. Throws HostError.
Answer ChangeTools(ToolDatabase& database, const std::string& table, const Selection& selection,
                   const Assignments& given);

/// Deletes all tools that meet the condition, or none when one stays, and gives their numbers and
/// names. Throws HostError.
Answer DeleteTools(ToolDatabase& database, const std::string& table, const Selection& selection);

}  // namespace orxdb
