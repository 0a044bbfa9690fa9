#include "lookups/FeedTables.h"

#include <cmath>

#include "values/ValueText.h"

namespace orxdb {
namespace {

std::string Number(double value) {
  return DoubleToString(value, 6);
}

/// Criteria for the three steps in which a range is chosen.
struct RangeCriteria {
  std::string holding;
  std::string above;
  std::string below;
};

PropertyArrays FindRange(CDaoRecordset& table, const RangeCriteria& criteria) {
  const bool found = table.FindFirst(criteria.holding) || table.FindFirst(criteria.above) ||
                     table.FindLast(criteria.below);
  return found ? ReadRecord(table) : PropertyArrays();
}

/// The current row as both neighbours.
FactorRows SingleRow(const CDaoRecordset& table) {
  Variant values = FieldValues(table);
  Variant copy = values.Copy();
  return {.names = FieldNames(table), .lower = std::move(values), .upper = std::move(copy)};
}

}  // namespace

PropertyArrays HardnessRow(CDaoRecordset& table, const std::string& material, double hardness) {
  const std::string number = Number(std::floor(hardness));
  const std::string ofMaterial = " AND [Material] = '" + material + "'";
  return FindRange(table,
                   {.holding = "[MinHB] <= " + number + " AND [MaxHB] >= " + number + ofMaterial,
                    .above = "[MinHB] > " + number + ofMaterial,
                    .below = "[MaxHB] < " + number + ofMaterial});
}

PropertyArrays DrillFeedRow(CDaoRecordset& table, double diameter) {
  const std::string number = Number(diameter);
  return FindRange(table, {.holding = "MinDiameter <= " + number + " AND MaxDiameter >= " + number,
                           .above = "MinDiameter > " + number,
                           .below = "MaxDiameter < " + number});
}

FactorRows FactorNeighbours(CDaoRecordset& table, double value) {
  CDaoFieldInfo key;
  table.GetFieldInfo(1, key);
  const std::string column = "[" + key.m_strName + "]";
  const std::string number = Number(value);
  if (table.FindFirst(column + " = " + number)) return SingleRow(table);
  if (!table.FindFirst(column + " > " + number)) {
    table.MoveLast();
    return SingleRow(table);
  }
  const Variant upper = table.GetBookmark();
  if (!table.FindLast(column + " < " + number)) {
    table.MoveFirst();
    return SingleRow(table);
  }
  FactorRows rows{.names = FieldNames(table), .lower = FieldValues(table), .upper = {}};
  table.SetBookmark(upper.get());
  rows.upper = FieldValues(table);
  return rows;
}

}  // namespace orxdb
