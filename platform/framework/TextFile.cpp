#include "platform/framework/TextFile.h"

#include "platform/framework/ExecutablePath.h"

namespace orxdb {

TextFile TextFile::Open(std::string_view path, const char* mode) {
  return TextFile(std::fopen(NativePath(path).c_str(), mode));
}

// Binary modes: line ends are this class's business. The "e" keeps children from inheriting it.
TextFile TextFile::OpenForReading(std::string_view path) {
  return Open(path, "rbe");
}
TextFile TextFile::OpenForWriting(std::string_view path) {
  return Open(path, "wbe");
}

bool TextFile::ReadLine(std::string& piece, std::size_t limit) {
  if (AtEnd() || limit == 0) return false;
  std::FILE* file = m_file.get();
  std::string text;
  while (text.size() < limit && !text.ends_with('\n')) {
    int character = getc_unlocked(file);
    if (character == EOF) {
      m_atEnd = true;
      break;
    }
    if (character == '\r') {
      const int next = getc_unlocked(file);
      if (next == '\n') {
        character = next;
      } else if (next != EOF) {
        std::ungetc(next, file);
      }
    }
    text += static_cast<char>(character);
  }
  if (text.empty()) return false;
  piece.swap(text);
  return true;
}

bool TextFile::Write(std::string_view text) {
  if (!m_file) return false;
  const auto put = [this](std::string_view part) {
    m_failed |= std::fwrite(part.data(), 1, part.size(), m_file.get()) != part.size();
  };
  for (std::size_t end; (end = text.find('\n')) != std::string_view::npos;) {
    put(text.substr(0, end));
    put("\r\n");
    text.remove_prefix(end + 1);
  }
  put(text);
  return !m_failed;
}

bool TextFile::Close() {
  if (!m_file) return false;
  return std::fclose(m_file.release()) == 0 && !m_failed;
}

}  // namespace orxdb
