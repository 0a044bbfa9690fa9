// What the component knows of tools beyond what the database tells: names of tables and fields
// that have rules of their own, and units.
#pragma once

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace orxdb {

inline constexpr std::string_view kTappingHeadTable = "TAPPING_HEAD";
inline constexpr std::string_view kDrillFeedTable = "DRILL_FEED";

/// The stored query through which a table is read.
inline std::string StoredQueryOf(std::string_view table) {
  return "Q_" + std::string(table);
}

/// The tables of taps.
constexpr bool IsTapTable(std::string_view table) {
  return table == "TAP" || table == "PIPE_TAP";
}

/// The tables of tools that come in standard diameters.
constexpr bool HasStandardDiameters(std::string_view table) {
  return table == "FLAT_END_MILL" || table == "BALL_END_MILL";
}

/// Fields of taps that follow from their tapping head: never written here, and never a choice.
constexpr bool IsTapOperationField(std::string_view field) {
  constexpr std::array<std::string_view, 4> kFields = {"Approach_Height", "Retraction_Height",
                                                       "Extra_Depth", "Retraction_Ratio"};
  return std::find(kFields.begin(), kFields.end(), field) != kFields.end();
}

/// Whether a field of a tool table is neither written nor exported.
constexpr bool IsUnwrittenField(std::string_view table, std::string_view field) {
  return IsTapTable(table) && IsTapOperationField(field);
}

/// Whether a name has one of these parts, letter case included.
template <std::size_t count>
constexpr bool HasPart(std::string_view name, const std::array<std::string_view, count>& parts) {
  return std::ranges::any_of(
      parts, [name](std::string_view part) { return name.find(part) != name.npos; });
}

/// Whether a property is not meant to be shown.
constexpr bool IsHiddenProperty(std::string_view name) {
  constexpr std::array<std::string_view, 8> kParts = {
      "ID", "AUX_", "Overall_Len", "Exposed_Len", "IsFavorite", "Fit", "Feed", "Speed"};
  return HasPart(name, kParts);
}

/// Whether a field of a tool table travels in exchange files: bookkeeping and cutting data do not,
/// nor what follows from a tap's tapping head.
constexpr bool IsExportedField(std::string_view table, std::string_view field) {
  constexpr std::array<std::string_view, 5> kParts = {"ID", "AUX_", "Feed", "Speed", "IsFavorite"};
  return !HasPart(field, kParts) && !IsUnwrittenField(table, field);
}

/// A length in millimetres; any unit but "mm", letter case included, counts as inches.
constexpr double Millimetres(double length, std::string_view unit) {
  constexpr double kMillimetresInAnInch = 25.4;
  return unit == "mm" ? length : length * kMillimetresInAnInch;
}

/// The criteria for tapping heads that take a tap of that diameter, a number in millimetres; both
/// ends of their ranges are included.
inline std::string HeadsTaking(const std::string& diameter) {
  return "[AUX_Metric_Min_Diameter] <= " + diameter +
         " AND [AUX_Metric_Max_Diameter] >= " + diameter;
}

}  // namespace orxdb
