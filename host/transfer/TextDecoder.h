// Text of foreign files as UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace orxdb {

/// How bytes mean text; Auto is found from them.
enum class Encoding { Auto, Utf8, Utf16, Windows1252 };

/// What of bytes, given piece by piece, would be UTF-8.
class Utf8Survey {
 public:
  void Add(std::string_view bytes);
  /// Whether the bytes are rather text of one byte a character: text outside ASCII that is mostly
  /// no UTF-8. Single damaged bytes of UTF-8 do not make it so.
  bool Denies() const noexcept { return m_strays > 0 && m_strays >= m_characters; }

 private:
  std::string m_held;
  std::u16string m_wide;
  long long m_characters = 0;  ///< outside ASCII
  long long m_strays = 0;
};

/// Turns bytes into UTF-8, piece by piece.
class TextDecoder {
 public:
  explicit TextDecoder(Encoding encoding = Encoding::Utf8, bool bigEndian = false) noexcept
      : m_encoding(encoding), m_bigEndian(bigEndian) {}

  /// Appends to `text` what the bytes mean; an unfinished character waits for the next ones. What
  /// is no UTF-8 counts as Windows-1252, half characters of UTF-16 become U+FFFD.
  void Decode(std::string_view bytes, std::string& text);
  /// The bytes have ended: an unfinished character is one that is damaged.
  void End(std::string& text);

  Encoding Name() const noexcept { return m_encoding; }
  /// How many bytes of UTF-8, or characters of UTF-16, were none.
  long long Damaged() const noexcept { return m_damaged; }

 private:
  void DecodeUtf8(std::string_view bytes, std::string& text);
  void DecodeUtf16(std::string_view bytes, std::string& text);

  Encoding m_encoding;
  bool m_bigEndian;
  std::string m_held;
  std::u16string m_wide;
  long long m_damaged = 0;
};

}  // namespace orxdb
