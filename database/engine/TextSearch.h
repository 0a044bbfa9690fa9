#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orxdb {

// Searches in UTF-8 texts. All but patterns take linear time.

/// LIKE of the dialect: `*` any run, `?` any character, `#` a digit, `[list]` and `[!list]` one
/// character of (or not of) a list with ranges; letters of all alphabets match in either case. A
/// bracket that is never closed matches nothing. Raises `Engine` for a search whose steps have
/// nothing to do with the length of the texts any more.
bool MatchesPattern(std::string_view pattern, std::string_view text);

/// The place of the first `part` that begins at or behind the character `start`, in characters
/// from 1; 0 for none.
std::int64_t PlaceOf(std::string_view part, std::string_view text, std::int64_t start = 1);

/// The index of the first byte of `part` in the text; `npos` for none.
std::size_t FirstOf(std::string_view part, std::string_view text);

/// The text with `other` in place of each `part`; nothing when it becomes longer than `most`.
std::optional<std::string> Replaced(std::string_view text, std::string_view part,
                                    std::string_view other, std::size_t most);

/// The text without the characters of `set` at its beginning, at its end or at both.
std::string_view TrimmedOf(std::string_view text, std::string_view set, bool left, bool right);

}  // namespace orxdb
