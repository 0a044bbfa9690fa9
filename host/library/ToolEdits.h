// Adding, changing and deleting tools. The component passes over what a field does not take, and
// its results tell little; so tools are read back, and what is not as it was given is told.
#pragma once

#include <string>
#include <vector>

#include "host/library/Answer.h"
#include "host/library/ToolInput.h"

namespace orxdb {

/// Adds the tools, all or none in one group of changes, and gives their names and numbers. A tool
/// without a name gets its default one; a number that is given is not used. Throws HostError.
Answer AddTools(ToolDatabase& database, const std::string& table, std::vector<Assignments> tools);

/// Adds a tool with the properties of another, but for those that are given, and gives its name and
/// number; without a name it is called a copy. Throws HostError.
Answer CopyTool(ToolDatabase& database, const std::string& table, LONG id,
                const Assignments& given);

/// Changes properties of the tool, which must be there, and gives them as they then are, in one
/// row. A dry run takes the changes back. Throws HostError.
Answer ChangeTool(ToolDatabase& database, const std::string& table, LONG id,
                  const Assignments& given, bool dryRun);

/// The same in a group of changes that is open; what is not written fails.
Answer ChangeToolInGroup(ToolDatabase& database, const std::string& table, LONG id,
                         const Assignments& given);

/// Deletes the tool in a group of changes that is open. Throws HostError when it stays.
void DeleteToolInGroup(ToolDatabase& database, const std::string& table, LONG id);

/// Deletes the tools in one group of changes and gives the numbers of those that are gone, for a
/// dry run those that would be. Throws HostError.
Answer DeleteTools(ToolDatabase& database, const std::string& table, const std::vector<LONG>& ids,
                   bool dryRun);

}  // namespace orxdb
