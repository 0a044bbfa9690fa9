// Whether names of tools are in use.
#pragma once

#include <string>

#include "database/ToolTableInfo.h"

namespace orxdb {

/// Whether no tool of the table has that `Name`, by the database's comparison of text, as of the
/// cursor's last query. The name stands between apostrophes as it is, so one with an apostrophe
/// raises. The cursor stays on its record; one without a current record ends on the last tool when
/// the name is in use.
bool IsToolNameUnique(const CToolTableInfo& table, const std::string& name);

}  // namespace orxdb
