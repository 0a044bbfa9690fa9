// The properties of single tools. All throw HostError.
#pragma once

#include <string>
#include <vector>

#include "host/library/Answer.h"
#include "host/library/ToolInput.h"

namespace orxdb {

/// The tool of that number, which must be there, in one row; hidden properties on demand.
Answer ShowTool(ToolDatabase& database, const std::string& table, LONG id, bool hidden);

/// The properties that a new tool starts with, in one row, but for its name and number.
Answer ShowDefaults(ToolDatabase& database, const std::string& table, bool hidden);

/// The default name of a stored tool, which must be there.
Answer NameOf(ToolDatabase& database, const std::string& table, LONG id);
/// The default names that tools of such properties would get.
Answer NamesOf(ToolDatabase& database, const std::string& table,
               const std::vector<Assignments>& tools);

/// The properties that tools of the table have, a row for each.
Answer ListFields(ToolDatabase& database, const std::string& table);

}  // namespace orxdb
