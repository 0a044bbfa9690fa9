// The machining-data tables; tables are named in any letter case. All throw HostError, also when
// nothing is found.
#pragma once

#include <string>

#include "host/library/Answer.h"
#include "host/library/ToolDatabase.h"

namespace orxdb {

/// The row for a material, or the group of a stock material, and its Brinell hardness.
Answer FeedsFor(ToolDatabase& database, const std::string& table, const std::string& material,
                double hardness);

/// The feed for a drill, its diameter in the unit of the table.
Answer DrillFeedFor(ToolDatabase& database, double diameter);

/// The rows around a value of the second column, then one between them; the first column tells
/// which is which.
Answer FactorsFor(ToolDatabase& database, const std::string& table, double value);

}  // namespace orxdb
