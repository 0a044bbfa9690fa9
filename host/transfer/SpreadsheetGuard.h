// Texts that a spreadsheet would run as formulas.
#pragma once

#include <string>
#include <string_view>

namespace orxdb {

/// The text, behind an apostrophe if a spreadsheet would run it or if it looks like a guarded one.
std::string Guarded(std::string_view text);
/// Takes back what Guarded does; other texts stay as they are.
std::string Unguarded(std::string_view text);

}  // namespace orxdb
