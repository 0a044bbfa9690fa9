#include "host/ExchangeFile.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <filesystem>
#include <string_view>

#include "platform/framework/ExecutablePath.h"

namespace orxdb {
namespace {

/// Lines of so many characters, their end included, are not used; they come in pieces.
constexpr std::size_t kTooLong = 65534;
constexpr std::string_view kBlanks = " \t\n\v\f\r";

std::string_view Trimmed(std::string_view text) {
  const std::size_t first = std::min(text.find_first_not_of(kBlanks), text.size());
  return text.substr(first, text.find_last_not_of(kBlanks) + 1 - first);
}

std::string Unescaped(std::string_view text) {
  constexpr std::string_view kLetters = "\\\"nrtv";
  constexpr std::string_view kMeanings = "\\\"\n\r\t\v";
  std::string plain;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\' || i + 1 == text.size()) {
      plain += text[i];
      continue;
    }
    const std::size_t letter = kLetters.find(text[++i]);
    if (letter != kLetters.npos) plain += kMeanings[letter];
  }
  return plain;
}

/// A field reaches from one double quote to the next, escaped or not.
std::vector<std::string> Fields(std::string_view line) {
  std::vector<std::string> fields;
  for (std::size_t end = 0;; ++end) {
    const std::size_t begin = line.find('"', end);
    end = begin == line.npos ? begin : line.find('"', begin + 1);
    if (end == line.npos) return fields;
    fields.push_back(Unescaped(line.substr(begin + 1, end - begin - 1)));
  }
}

/// Whether a double quote of the line is escaped.
bool HasEscapedQuote(std::string_view line) {
  bool escaped = false;
  for (const char character : line) {
    if (escaped && character == '"') return true;
    escaped = character == '\\' && !escaped;
  }
  return false;
}

/// Whether a version begins as "1.0" with any character between; what is missing counts as that.
bool IsReadableVersion(std::string_view text) {
  const auto number = [&text](int missing) {
    text = text.substr(std::min(text.find_first_not_of(kBlanks), text.size()));
    if (text.starts_with('+')) text.remove_prefix(1);
    int value = missing;
    const char* end = std::from_chars(text.data(), text.data() + text.size(), value).ptr;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return value;
  };
  const std::size_t whole = text.size();
  if (number(1) != 1) return false;
  if (text.size() == whole || text.empty()) return true;
  text.remove_prefix(1);
  return number(0) == 0;
}

}  // namespace

ExchangeFile::ExchangeFile(const std::string& path) {
  if (std::filesystem::is_directory(NativePath(path))) {
    throw HostError(path + " is a folder, not an exchange file.");
  }
  m_file = TextFile::OpenForReading(path);
  if (!m_file) throw HostError(path + " cannot be read: " + std::strerror(errno) + '.');
  ReadHeader(path);
  if (ReadPiece() && !IsTooLong()) m_names = Fields(Text());
  if (m_names.empty()) throw HostError(path + " names no fields in its fourth line.");
}

void ExchangeFile::ReadHeader(const std::string& path) {
  const auto value = [this](std::string_view key) {
    return ReadPiece() ? HeaderValue(key) : std::nullopt;
  };
  const std::string version = value("ORX_tool_table_version").value_or("1.0");
  m_table = value("ORX_tool_table_name").value_or("");
  const std::string type = value("ORX_table_export_type").value_or("");
  if (type == "ORX_exported_by_query") {
    throw HostError(path + " holds the records of a query, which are not imported.");
  }
  if (type != "ORX_exported_by_table") throw HostError(path + " is not an exchange file.");
  if (!IsReadableVersion(version)) {
    throw HostError(path + " is of version " + Cited(version) + "; only 1.0 is imported.");
  }
}

std::optional<std::string> ExchangeFile::HeaderValue(std::string_view key) const {
  const std::size_t separator = Text().find('=');
  if (IsTooLong() || separator == m_piece.npos || Text().substr(0, separator) != key) {
    return std::nullopt;
  }
  return std::string(Trimmed(Text().substr(separator + 1)));
}

bool ExchangeFile::ReadPiece() {
  if (!m_file.ReadLine(m_piece, kTooLong)) return false;
  if (m_lineEnded) ++m_number;
  m_lineEnded = m_piece.ends_with('\n');
  return true;
}

bool ExchangeFile::IsTooLong() const noexcept {
  return m_piece.size() >= kTooLong;
}

std::optional<ExchangeLine> ExchangeFile::Next() {
  for (bool isRest = !m_lineEnded; ReadPiece(); isRest = !m_lineEnded) {
    if (Trimmed(Text()).empty() && !IsTooLong()) continue;
    ExchangeLine line;
    line.number = m_number;
    line.torn = HasEscapedQuote(Text());
    if (IsTooLong()) {
      line.kind = ExchangeLine::Kind::TooLong;
    } else {
      line.fields = Fields(Text());
      if (line.fields.size() != m_names.size()) line.kind = ExchangeLine::Kind::WrongFields;
    }
    // The rest of a line that was too long may make a record; else it has been told of.
    if (!isRest || line.kind == ExchangeLine::Kind::Record) return line;
  }
  return std::nullopt;
}

}  // namespace orxdb
