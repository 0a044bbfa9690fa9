#include "platform/framework/Text.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace orxdb {
namespace {

constexpr char32_t kStrayByte = 0xDC00;

constexpr bool IsHighSurrogate(char32_t unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}
constexpr bool IsLowSurrogate(char32_t unit) {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}

std::uint8_t ByteAt(std::string_view text, std::size_t position) {
  return static_cast<std::uint8_t>(text[position]);
}

/// Number of ASCII bytes that `text` starts with, eight at a time while it lasts.
std::size_t AsciiPrefix(std::string_view text) {
  std::size_t length = 0;
  for (; length + 8 <= text.size(); length += 8) {
    std::uint64_t eight;
    std::memcpy(&eight, text.data() + length, sizeof eight);
    if ((eight & 0x8080808080808080U) != 0) break;
  }
  while (length < text.size() && ByteAt(text, length) < 0x80) ++length;
  return length;
}

struct Decoded {
  char32_t character;
  std::size_t bytes;
};

/// The character at the start of `text`, which starts with a byte above ASCII. Overlong forms,
/// surrogates, numbers beyond U+10FFFF and cut sequences make the first byte a stray one.
Decoded DecodeOne(std::string_view text) {
  const std::uint8_t lead = ByteAt(text, 0);
  const Decoded stray{kStrayByte + lead, 1};
  const std::size_t bytes = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || text.size() < bytes) return stray;
  char32_t character = lead & (0x7FU >> bytes);
  for (std::size_t i = 1; i < bytes; ++i) {
    const std::uint8_t next = ByteAt(text, i);
    if ((next & 0xC0) != 0x80) return stray;
    character = (character << 6) | (next & 0x3F);
  }
  constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
  if (character < kSmallest[bytes] || character > 0x10FFFF || IsHighSurrogate(character) ||
      IsLowSurrogate(character)) {
    return stray;
  }
  return {character, bytes};
}

/// Calls `ascii` with every run of ASCII and `other` with every other character of `narrow`.
template <typename Ascii, typename Other>
void ForEachPart(std::string_view narrow, Ascii ascii, Other other) {
  while (!narrow.empty()) {
    if (const std::size_t run = AsciiPrefix(narrow)) {
      ascii(narrow.substr(0, run));
      narrow.remove_prefix(run);
    } else {
      const Decoded decoded = DecodeOne(narrow);
      other(decoded.character);
      narrow.remove_prefix(decoded.bytes);
    }
  }
}

void AppendUtf8(char32_t character, std::string& narrow) {
  const auto trail = [&](unsigned shift) {
    narrow += static_cast<char>(0x80 | ((character >> shift) & 0x3F));
  };
  if (character < 0x800) {
    narrow += static_cast<char>(0xC0 | (character >> 6));
  } else {
    if (character < 0x10000) {
      narrow += static_cast<char>(0xE0 | (character >> 12));
    } else {
      narrow += static_cast<char>(0xF0 | (character >> 18));
      trail(12);
    }
    trail(6);
  }
  trail(0);
}

}  // namespace

std::size_t WidenedLength(std::string_view narrow) noexcept {
  std::size_t length = 0;
  ForEachPart(
      narrow, [&](std::string_view run) { length += run.size(); },
      [&](char32_t character) { length += character > 0xFFFF ? 2 : 1; });
  return length;
}

OLECHAR* WidenTo(std::string_view narrow, OLECHAR* wide) noexcept {
  ForEachPart(
      narrow,
      [&](std::string_view run) {
        wide = std::transform(run.begin(), run.end(), wide,
                              [](char c) { return static_cast<OLECHAR>(c); });
      },
      [&](char32_t character) {
        if (character > 0xFFFF) {
          *wide++ = static_cast<OLECHAR>(0xD7C0 + (character >> 10));
          *wide++ = static_cast<OLECHAR>(0xDC00 | (character & 0x3FF));
        } else {
          *wide++ = static_cast<OLECHAR>(character);
        }
      });
  return wide;
}

void WidenInto(std::string_view narrow, std::u16string& wide) {
  wide.resize(narrow.size());
  wide.resize(static_cast<std::size_t>(WidenTo(narrow, wide.data()) - wide.data()));
}

std::u16string Widen(std::string_view narrow) {
  std::u16string wide;
  WidenInto(narrow, wide);
  return wide;
}

Bstr WidenToBstr(std::string_view narrow) {
  const std::size_t length = WidenedLength(narrow);
  if (length > std::numeric_limits<UINT>::max()) throw std::bad_alloc();
  Bstr wide;
  wide.attach(SysAllocStringLen(nullptr, static_cast<UINT>(length)));
  if (!wide) throw std::bad_alloc();
  WidenTo(narrow, wide.get());
  return wide;
}

void NarrowInto(std::u16string_view wide, std::string& narrow) {
  // Nearly all texts are plain to their end.
  const auto special =
      std::ranges::find_if(wide, [](char16_t character) { return character >= 0x80; });
  const std::size_t plain = static_cast<std::size_t>(special - wide.begin());
  const std::size_t start = narrow.size();
  narrow.resize(start + plain);
  std::transform(wide.begin(), special, narrow.begin() + static_cast<std::ptrdiff_t>(start),
                 [](char16_t character) { return static_cast<char>(character); });
  for (std::size_t i = plain; i < wide.size(); ++i) {
    char32_t character = wide[i];
    if (character < 0x80) {
      narrow += static_cast<char>(character);
    } else if (IsHighSurrogate(character) && i + 1 < wide.size() && IsLowSurrogate(wide[i + 1])) {
      character = 0x10000 + ((character & 0x3FF) << 10) + (wide[++i] & 0x3FFU);
      AppendUtf8(character, narrow);
    } else if (character >= kStrayByte + 0x80 && character <= kStrayByte + 0xFF) {
      narrow += static_cast<char>(character - kStrayByte);
    } else {
      AppendUtf8(character, narrow);
    }
  }
}

std::string Narrow(std::u16string_view wide) {
  std::string narrow;
  NarrowInto(wide, narrow);
  return narrow;
}

std::string NarrowBstr(BSTR wide) {
  return Narrow(View(wide));
}

OLECHAR* WidenText(OLECHAR* buffer, const char* narrow, int length) noexcept {
  if (!buffer || length <= 0) return buffer;
  buffer[0] = u'\0';
  if (narrow && WidenedLength(narrow) < static_cast<std::size_t>(length)) {
    *WidenTo(narrow, buffer) = u'\0';
  }
  return buffer;
}

}  // namespace orxdb
