// Tables and fields that have rules of their own.
#pragma once

#include <algorithm>
#include <array>
#include <string_view>

namespace orxdb {

inline constexpr std::string_view kTappingHeadTable = "TAPPING_HEAD";

/// The tables of taps.
constexpr bool IsTapTable(std::string_view table) {
  return table == "TAP" || table == "PIPE_TAP";
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

}  // namespace orxdb
