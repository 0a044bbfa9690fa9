#pragma once

#include <string_view>

namespace orxdb {

/// What texts of hosts and stored queries may do with a function.
enum class FunctionUse {
  Refused,   ///< not known to be harmless
  PerRow,    ///< a value for each row; min and max may be either
  OverRows,  ///< an aggregate or a window function: what it gives is no record of a table
};

/// The rule for a function of the database engine or of the dialect.
FunctionUse UseOfFunction(std::string_view foldedName) noexcept;

}  // namespace orxdb
