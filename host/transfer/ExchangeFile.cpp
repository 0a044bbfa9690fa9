#include "host/transfer/ExchangeFile.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <string_view>
#include <utility>

#include "platform/framework/ExecutablePath.h"

namespace orxdb {
namespace {

TextFile Open(const std::string& path) {
  if (std::filesystem::is_directory(NativePath(path))) {
    throw HostError(path + " is a folder, not an exchange file.");
  }
  TextFile file = TextFile::OpenForReading(path);
  if (!file) throw HostError(path + " cannot be read: " + std::strerror(errno) + '.');
  return file;
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

bool IsBlank(std::string_view line) {
  return line.find_first_not_of(" \t\n\v\f\r") == line.npos;
}

}  // namespace

void CheckImported(const std::string& path, const ExchangeHeader& header) {
  if (header.IsImported()) return;
  if (header.exportType == kExportedByQuery) {
    throw HostError(path + " holds the records of a query, which are not imported.");
  }
  if (header.exportType != kExportedByTable) throw HostError(path + " is not an exchange file.");
  throw HostError(path + " is of version " + Cited(header.Version()) + "; only 1.0 is imported.");
}

ExchangeFile::ExchangeFile(const std::string& path)
    : m_reader(Open(path)), m_header(m_reader.ReadHeader()) {
  CheckImported(path, m_header);
  m_names = m_reader.ReadNames();
  if (m_names.empty()) throw HostError(path + " names no fields in its fourth line.");
}

std::optional<ExchangeLine> ExchangeFile::Next() {
  while (m_reader.Next()) {
    if (IsBlank(m_reader.Text()) && !m_reader.IsTooLong()) continue;
    ExchangeLine line{.number = m_reader.Number(),
                      .torn = HasEscapedQuote(m_reader.Text()),
                      .fields = SplitFields(m_reader.Text())};
    if (m_reader.IsTooLong()) {
      line.kind = ExchangeLine::Kind::TooLong;
    } else if (line.fields.size() != m_names.size()) {
      line.kind = ExchangeLine::Kind::WrongFields;
    }
    // The rest of a line that was too long may make a record; else it has been told of.
    if (!m_reader.IsRest() || line.kind == ExchangeLine::Kind::Record) return line;
  }
  return std::nullopt;
}

}  // namespace orxdb
