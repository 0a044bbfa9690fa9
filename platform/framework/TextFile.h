// Text files whose lines end with CR LF, read with LF alone as well.
#pragma once

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

#include "platform/automation/Types.h"

namespace orxdb {

/// An open text file, closed at its end; empty when it could not be opened. Text in memory ends
/// its lines with '\n', whatever the file has. Paths take either separator.
class AUTOMATION_API TextFile {
 public:
  TextFile() = default;

  static TextFile OpenForReading(std::string_view path);
  /// Creates or empties the file.
  static TextFile OpenForWriting(std::string_view path);

  explicit operator bool() const noexcept { return m_file != nullptr; }

  /// Reads into `piece` the rest of the line, '\n' included, but at most `limit` characters; what
  /// is left of the line comes with the next reads. CR LF counts as the one character '\n', a CR
  /// alone is a character like any other. False when the file has nothing left: `piece` then stays
  /// as it was.
  bool ReadLine(std::string& piece, std::size_t limit);

  /// Whether a read has met the end of the file. A last line with its line end has not: only the
  /// next read does. A read error counts as the end, so a folder is an empty file. An empty object
  /// is always at its end.
  bool AtEnd() const noexcept { return m_atEnd || !m_file; }

  /// Writes text, every '\n' as CR LF. False when the system refuses; text may be held back until
  /// Close, so only its answer is final.
  bool Write(std::string_view text);

  /// Closes the file. False when anything written has not reached the system.
  bool Close();

 private:
  struct Closer {
    void operator()(std::FILE* file) const noexcept { std::fclose(file); }
  };
  explicit TextFile(std::FILE* file) noexcept : m_file(file) {}
  static TextFile Open(std::string_view path, const char* mode);

  std::unique_ptr<std::FILE, Closer> m_file;
  bool m_atEnd = false;
  bool m_failed = false;
};

}  // namespace orxdb
