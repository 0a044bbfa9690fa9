// Looking for tools of all kinds at once.
#pragma once

#include <string>

#include "host/library/Answer.h"
#include "host/library/ToolDatabase.h"

namespace orxdb {

struct SearchOptions {
  std::string type;         ///< a table, or words of a kind's names; empty for all kinds
  std::size_t limit = 100;  ///< how many of the best are given
};

/// The tools to which all words, numbers and sizes of the text belong, best first: their kind,
/// their texts or their numbers. A size is in millimetres or inches; without a unit in either. The
/// memory that it takes does not grow with the number of tools. Throws HostError, also when there
/// is none.
Answer FindTools(ToolDatabase& database, const std::string& text, const SearchOptions& options);

}  // namespace orxdb
