// The list texts of the catalogue.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orxdb {

/// Splits a text into tokens. "^" and ";" end a token; "{" and "}" end one and are tokens
/// themselves; tokens that are ended may be empty, a last one without an end is left out when it
/// is empty. False, with no tokens, for an empty text.
bool ParseList(std::string_view text, std::vector<std::string>& tokens);

/// The search parameters of a tool table: the first token of each line that has one.
///
/// Lines end with a line feed, and the character before it is taken for a carriage return without
/// a look at it; the last line needs no end, and keeps a carriage return.
std::vector<std::string> ParseSearchParams(std::string_view text);

}  // namespace orxdb
