#include "platform/framework/LetterCase.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace orxdb {
namespace {

/// Every `step`th character from `first` to `last` folds to the one `by` behind it.
struct Run {
  std::uint32_t first;
  std::uint32_t last;
  std::int32_t by;
  std::uint32_t step;
};

/// Of Unicode 14.0, by the statuses C and S of its case folding. Left out are the signs that fold
/// to letters A to Z (long s, Kelvin): what holds for those letters then is the same in every
/// program that knows them alone.
constexpr auto kRuns = std::to_array<Run>({
    {0x00b5, 0x00b5, 775, 1},    {0x00c0, 0x00d6, 32, 1},     {0x00d8, 0x00de, 32, 1},
    {0x0100, 0x012e, 1, 2},      {0x0132, 0x0136, 1, 2},      {0x0139, 0x0147, 1, 2},
    {0x014a, 0x0176, 1, 2},      {0x0178, 0x0178, -121, 1},   {0x0179, 0x017d, 1, 2},
    {0x0181, 0x0181, 210, 1},    {0x0182, 0x0184, 1, 2},      {0x0186, 0x0186, 206, 1},
    {0x0187, 0x0187, 1, 1},      {0x0189, 0x018a, 205, 1},    {0x018b, 0x018b, 1, 1},
    {0x018e, 0x018e, 79, 1},     {0x018f, 0x018f, 202, 1},    {0x0190, 0x0190, 203, 1},
    {0x0191, 0x0191, 1, 1},      {0x0193, 0x0193, 205, 1},    {0x0194, 0x0194, 207, 1},
    {0x0196, 0x0196, 211, 1},    {0x0197, 0x0197, 209, 1},    {0x0198, 0x0198, 1, 1},
    {0x019c, 0x019c, 211, 1},    {0x019d, 0x019d, 213, 1},    {0x019f, 0x019f, 214, 1},
    {0x01a0, 0x01a4, 1, 2},      {0x01a6, 0x01a6, 218, 1},    {0x01a7, 0x01a7, 1, 1},
    {0x01a9, 0x01a9, 218, 1},    {0x01ac, 0x01ac, 1, 1},      {0x01ae, 0x01ae, 218, 1},
    {0x01af, 0x01af, 1, 1},      {0x01b1, 0x01b2, 217, 1},    {0x01b3, 0x01b5, 1, 2},
    {0x01b7, 0x01b7, 219, 1},    {0x01b8, 0x01b8, 1, 1},      {0x01bc, 0x01bc, 1, 1},
    {0x01c4, 0x01c4, 2, 1},      {0x01c5, 0x01c5, 1, 1},      {0x01c7, 0x01c7, 2, 1},
    {0x01c8, 0x01c8, 1, 1},      {0x01ca, 0x01ca, 2, 1},      {0x01cb, 0x01db, 1, 2},
    {0x01de, 0x01ee, 1, 2},      {0x01f1, 0x01f1, 2, 1},      {0x01f2, 0x01f4, 1, 2},
    {0x01f6, 0x01f6, -97, 1},    {0x01f7, 0x01f7, -56, 1},    {0x01f8, 0x021e, 1, 2},
    {0x0220, 0x0220, -130, 1},   {0x0222, 0x0232, 1, 2},      {0x023a, 0x023a, 10795, 1},
    {0x023b, 0x023b, 1, 1},      {0x023d, 0x023d, -163, 1},   {0x023e, 0x023e, 10792, 1},
    {0x0241, 0x0241, 1, 1},      {0x0243, 0x0243, -195, 1},   {0x0244, 0x0244, 69, 1},
    {0x0245, 0x0245, 71, 1},     {0x0246, 0x024e, 1, 2},      {0x0345, 0x0345, 116, 1},
    {0x0370, 0x0372, 1, 2},      {0x0376, 0x0376, 1, 1},      {0x037f, 0x037f, 116, 1},
    {0x0386, 0x0386, 38, 1},     {0x0388, 0x038a, 37, 1},     {0x038c, 0x038c, 64, 1},
    {0x038e, 0x038f, 63, 1},     {0x0391, 0x03a1, 32, 1},     {0x03a3, 0x03ab, 32, 1},
    {0x03c2, 0x03c2, 1, 1},      {0x03cf, 0x03cf, 8, 1},      {0x03d0, 0x03d0, -30, 1},
    {0x03d1, 0x03d1, -25, 1},    {0x03d5, 0x03d5, -15, 1},    {0x03d6, 0x03d6, -22, 1},
    {0x03d8, 0x03ee, 1, 2},      {0x03f0, 0x03f0, -54, 1},    {0x03f1, 0x03f1, -48, 1},
    {0x03f4, 0x03f4, -60, 1},    {0x03f5, 0x03f5, -64, 1},    {0x03f7, 0x03f7, 1, 1},
    {0x03f9, 0x03f9, -7, 1},     {0x03fa, 0x03fa, 1, 1},      {0x03fd, 0x03ff, -130, 1},
    {0x0400, 0x040f, 80, 1},     {0x0410, 0x042f, 32, 1},     {0x0460, 0x0480, 1, 2},
    {0x048a, 0x04be, 1, 2},      {0x04c0, 0x04c0, 15, 1},     {0x04c1, 0x04cd, 1, 2},
    {0x04d0, 0x052e, 1, 2},      {0x0531, 0x0556, 48, 1},     {0x10a0, 0x10c5, 7264, 1},
    {0x10c7, 0x10c7, 7264, 1},   {0x10cd, 0x10cd, 7264, 1},   {0x13f8, 0x13fd, -8, 1},
    {0x1c80, 0x1c80, -6222, 1},  {0x1c81, 0x1c81, -6221, 1},  {0x1c82, 0x1c82, -6212, 1},
    {0x1c83, 0x1c84, -6210, 1},  {0x1c85, 0x1c85, -6211, 1},  {0x1c86, 0x1c86, -6204, 1},
    {0x1c87, 0x1c87, -6180, 1},  {0x1c88, 0x1c88, 35267, 1},  {0x1c90, 0x1cba, -3008, 1},
    {0x1cbd, 0x1cbf, -3008, 1},  {0x1e00, 0x1e94, 1, 2},      {0x1e9b, 0x1e9b, -58, 1},
    {0x1e9e, 0x1e9e, -7615, 1},  {0x1ea0, 0x1efe, 1, 2},      {0x1f08, 0x1f0f, -8, 1},
    {0x1f18, 0x1f1d, -8, 1},     {0x1f28, 0x1f2f, -8, 1},     {0x1f38, 0x1f3f, -8, 1},
    {0x1f48, 0x1f4d, -8, 1},     {0x1f59, 0x1f5f, -8, 2},     {0x1f68, 0x1f6f, -8, 1},
    {0x1f88, 0x1f8f, -8, 1},     {0x1f98, 0x1f9f, -8, 1},     {0x1fa8, 0x1faf, -8, 1},
    {0x1fb8, 0x1fb9, -8, 1},     {0x1fba, 0x1fbb, -74, 1},    {0x1fbc, 0x1fbc, -9, 1},
    {0x1fbe, 0x1fbe, -7173, 1},  {0x1fc8, 0x1fcb, -86, 1},    {0x1fcc, 0x1fcc, -9, 1},
    {0x1fd8, 0x1fd9, -8, 1},     {0x1fda, 0x1fdb, -100, 1},   {0x1fe8, 0x1fe9, -8, 1},
    {0x1fea, 0x1feb, -112, 1},   {0x1fec, 0x1fec, -7, 1},     {0x1ff8, 0x1ff9, -128, 1},
    {0x1ffa, 0x1ffb, -126, 1},   {0x1ffc, 0x1ffc, -9, 1},     {0x2126, 0x2126, -7517, 1},
    {0x212b, 0x212b, -8262, 1},  {0x2132, 0x2132, 28, 1},     {0x2160, 0x216f, 16, 1},
    {0x2183, 0x2183, 1, 1},      {0x24b6, 0x24cf, 26, 1},     {0x2c00, 0x2c2f, 48, 1},
    {0x2c60, 0x2c60, 1, 1},      {0x2c62, 0x2c62, -10743, 1}, {0x2c63, 0x2c63, -3814, 1},
    {0x2c64, 0x2c64, -10727, 1}, {0x2c67, 0x2c6b, 1, 2},      {0x2c6d, 0x2c6d, -10780, 1},
    {0x2c6e, 0x2c6e, -10749, 1}, {0x2c6f, 0x2c6f, -10783, 1}, {0x2c70, 0x2c70, -10782, 1},
    {0x2c72, 0x2c72, 1, 1},      {0x2c75, 0x2c75, 1, 1},      {0x2c7e, 0x2c7f, -10815, 1},
    {0x2c80, 0x2ce2, 1, 2},      {0x2ceb, 0x2ced, 1, 2},      {0x2cf2, 0x2cf2, 1, 1},
    {0xa640, 0xa66c, 1, 2},      {0xa680, 0xa69a, 1, 2},      {0xa722, 0xa72e, 1, 2},
    {0xa732, 0xa76e, 1, 2},      {0xa779, 0xa77b, 1, 2},      {0xa77d, 0xa77d, -35332, 1},
    {0xa77e, 0xa786, 1, 2},      {0xa78b, 0xa78b, 1, 1},      {0xa78d, 0xa78d, -42280, 1},
    {0xa790, 0xa792, 1, 2},      {0xa796, 0xa7a8, 1, 2},      {0xa7aa, 0xa7aa, -42308, 1},
    {0xa7ab, 0xa7ab, -42319, 1}, {0xa7ac, 0xa7ac, -42315, 1}, {0xa7ad, 0xa7ad, -42305, 1},
    {0xa7ae, 0xa7ae, -42308, 1}, {0xa7b0, 0xa7b0, -42258, 1}, {0xa7b1, 0xa7b1, -42282, 1},
    {0xa7b2, 0xa7b2, -42261, 1}, {0xa7b3, 0xa7b3, 928, 1},    {0xa7b4, 0xa7c2, 1, 2},
    {0xa7c4, 0xa7c4, -48, 1},    {0xa7c5, 0xa7c5, -42307, 1}, {0xa7c6, 0xa7c6, -35384, 1},
    {0xa7c7, 0xa7c9, 1, 2},      {0xa7d0, 0xa7d0, 1, 1},      {0xa7d6, 0xa7d8, 1, 2},
    {0xa7f5, 0xa7f5, 1, 1},      {0xab70, 0xabbf, -38864, 1}, {0xff21, 0xff3a, 32, 1},
    {0x10400, 0x10427, 40, 1},   {0x104b0, 0x104d3, 40, 1},   {0x10570, 0x1057a, 39, 1},
    {0x1057c, 0x1058a, 39, 1},   {0x1058c, 0x10592, 39, 1},   {0x10594, 0x10595, 39, 1},
    {0x10c80, 0x10cb2, 64, 1},   {0x118a0, 0x118bf, 32, 1},   {0x16e40, 0x16e5f, 32, 1},
    {0x1e900, 0x1e921, 34, 1},
});

constexpr char32_t kBehindAll = 0x110000;

constexpr bool IsAscii(char32_t code) noexcept {
  return code < 0x80;
}

constexpr char32_t FoldAscii(char32_t code) noexcept {
  return code >= 'A' && code <= 'Z' ? code + ('a' - 'A') : code;
}

void Append(std::string& text, char32_t code) {
  const auto byte = [&](char32_t bits) { text += static_cast<char>(bits); };
  const auto tail = [&](unsigned shift) { byte(0x80U | ((code >> shift) & 0x3fU)); };
  if (code >= kBehindAll) return byte(code - kBehindAll);
  if (code < 0x80) return byte(code);
  if (code < 0x800) {
    byte(0xc0U | (code >> 6U));
  } else if (code < 0x10000) {
    byte(0xe0U | (code >> 12U));
    tail(6);
  } else {
    byte(0xf0U | (code >> 18U));
    tail(12);
    tail(6);
  }
  tail(0);
}

// What others call cannot be inlined where it is called here as well.

TextCharacter Decoded(std::string_view text, std::size_t at) noexcept {
  constexpr std::array<char32_t, 5> kLeast = {0, 0, 0x80, 0x800, 0x10000};  // by length
  const auto lead = static_cast<unsigned char>(text[at]);
  if (lead < 0x80) return {lead, at + 1};
  const std::size_t length = lead >= 0xf0 ? 4 : lead >= 0xe0 ? 3 : lead >= 0xc0 ? 2 : 1;
  const TextCharacter stray = {kBehindAll + lead, at + 1};
  if (length == 1 || at + length > text.size()) return stray;
  char32_t code = lead & (0xffU >> (length + 1));
  for (std::size_t i = 1; i < length; ++i) {
    const auto byte = static_cast<unsigned char>(text[at + i]);
    if ((byte & 0xc0U) != 0x80U) return stray;
    code = (code << 6U) | (byte & 0x3fU);
  }
  if (code < kLeast[length] || code >= kBehindAll) return stray;
  return {code, at + length};
}

char32_t Fold(char32_t code) noexcept {
  if (IsAscii(code)) return FoldAscii(code);
  const auto run = std::ranges::lower_bound(kRuns, code, {}, &Run::last);
  const bool folds =
      run != kRuns.end() && code >= run->first && (code - run->first) % run->step == 0;
  return folds ? code + static_cast<char32_t>(run->by) : code;
}

}  // namespace

