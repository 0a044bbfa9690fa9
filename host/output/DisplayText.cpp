#include "host/output/DisplayText.h"

#include <algorithm>
#include <span>

#include "platform/framework/Text.h"

namespace orxdb {
namespace {

struct Range {
  char16_t first;
  char16_t last;
};

bool In(std::span<const Range> ranges, char16_t unit) {
  return std::ranges::any_of(
      ranges, [unit](const Range& range) { return unit >= range.first && unit <= range.last; });
}

bool IsLead(char16_t unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}
bool IsTrail(char16_t unit) {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}

/// Places of a UTF-16 unit; the second half of a pair adds nothing.
std::size_t Places(char16_t unit, char16_t before) {
  constexpr Range kCombining[] = {{0x0300, 0x036F}, {0x200B, 0x200F}, {0x20D0, 0x20FF},
                                  {0xFE00, 0xFE0F}, {0xFE20, 0xFE2F}, {0xFEFF, 0xFEFF}};
  // Han, kana, Hangul and full-width forms, and the lead halves of the planes of emoji and rarer
  // Han.
  constexpr Range kWide[] = {{0x1100, 0x115F}, {0x2E80, 0xA4CF}, {0xAC00, 0xD7A3},
                             {0xF900, 0xFAFF}, {0xFE30, 0xFE6F}, {0xFF00, 0xFF60},
                             {0xFFE0, 0xFFE6}, {0xD83C, 0xD83E}, {0xD840, 0xD8BF}};
  if ((IsTrail(unit) && IsLead(before)) || In(kCombining, unit)) return 0;
  return In(kWide, unit) ? 2 : 1;
}

}  // namespace

std::size_t DisplayWidth(std::string_view text) {
  std::size_t width = 0;
  char16_t before = 0;
  for (const char16_t unit : Widen(text)) {
    width += Places(unit, before);
    before = unit;
  }
  return width;
}

std::string Harmless(std::string_view text) {
  // Control characters, marks, embeddings and isolates of direction, line separators.
  constexpr Range kHarmful[] = {{0x00, 0x08},     {0x0B, 0x0C},     {0x0E, 0x1F},
                                {0x7F, 0x9F},     {0x061C, 0x061C}, {0x200E, 0x200F},
                                {0x2028, 0x202E}, {0x2066, 0x206F}, {0xFFF9, 0xFFFB}};
  const auto plain = [](unsigned char c) { return c >= 0x20 && c < 0x7F; };
  if (std::ranges::all_of(text, plain)) return std::string(text);
  std::u16string wide = Widen(text);
  for (std::size_t i = 0; i < wide.size(); ++i) {
    const bool pair = IsLead(wide[i]) && i + 1 < wide.size() && IsTrail(wide[i + 1]);
    if (pair) {
      ++i;
    } else if (In(kHarmful, wide[i]) || IsLead(wide[i]) || IsTrail(wide[i])) {
      wide[i] = u'\uFFFD';
    }
  }
  return Narrow(wide);
}

std::string Shortened(const std::string& text, std::size_t places) {
  if (text.size() <= places || DisplayWidth(text) <= places) return text;
  const std::u16string wide = Widen(text);
  std::size_t taken = 0;
  std::size_t end = 0;
  for (; end < wide.size(); ++end) {
    taken += Places(wide[end], end > 0 ? wide[end - 1] : u'\0');
    if (taken + 1 > places) break;
  }
  if (end < wide.size() && end > 0 && IsTrail(wide[end])) --end;
  return Narrow(std::u16string_view(wide).substr(0, end)) + "…";
}

}  // namespace orxdb
