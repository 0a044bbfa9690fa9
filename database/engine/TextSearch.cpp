#include "database/engine/TextSearch.h"

#include <algorithm>
#include <vector>

#include "platform/framework/DaoException.h"
#include "platform/framework/LetterCase.h"

namespace orxdb {
namespace {

/// Counts the steps of one call. Searches may go back over their text again and again, and nothing
/// can stop a function from outside: so a call whose steps have little to do with the length of its
/// arguments any more gives up. Ordinary searches need a step or two for each character.
class Work {
 public:
  explicit Work(std::size_t length) : m_left(16 * length + 1'000'000) {}

  void Do(std::size_t steps = 1) {
    if (steps > m_left) {
      throw CDaoException(DaoError::Engine, "A search in a text takes too many steps");
    }
    m_left -= steps;
  }

 private:
  std::size_t m_left;
};

// --- Patterns

/// The character at a place, in the case in which characters are compared.
TextCharacter FoldedAt(std::string_view text, std::size_t at) {
  const auto byte = static_cast<unsigned char>(text[at]);
  if (byte < 0x80) return {byte >= 'A' && byte <= 'Z' ? byte + 32U : byte, at + 1};
  const TextCharacter character = CharacterAt(text, at);
  return {FoldLetter(character.code), character.next};
}

/// One pattern element other than `*`: whether it takes the character, and where the next begins.
struct Element {
  bool matches = false;
  std::size_t next = 0;
};

Element MatchList(std::string_view pattern, std::size_t at, char32_t code, Work& work) {
  std::size_t i = at + 1;
  const bool negated = i < pattern.size() && pattern[i] == '!';
  if (negated) ++i;
  const std::size_t close = std::min(pattern.find(']', i), pattern.size());
  work.Do(close - at);
  if (close == pattern.size()) return {false, close};
  bool member = false;
  while (i < close) {
    const TextCharacter low = FoldedAt(pattern, i);
    TextCharacter high = low;
    if (low.next + 1 < close && pattern[low.next] == '-') high = FoldedAt(pattern, low.next + 1);
    member = member || (code >= low.code && code <= high.code);
    i = high.next;
  }
  return {member != negated, close + 1};
}

Element MatchElement(std::string_view pattern, std::size_t at, char32_t code, Work& work) {
  switch (pattern[at]) {
    case '?':
      return {true, at + 1};
    case '#':
      return {code >= '0' && code <= '9', at + 1};
    case '[':
      return MatchList(pattern, at, code, work);
    default: {
      const TextCharacter literal = FoldedAt(pattern, at);
      return {literal.code == code, literal.next};
    }
  }
}

}  // namespace

bool MatchesPattern(std::string_view pattern, std::string_view text) {
  Work work(pattern.size() + text.size());
  // Going back to the last star only is enough: an earlier star could take no less.
  std::size_t p = 0;
  std::size_t t = 0;
  std::size_t starPattern = std::string_view::npos;
  std::size_t starText = 0;
  while (t < text.size()) {
    work.Do();
    if (p < pattern.size() && pattern[p] == '*') {
      starPattern = ++p;
      starText = t;
      continue;
    }
    const TextCharacter character = FoldedAt(text, t);
    if (p < pattern.size()) {
      const Element element = MatchElement(pattern, p, character.code, work);
      if (element.matches) {
        p = element.next;
        t = character.next;
        continue;
      }
    }
    if (starPattern == std::string_view::npos) return false;
    p = starPattern;
    t = starText = CharacterAt(text, starText).next;
  }
  while (p < pattern.size() && pattern[p] == '*') ++p;
  return p == pattern.size();
}

// --- Parts

namespace {

/// Finds every place of a part, one byte of the text after the other (Knuth, Morris and Pratt).
class PartFinder {
 public:
  explicit PartFinder(std::string_view part) : m_part(part), m_shorter(part.size() + 1) {
    std::size_t known = 0;
    for (std::size_t i = 1; i < part.size(); ++i) {
      while (known > 0 && part[i] != part[known]) known = m_shorter[known];
      if (part[i] == part[known]) ++known;
      m_shorter[i + 1] = static_cast<std::uint32_t>(known);
    }
  }

