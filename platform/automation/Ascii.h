// ASCII text, narrow and wide. Other characters are left alone, whatever the process locale.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <type_traits>

namespace orxdb {

/// The small letter of a capital one, any other character itself.
inline constexpr auto LowerAscii = []<typename C>(C c) noexcept {
  return c >= 'A' && c <= 'Z' ? static_cast<C>(c + ('a' - 'A')) : c;
};

/// The capital letter of a small one, any other character itself.
inline constexpr auto UpperAscii = []<typename C>(C c) noexcept {
  return c >= 'a' && c <= 'z' ? static_cast<C>(c - ('a' - 'A')) : c;
};

/// Compares without regard to the case of ASCII letters.
constexpr bool EqualNoCase(std::string_view left, std::string_view right) noexcept {
  return std::ranges::equal(left, right, {}, LowerAscii, LowerAscii);
}
constexpr bool EqualNoCase(std::u16string_view left, std::u16string_view right) noexcept {
  return std::ranges::equal(left, right, {}, LowerAscii, LowerAscii);
}

/// The text with its ASCII letters small: a key under which names meet that differ in case.
inline std::string Folded(std::string_view text) {
  std::string folded(text);
  std::ranges::transform(folded, folded.begin(), LowerAscii);
  return folded;
}

/// The part of `text` from its first to its last character that is not among `blanks`.
template <typename C>
constexpr std::basic_string_view<C> Trim(
    std::basic_string_view<C> text,
    std::type_identity_t<std::basic_string_view<C>> blanks) noexcept {
  text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
  return text.substr(0, text.find_last_not_of(blanks) + 1);
}

/// Text as ASCII, character by character; those outside become zeros, which match nothing.
inline std::string ToAscii(std::u16string_view text) {
  std::string ascii(text.size(), '\0');
  std::ranges::transform(text, ascii.begin(),
                         [](char16_t c) { return c < 0x80 ? static_cast<char>(c) : '\0'; });
  return ascii;
}

}  // namespace orxdb
