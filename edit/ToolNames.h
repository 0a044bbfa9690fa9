// Names of tools that no other tool of the table has.
#pragma once

#include <string>

#include "database/ToolTableInfo.h"
#include "interface/IOrxDbObj.h"

namespace orxdb {

/// Whether no tool of the table has that `Name`, by the database's comparison of text, as of the
/// cursor's last query. The name stands between apostrophes as it is, so one with an apostrophe
/// raises. The cursor stays on its record; one without a current record ends on the last tool when
/// the name is in use.
bool IsToolNameUnique(const CToolTableInfo& table, const std::string& name);

/// Whether a new tapping head may have that name, as IsToolNameUnique of the component tells; it
/// may when the question fails. If not, the user has been told by a message, which lets the host
/// run: it can end the data object.
bool IsHeadNameFree(BSTR name, IOrxDbObj& own);

/// `name`, or the first of name_1, name_2, ... that is not in use. Asks IsToolNameUnique of the
/// component; ends with the name in hand when that fails.
std::string UniqueToolName(BSTR table, const std::string& name, IOrxDbObj& own);

}  // namespace orxdb
