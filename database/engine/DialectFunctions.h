#pragma once

#include <string_view>

struct sqlite3;

namespace orxdb {

/// Registers the SQL functions that translated texts call: those of the dialect that SQLite lacks
/// or defines otherwise. Their names begin with `orx_`; all are deterministic and give null for a
/// null argument. Those of SQLite that search in texts are replaced, so that no call takes time out
/// of proportion to the length of its arguments; a pattern that would makes the call fail.
void RegisterDialectFunctions(sqlite3* database);

bool IsDialectFunction(std::string_view foldedName) noexcept;

}  // namespace orxdb
