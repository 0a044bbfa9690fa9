// Words that people look for, in texts.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orxdb {

/// The parts of a text between blanks, with their ASCII letters small.
std::vector<std::string> WordsOf(std::string_view text);

/// Whether the text has the word in it, both with small letters. With ? for any character or * for
/// any text in it, the word begins where one of the text begins and ends where one ends.
bool HasWord(std::string_view text, std::string_view word);

}  // namespace orxdb
