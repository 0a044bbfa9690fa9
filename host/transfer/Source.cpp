#include "host/transfer/Source.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>

#include "host/library/HostError.h"
#include "platform/framework/ExecutablePath.h"

namespace orxdb {
namespace {

namespace fs = std::filesystem;

HostError Unreadable(const std::string& name) {
  return HostError(name + " cannot be read: " + std::strerror(errno) + '.');
}

std::unique_ptr<std::istream> Open(const std::string& name) {
  if (name == "-") return nullptr;
  std::error_code error;
  if (fs::is_directory(NativePath(name), error)) throw HostError(name + " is a folder.");
  errno = 0;
  auto file = std::make_unique<std::ifstream>(NativePath(name), std::ios::binary);
  if (!*file) throw Unreadable(name);
  return file;
}

}  // namespace

TextSource::TextSource(std::string name, Encoding encoding)
    : m_name(std::move(name)), m_file(Open(m_name)), m_input(m_file ? m_file.get() : &std::cin) {
  std::error_code error;
  if (m_file && fs::is_regular_file(NativePath(m_name), error)) {
    m_size = static_cast<double>(fs::file_size(NativePath(m_name), error));
    if (error) m_size = -1;
  }
  ReadBytes();
  Detect(encoding);
  Fill();
}

TextSource::TextSource(TextSource&&) noexcept = default;
TextSource::~TextSource() = default;

void TextSource::Detect(Encoding encoding) {
  struct Mark {
    std::string_view bytes;
    Encoding encoding;
    bool bigEndian;
  };
  constexpr Mark kMarks[] = {{"\xEF\xBB\xBF", Encoding::Utf8, false},
                             {"\xFF\xFE", Encoding::Utf16, false},
                             {"\xFE\xFF", Encoding::Utf16, true}};
  for (const Mark& mark : kMarks) {
    const bool fits = encoding == Encoding::Auto || encoding == mark.encoding;
    if (!fits || !m_bytes.starts_with(mark.bytes)) continue;
    m_bytes.erase(0, mark.bytes.size());
    m_hadMark = true;
    m_decoder = TextDecoder(mark.encoding, mark.bigEndian);
    return;
  }
  if (encoding == Encoding::Auto) {
    // A file is looked through to its end; of a pipe there is no more than its beginning.
    Utf8Survey survey;
    survey.Add(m_bytes);
    if (m_size > m_read) {
      const std::string first = std::move(m_bytes);
      const double read = m_read;
      for (m_bytes.clear(); ReadBytes(); m_bytes.clear()) survey.Add(m_bytes);
      m_input->clear();
      if (!m_input->seekg(static_cast<std::streamoff>(first.size()))) throw Unreadable(m_name);
      m_bytes = first;
      m_read = read;
    }
    m_guessed = survey.Denies();
    encoding = m_guessed ? Encoding::Windows1252 : Encoding::Utf8;
  }
  m_decoder = TextDecoder(encoding);
}

bool TextSource::ReadBytes() {
  const std::size_t before = m_bytes.size();
  m_bytes.resize(before + kBlock);
  errno = 0;
  m_input->read(m_bytes.data() + before, kBlock);
  if (m_input->bad()) throw Unreadable(m_name);
  m_bytes.resize(before + static_cast<std::size_t>(m_input->gcount()));
  m_read += static_cast<double>(m_input->gcount());
  return m_bytes.size() > before;
}

bool TextSource::Fill() {
  m_text.clear();
  m_next = 0;
  while (m_text.empty()) {
    const bool ended = m_bytes.empty() && !ReadBytes();
    if (ended) {
      m_decoder.End(m_text);
      return !m_text.empty();
    }
    m_decoder.Decode(m_bytes, m_text);
    m_bytes.clear();
  }
  return true;
}

bool TextSource::ReadLine(Line& line, std::size_t limit) {
  line.text.clear();
  line.end.clear();
  line.tooLong = false;
  line.number = m_line;
  if (Peek() == kEnd) return false;
  for (int character; (character = Get()) != kEnd;) {
    if (character == '\n' || character == '\r') {
      line.end = static_cast<char>(character);
      if (character == '\r' && Peek() == '\n') line.end += static_cast<char>(Get());
      break;
    }
    if (line.text.size() < limit) {
      line.text += static_cast<char>(character);
    } else {
      line.tooLong = true;
    }
  }
  return true;
}

double TextSource::Done() const noexcept {
  if (m_size < 0) return -1;
  if (m_size == 0 || m_text.empty()) return 1;
  const double ahead = 1 - static_cast<double>(m_next) / static_cast<double>(m_text.size());
  return std::min(1.0, std::max(0.0, (m_read - ahead * double{kBlock}) / m_size));
}

std::vector<std::string> TextSource::Remarks() const {
  if (m_guessed) return {m_name + " is no UTF-8: it is read as Windows-1252."};
  if (m_decoder.Damaged() == 0) return {};
  const std::string count = std::to_string(m_decoder.Damaged());
  return {m_decoder.Name() == Encoding::Utf16
              ? count + " characters of " + m_name + " are no UTF-16 and lost (U+FFFD)."
              : count + " bytes of " + m_name + " are no UTF-8 and read as Windows-1252."};
}

}  // namespace orxdb