TextCharacter CharacterAt(std::string_view text, std::size_t at) noexcept {
  return Decoded(text, at);
}

char32_t FoldLetter(char32_t code) noexcept {
  return Fold(code);
}

std::vector<char32_t> LettersLike(char32_t code) {
  const char32_t folded = Fold(code);
  std::vector<char32_t> alike = {folded};
  if (folded >= 'a' && folded <= 'z') alike.push_back(folded - ('a' - 'A'));
  if (IsAscii(folded)) return alike;
  for (const Run& run : kRuns) {
    const char32_t other = folded - static_cast<char32_t>(run.by);
    if (other >= run.first && other <= run.last && Fold(other) == folded) {
      alike.push_back(other);
    }
  }
  return alike;
}

std::string FoldLetters(std::string_view text) {
  std::string folded;
  folded.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    const TextCharacter character = Decoded(text, at);
    Append(folded, Fold(character.code));
    at = character.next;
  }
  return folded;
}

std::string Utf8Of(char32_t code) {
  std::string text;
  Append(text, code);
  return text;
}

int CompareLetters(std::string_view a, std::string_view b) noexcept {
  std::size_t i = 0;
  std::size_t j = 0;
  while (i < a.size() && j < b.size()) {
    const TextCharacter left = Decoded(a, i);
    const TextCharacter right = Decoded(b, j);
    i = left.next;
    j = right.next;
    if (left.code == right.code) continue;
    const char32_t leftFolded = Fold(left.code);
    const char32_t rightFolded = Fold(right.code);
    if (leftFolded != rightFolded) return leftFolded < rightFolded ? -1 : 1;
  }
  return static_cast<int>(i < a.size()) - static_cast<int>(j < b.size());
}

}  // namespace orxdb
