// Adding, changing and deleting tools. The component passes over what a field does not take, and
// its results tell little; so tools are read back, and what is not as it was given is told.
#pragma once

#include <string>
#include <vector>

#include "host/library/Answer.h"
#include "host/library/ToolInput.h"

namespace orxdb {

/// Adds the tools, all or none, and gives their names and numbers. A tool without a name gets its
/// default one; a number that is given is not used. Throws HostError.
Answer AddTools(ToolDatabase& database, const std::string& table, std::vector<Assignments> tools);

/// Changes properties of the tool, which must be there, and gives them as they then are, in one
/// row. Throws HostError.
Answer ChangeTool(ToolDatabase& database, const std::string& table, LONG id,
                  const Assignments& given);

/// Deletes the tools and gives the numbers of those that are gone. Throws HostError.
Answer DeleteTools(ToolDatabase& database, const std::string& table, const std::vector<LONG>& ids);

}  // namespace orxdb