  /// Whether the part, which is not empty, ends with this next byte of the text.
  bool EndsWith(char next) {
    if (m_known == m_part.size()) m_known = m_shorter[m_known];
    while (m_known > 0 && next != m_part[m_known]) m_known = m_shorter[m_known];
    if (next == m_part[m_known]) ++m_known;
    return m_known == m_part.size();
  }
  /// Forgets the text so far.
  void Restart() { m_known = 0; }

 private:
  std::string_view m_part;
  std::vector<std::uint32_t> m_shorter;  ///< by length of a match: that of the next shorter one
  std::size_t m_known = 0;
};

/// Whether a character begins with this byte of a text, a stray byte taken for part of one.
bool Begins(char byte) {
  return (static_cast<unsigned char>(byte) & 0xc0U) != 0x80U;
}

std::size_t Behind(std::string_view text, std::size_t at) {
  for (++at; at < text.size() && !Begins(text[at]);) ++at;
  return at;
}

}  // namespace

std::int64_t PlaceOf(std::string_view part, std::string_view text, std::int64_t start) {
  std::size_t at = 0;
  std::int64_t place = 1;
  for (; place < start; ++place) {
    if (at >= text.size()) return 0;
    at = Behind(text, at);
  }
  if (part.empty()) return place;
  if (part.size() > text.size()) return 0;
  PartFinder finder(part);
  for (std::size_t end = at; end < text.size(); ++end) {
    if (!finder.EndsWith(text[end])) continue;
    const std::size_t begin = end + 1 - part.size();
    for (; at < begin; ++place) at = Behind(text, at);
    if (at == begin) return place;  // and not amid a character
  }
  return 0;
}

std::size_t FirstOf(std::string_view part, std::string_view text) {
  if (part.empty()) return 0;
  if (part.size() > text.size()) return std::string_view::npos;
  PartFinder finder(part);
  for (std::size_t end = 0; end < text.size(); ++end) {
    if (finder.EndsWith(text[end])) return end + 1 - part.size();
  }
  return std::string_view::npos;
}

std::optional<std::string> Replaced(std::string_view text, std::string_view part,
                                    std::string_view other, std::size_t most) {
  if (part.empty() || part.size() > text.size()) return std::string(text);
  PartFinder finder(part);
  std::string replaced;
  std::size_t copied = 0;
  for (std::size_t end = 0; end < text.size(); ++end) {
    if (!finder.EndsWith(text[end])) continue;
    finder.Restart();
    replaced += text.substr(copied, end + 1 - part.size() - copied);
    replaced += other;
    copied = end + 1;
    if (replaced.size() > most) return std::nullopt;
  }
  replaced += text.substr(copied);
  return replaced;
}

std::string_view TrimmedOf(std::string_view text, std::string_view set, bool left, bool right) {
  std::vector<std::string_view> characters;
  for (std::size_t at = 0; at < set.size();) {
    const std::size_t next = Behind(set, at);
    characters.push_back(set.substr(at, next - at));
    at = next;
  }
  std::sort(characters.begin(), characters.end());
  const auto listed = [&](std::string_view character) {
    return std::binary_search(characters.begin(), characters.end(), character);
  };
  while (left && !text.empty()) {
    const std::size_t next = Behind(text, 0);
    if (!listed(text.substr(0, next))) break;
    text.remove_prefix(next);
  }
  while (right && !text.empty()) {
    std::size_t last = text.size() - 1;
    while (last > 0 && !Begins(text[last])) --last;
    if (!listed(text.substr(last))) break;
    text.remove_suffix(text.size() - last);
  }
  return text;
}

}  // namespace orxdb
