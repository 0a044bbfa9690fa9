// What messages say beside what went wrong: why, and what helps.
#pragma once

#include <string>
#include <vector>

#include "host/library/ToolDatabase.h"

namespace orxdb {

/// Why the last call of the component failed or left something undone and what helps, in sentences
/// behind a blank; empty when it did all.
std::string Cause(const ToolDatabase& database);

/// Such a cause of a condition or an order that somebody wrote, with what helps it, by the
/// properties that there are.
std::string CauseOf(const std::string& criteria, std::string cause,
                    const std::vector<Property>& properties);

/// The names most like one that is not there, as a sentence behind a blank.
std::string Nearest(const std::string& name, const std::vector<std::string>& names);

/// What helps a text that is no number for its decimal comma, behind a colon; empty for others.
std::string CommaHint(const std::string& text);

}  // namespace orxdb
