// Rows of the machining-data tables. Rows are chosen by their position: the tables' stored queries
// give them in ascending order of the column that is searched. Each look-up leaves the table's
// recordset on the row that it chose. Numbers are compared as written with six decimals.
#pragma once

#include <string>

#include "browse/PropertyArrays.h"

namespace orxdb {

/// The row for a material and a Brinell hardness, rounded down: the first whose range holds it,
/// else the first range above, else the last one below. Empty arrays for a material without rows.
/// Raises for a material with an apostrophe.
PropertyArrays HardnessRow(CDaoRecordset& table, const std::string& material, double hardness);

/// The row for a drill diameter in the table's unit, chosen likewise, without rounding.
PropertyArrays DrillFeedRow(CDaoRecordset& table, double diameter);

/// The rows around a value of a factor table.
struct FactorRows {
  Variant names;
  Variant lower;
  Variant upper;  ///< the same row as `lower` for an exact hit and beyond either end
};

/// The neighbours of a value in a table's second field. Raises for an empty table.
FactorRows FactorNeighbours(CDaoRecordset& table, double value);

}  // namespace orxdb
