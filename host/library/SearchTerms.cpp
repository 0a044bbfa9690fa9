#include "host/library/SearchTerms.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>

#include "host/library/HostError.h"
#include "host/library/Lengths.h"
#include "host/library/TextMatch.h"
#include "platform/framework/Text.h"

namespace orxdb {
namespace {

char16_t Small(char16_t c) {
  // Latin letters with accents stand 32 places behind their capitals; × is none.
  const bool capital = (c >= u'A' && c <= u'Z') || (c >= u'À' && c <= u'Þ' && c != u'×');
  return capital ? static_cast<char16_t>(c + 0x20) : c;
}

bool IsDigit(char16_t c) {
  return c >= u'0' && c <= u'9';
}
bool IsInWord(char16_t c) {
  return IsDigit(c) || (c >= u'a' && c <= u'z') || c >= 0xC0;
}

std::optional<Quantity> AsQuantity(const std::string& text) {
  try {
    return ReadQuantity(text);
  } catch (const HostError&) {
    return std::nullopt;
  }
}

SearchTerm SizeOf(const Quantity& quantity) {
  SearchTerm term;
  double number = 0;
  std::from_chars(quantity.number.data(), quantity.number.data() + quantity.number.size(), number);
  if (quantity.unit != Unit::Inch) term.sizes.push_back(number);
  if (quantity.unit != Unit::Millimetre) term.sizes.push_back(number * MillimetresOf(Unit::Inch));
  if (quantity.unit == Unit::None) term.numbers.push_back(number);
  return term;
}

/// Whether the digits around a part of a text belong to the number in it.
bool CutsNumber(std::u16string_view text, std::size_t begin, std::size_t end) {
  const auto at = [text](std::size_t i) { return i < text.size() ? Small(text[i]) : u'\0'; };
  if (IsDigit(at(begin)) && begin > 0) {
    const char16_t before = at(begin - 1);
    const bool joined = before == u'.' || before == u',' || before == u'/' || before == u'-';
    if (IsDigit(before) || (joined && begin > 1 && IsDigit(at(begin - 2)))) return true;
  }
  const char16_t behind = at(end);
  const bool joined = behind == u'.' || behind == u',' || behind == u'/';
  return IsDigit(at(end - 1)) && (IsDigit(behind) || (joined && IsDigit(at(end + 1))));
}

Fit FitAt(std::u16string_view text, std::size_t begin, std::size_t end) {
  if (CutsNumber(text, begin, end)) return 0;
  const bool begins =
      begin == 0 || !IsInWord(Small(text[begin - 1])) || !IsInWord(Small(text[begin]));
  const bool ends =
      end == text.size() || !IsInWord(Small(text[end])) || !IsInWord(Small(text[end - 1]));
  return begins ? (ends ? 3 : 2) : 1;
}

}  // namespace

std::u16string SmallLetters(std::u16string_view text) {
  std::u16string small(text);
  std::ranges::transform(small, small.begin(), Small);
  return small;
}

std::vector<SearchTerm> TermsOf(std::string_view text) {
  const std::vector<std::string> words = WordsOf(text);
  std::vector<SearchTerm> terms;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::u16string word = SmallLetters(Widen(words[i]));
    std::optional<Quantity> quantity = AsQuantity(words[i]);
    const bool bare = quantity && quantity->unit == Unit::None;
    const Unit next = bare && i + 1 < words.size() ? LengthUnitNamed(words[i + 1]) : Unit::None;
    if (next != Unit::None) {
      quantity->unit = next;
      ++i;
    }
    SearchTerm term = quantity ? SizeOf(*quantity) : SearchTerm();
    if (!quantity || quantity->unit == Unit::None) term.words.push_back(word);
    if (!quantity && word.size() > 3 && word.back() == u's') {
      term.words.push_back(word.substr(0, word.size() - 1));
    }
    terms.push_back(std::move(term));
  }
  return terms;
}

Fit FitOf(const SearchTerm& term, std::u16string_view text) {
  Fit best = 0;
  for (const std::u16string& word : term.words) {
    const auto same = [](char16_t written, char16_t small) { return Small(written) == small; };
    for (auto from = text.begin(); from != text.end(); ++from) {
      from = std::search(from, text.end(), word.begin(), word.end(), same);
      if (from == text.end()) break;
      const auto begin = static_cast<std::size_t>(from - text.begin());
      best = std::max(best, FitAt(text, begin, begin + word.size()));
    }
  }
  return best;
}

bool IsAmong(double number, const std::vector<double>& numbers) {
  constexpr double kNearness = 2e-4;  // half a digit of inches with five decimals, in millimetres
  return std::ranges::any_of(
      numbers, [number](double other) { return std::abs(number - other) < kNearness; });
}

}  // namespace orxdb
