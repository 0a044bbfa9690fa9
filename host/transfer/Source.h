// Text of a file, or of standard input, whatever its encoding.
#pragma once

#include <cstddef>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/transfer/TextDecoder.h"

namespace orxdb {

/// Reads text as UTF-8 without a byte-order mark, from its beginning to its end, a block at a
/// time. Line ends are as written: LF, CR LF or CR.
class TextSource {
 public:
  static constexpr int kEnd = -1;
  static constexpr std::size_t kBlock = 65536;

  struct Line {
    std::string text;
    std::string end;       ///< its line end; empty for a last line without one
    long long number = 0;  ///< from 1
    bool tooLong = false;  ///< then the text is only its beginning
  };

  /// Opens a file, or standard input for "-". What has no byte-order mark is UTF-8, or
  /// Windows-1252 when it is mostly no UTF-8. Throws HostError when it cannot be read.
  TextSource(std::string name, Encoding encoding);
  TextSource(TextSource&&) noexcept;
  ~TextSource();

  const std::string& Name() const noexcept { return m_name; }
  /// Whether the text had a byte-order mark.
  bool HadMark() const noexcept { return m_hadMark; }

  /// The text that has been read from the file and comes next: at the beginning at least the first
  /// block, unless the text is shorter.
  std::string_view Ahead() const noexcept { return std::string_view(m_text).substr(m_next); }

  /// The next byte; kEnd when there is none. These throw HostError when reading fails.
  int Peek() {
    return m_next < m_text.size() || Fill() ? static_cast<unsigned char>(m_text[m_next]) : kEnd;
  }
  /// As Peek, and goes behind it.
  int Get() {
    const int character = Peek();
    if (character == kEnd) return kEnd;
    ++m_next;
    if (character == '\n' ? !m_afterReturn : character == '\r') ++m_line;
    m_afterReturn = character == '\r';
    return character;
  }
  /// Reads the rest of the line; what is behind its first `limit` bytes is lost. False at the end.
  bool ReadLine(Line& line, std::size_t limit);

  /// The line of the next byte, from 1.
  long long LineNumber() const noexcept { return m_line; }
  /// The part that has been read, from 0 to 1; less than 0 when it is not known.
  double Done() const noexcept;
  /// What is to be said about the encoding, in sentences.
  std::vector<std::string> Remarks() const;

 private:
  void Detect(Encoding encoding);
  /// Reads bytes of a block into m_bytes, behind those that are there.
  bool ReadBytes();
  /// Reads text; false at the end.
  bool Fill();

  std::string m_name;
  std::unique_ptr<std::istream> m_file;  ///< null for standard input
  std::istream* m_input;
  double m_size = -1;  ///< in bytes, of a file with a size
  double m_read = 0;   ///< in bytes
  TextDecoder m_decoder;
  bool m_hadMark = false;
  bool m_guessed = false;
  std::string m_bytes;
  std::string m_text;
  std::size_t m_next = 0;
  long long m_line = 1;
  bool m_afterReturn = false;
};

}  // namespace orxdb
