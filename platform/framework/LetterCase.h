// Letters of all alphabets without regard to case, by Unicode's simple case folding: each character
// stands for one character, so ß is not ss, and accents count. The same for everybody, whatever the
// locale. Letters A to Z are the same as their small ones and as nothing else.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/automation/Types.h"

namespace orxdb {

/// A character of a UTF-8 text, and where the next one begins. A byte that is part of no character
/// is one by itself, unlike any other, with a code behind those of all characters.
struct TextCharacter {
  char32_t code = 0;
  std::size_t next = 0;
};

/// The character that begins at a place of a text, which is not its end.
AUTOMATION_API TextCharacter CharacterAt(std::string_view text, std::size_t at) noexcept;

/// The character in place of which all that differ in case alone are compared.
AUTOMATION_API char32_t FoldLetter(char32_t code) noexcept;

/// All characters that fold to the same as this one, itself among them.
AUTOMATION_API std::vector<char32_t> LettersLike(char32_t code);

/// The text with each character folded. Stray bytes stay.
AUTOMATION_API std::string FoldLetters(std::string_view text);

/// The bytes of a character.
AUTOMATION_API std::string Utf8Of(char32_t code);

/// The order of two texts by the codes of their folded characters: less than 0, 0 or more.
AUTOMATION_API int CompareLetters(std::string_view a, std::string_view b) noexcept;

}  // namespace orxdb
