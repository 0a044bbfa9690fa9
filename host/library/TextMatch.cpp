#include "host/library/TextMatch.h"

#include "platform/automation/Ascii.h"
#include "platform/framework/LetterCase.h"

namespace orxdb {
namespace {

/// Letters and digits, and all that is not ASCII.
bool IsInWord(char c) {
  return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') ||
         (static_cast<unsigned char>(c) & 0x80U);
}

/// Whether the byte goes on with a character of several bytes.
bool IsContinuation(char c) {
  return (static_cast<unsigned char>(c) & 0xc0U) == 0x80U;
}

/// Whether the text begins with the pattern and then a word of it ends.
bool Begins(std::string_view text, std::string_view pattern) {
  // Where to go on when the text behind the last * turns out not to fit.
  std::size_t star = pattern.npos;
  std::size_t behindStar = 0;
  std::size_t at = 0;
  std::size_t next = 0;
  const auto wordEnds = [&] {
    return at == text.size() || at == 0 || !IsInWord(text[at]) || !IsInWord(text[at - 1]);
  };
  while (next < pattern.size() || !wordEnds()) {
    if (next < pattern.size() && pattern[next] == '*') {
      star = next++;
      behindStar = at;
    } else if (next < pattern.size() && at < text.size() &&
               (pattern[next] == '?' || pattern[next] == text[at])) {
      ++at;
      const bool any = pattern[next++] == '?';
      while (any && at < text.size() && IsContinuation(text[at])) ++at;
    } else if (star != pattern.npos && behindStar < text.size()) {
      next = star + 1;
      at = ++behindStar;
    } else {
      return false;
    }
  }
  return true;
}

}  // namespace

std::vector<std::string> WordsOf(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r\n";
  std::vector<std::string> words;
  while (!(text = Trim(text, kBlanks)).empty()) {
    const std::size_t end = std::min(text.find_first_of(kBlanks), text.size());
    words.push_back(FoldLetters(text.substr(0, end)));
    text.remove_prefix(end);
  }
  return words;
}

bool HasWord(std::string_view text, std::string_view word) {
  if (word.find_first_of("*?") == word.npos) return text.find(word) != text.npos;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool wordBegins = i == 0 || !IsInWord(text[i - 1]) || !IsInWord(text[i]);
    if (wordBegins && Begins(text.substr(i), word)) return true;
  }
  return false;
}

}  // namespace orxdb
