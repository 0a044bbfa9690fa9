#pragma once

#include <string>

#include "host/library/ToolDatabase.h"

namespace orxdb {

/// The properties of a tool as the database fills them in. Tools are added to find out and deleted
/// again; their numbers are used up. Throws HostError, which says what hinders.
ToolProperties DefaultsOfNewTool(ToolDatabase& database, const std::string& table);

}  // namespace orxdb
