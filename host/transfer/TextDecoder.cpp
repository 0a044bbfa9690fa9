#include "host/transfer/TextDecoder.h"

#include <algorithm>
#include <cstdint>

#include "platform/framework/Text.h"

namespace orxdb {
namespace {

std::uint8_t Byte(char character) {
  return static_cast<std::uint8_t>(character);
}

bool IsHigh(char16_t unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}
bool IsLow(char16_t unit) {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}

/// Number of bytes at the end that begin a character of UTF-8 and do not end it.
std::size_t UnfinishedUtf8(std::string_view bytes) {
  for (std::size_t length = 1; length <= std::min<std::size_t>(3, bytes.size()); ++length) {
    const std::uint8_t byte = Byte(bytes[bytes.size() - length]);
    if (byte < 0x80) return 0;
    if (byte >= 0xC0) return length < (byte >= 0xF0 ? 4U : byte >= 0xE0 ? 3U : 2U) ? length : 0;
  }
  return 0;
}

char16_t FromWindows1252(std::uint8_t byte) {
  // Five bytes without a meaning stay control characters.
  constexpr std::u16string_view k80To9F =
      u"\u20AC\u0081\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030\u0160\u2039\u0152\u008D\u017D"
      u"\u008F\u0090\u2018\u2019\u201C\u201D\u2022\u2013\u2014\u02DC\u2122\u0161\u203A\u0153\u009D"
      u"\u017E\u0178";
  return byte >= 0x80 && byte < 0xA0 ? k80To9F[byte - 0x80U] : char16_t{byte};
}

/// Gives every half of a pair without its partner to `mend`, which returns what to put there.
template <typename Mend>
void MendHalves(std::u16string& wide, Mend mend) {
  for (std::size_t i = 0; i < wide.size(); ++i) {
    if (IsHigh(wide[i]) && i + 1 < wide.size() && IsLow(wide[i + 1])) {
      ++i;
    } else if (IsHigh(wide[i]) || IsLow(wide[i])) {
      wide[i] = mend(wide[i]);
    }
  }
}

bool IsAscii(std::string_view bytes) {
  return std::ranges::all_of(bytes, [](char c) { return Byte(c) < 0x80; });
}

/// What was held back and the new bytes, of which the last `keep(all)` are held back again.
template <typename Keep>
std::string Joined(std::string& held, std::string_view bytes, Keep keep) {
  std::string all = std::move(held) + std::string(bytes);
  const std::size_t whole = all.size() - keep(all);
  held = all.substr(whole);
  all.resize(whole);
  return all;
}

}  // namespace

void Utf8Survey::Add(std::string_view bytes) {
  if (m_held.empty() && IsAscii(bytes)) return;
  WidenInto(Joined(m_held, bytes, UnfinishedUtf8), m_wide);
  long long strays = 0;
  MendHalves(m_wide, [&](char16_t) { return ++strays, u' '; });
  m_strays += strays;
  m_characters +=
      std::ranges::count_if(m_wide, [](char16_t unit) { return unit >= 0x80 && !IsLow(unit); });
}

void TextDecoder::Decode(std::string_view bytes, std::string& text) {
  switch (m_encoding) {
    case Encoding::Utf16:
      return DecodeUtf16(bytes, text);
    case Encoding::Windows1252:
      m_wide.resize(bytes.size());
      std::ranges::transform(bytes, m_wide.begin(),
                             [](char c) { return FromWindows1252(Byte(c)); });
      return NarrowInto(m_wide, text);
    default:
      return DecodeUtf8(Joined(m_held, bytes, UnfinishedUtf8), text);
  }
}

void TextDecoder::End(std::string& text) {
  const std::string held = std::move(m_held);
  m_held.clear();
  if (held.empty()) return;
  if (m_encoding == Encoding::Utf16) {
    ++m_damaged;
    NarrowInto(u"\uFFFD", text);
  } else {
    DecodeUtf8(held, text);
  }
}

void TextDecoder::DecodeUtf8(std::string_view bytes, std::string& text) {
  if (IsAscii(bytes)) {
    text += bytes;
    return;
  }
  WidenInto(bytes, m_wide);
  MendHalves(m_wide, [this](char16_t stray) {
    ++m_damaged;
    return FromWindows1252(static_cast<std::uint8_t>(stray & 0xFF));
  });
  NarrowInto(m_wide, text);
}

void TextDecoder::DecodeUtf16(std::string_view bytes, std::string& text) {
  const auto unit = [this](std::string_view of, std::size_t place) {
    const auto first = Byte(of[place]);
    const auto second = Byte(of[place + 1]);
    return static_cast<char16_t>(m_bigEndian ? first << 8 | second : second << 8 | first);
  };
  const std::string all = Joined(m_held, bytes, [&](std::string_view of) -> std::size_t {
    const std::size_t odd = of.size() % 2;
    if (of.size() < 2) return odd;
    return odd + (IsHigh(unit(of, of.size() - odd - 2)) ? 2U : 0U);
  });
  m_wide.clear();
  for (std::size_t i = 0; i < all.size(); i += 2) m_wide += unit(all, i);
  MendHalves(m_wide, [this](char16_t) { return ++m_damaged, u'\uFFFD'; });
  NarrowInto(m_wide, text);
}

}  // namespace orxdb
