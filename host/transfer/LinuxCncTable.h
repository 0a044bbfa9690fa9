#pragma once

#include <string_view>

namespace orxdb {

/// Whether the text begins like a tool table: "T1 P1 D0.125", or the older heading of columns.
bool IsLinuxCncTable(std::string_view text);

}  // namespace orxdb
