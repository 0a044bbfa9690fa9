// Names of tools: which tables have rules for them, and whether one is in use.
#pragma once

#include <string>
#include <string_view>

#include "database/ToolTableInfo.h"

namespace orxdb {

inline constexpr std::string_view kTappingHeadTable = "TAPPING_HEAD";

/// The tables of taps, which have rules of their own.
constexpr bool IsTapTable(std::string_view table) {
  return table == "TAP" || table == "PIPE_TAP";
}

/// Whether no tool of the table has that `Name`, by the database's comparison of text, as of the
/// cursor's last query. The name stands between apostrophes as it is, so one with an apostrophe
/// raises. The cursor stays on its record; one without a current record ends on the last tool when
/// the name is in use.
bool IsToolNameUnique(const CToolTableInfo& table, const std::string& name);

}  // namespace orxdb
