#pragma once

#include <sqlite3.h>
#include <string_view>

namespace orxdb {

/// Registers the SQL functions that translated texts call: those of the dialect that SQLite lacks
/// or defines otherwise. Their names begin with `orx_`; all are deterministic and give null for a
/// null argument.
void RegisterDialectFunctions(sqlite3* database);

bool IsDialectFunction(std::string_view foldedName) noexcept;

/// LIKE of the dialect: `*` any run, `?` any character, `#` a digit, `[list]` and `[!list]` one
/// character of (or not of) a list with ranges; letters A to Z match in either case. A bracket
/// that is never closed matches nothing. Characters are those of UTF-8.
bool MatchesPattern(std::string_view pattern, std::string_view text);

}  // namespace orxdb
