// What people look for: words, numbers and sizes, and how well a text or a number is like them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orxdb {

/// How well something fits; 0 for not at all.
using Fit = int;

/// One thing that is looked for.
struct SearchTerm {
  std::vector<std::u16string> words;  ///< spellings, with small letters
  std::vector<double> sizes;          ///< millimetres: one, or two where no unit was written
  std::vector<double> numbers;        ///< the number without a unit
};

/// The terms of a text such as "6 mm carbide", "1/4 end mill", "M5 tap".
std::vector<SearchTerm> TermsOf(std::string_view text);

/// The text with small letters, those of western languages among them.
std::u16string SmallLetters(std::u16string_view text);

/// How well the text holds one of the words: as a word of its own, the beginning of one, or a part.
/// A number is never a part of another: M5 is not in M50, nor 4 in 1/4.
Fit FitOf(const SearchTerm& term, std::u16string_view text);

/// Whether a number, or a size in millimetres, is among those; of decimals of an inch as printed.
bool IsAmong(double number, const std::vector<double>& numbers);

}  // namespace orxdb
