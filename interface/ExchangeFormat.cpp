#include "interface/ExchangeFormat.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "platform/automation/Ascii.h"

namespace orxdb {
namespace {

constexpr std::string_view kVersionKey = "ORX_tool_table_version";
constexpr std::string_view kTableNameKey = "ORX_tool_table_name";
constexpr std::string_view kExportTypeKey = "ORX_table_export_type";

constexpr std::size_t kTooLong = 65534;

/// Characters that are escaped, and the letters that stand for them behind a backslash.
constexpr std::pair<char, char> kEscapes[] = {{'\\', '\\'}, {'"', '"'},  {'\n', 'n'},
                                              {'\r', 'r'},  {'\t', 't'}, {'\v', 'v'}};

/// Scans a number and moves `text` behind it; false without a number.
bool ScanNumber(const char*& text, int& number) {
  char* end = nullptr;
  const long scanned = std::strtol(text, &end, 10);
  if (end == text) return false;
  text = end;
  number = static_cast<int>(scanned);
  return true;
}

/// Reads major and minor number with any one character between them, as far as they go.
void ScanVersion(const std::string& text, ExchangeHeader& header) {
  const char* rest = text.c_str();
  if (!ScanNumber(rest, header.majorVersion) || *rest == '\0') return;
  ++rest;
  ScanNumber(rest, header.minorVersion);
}

std::string HeaderLine(std::string_view key, std::string_view value) {
  return std::string(key).append("=").append(value).append("\n");
}

std::string SameValue(const ExchangeColumn& column, const std::string& value) {
  const bool isText = column.type == VT_BSTR;
  const std::string field = "[" + column.name + "] ";
  if (isText && value.empty()) return "(" + field + "is NULL OR " + field + "= \"\")";
  return field + "= " + (isText ? '"' + value + '"' : value);
}

}  // namespace

std::string ExchangeHeader::Version() const {
  return std::to_string(majorVersion) + '.' + std::to_string(minorVersion);
}

void ExchangeHeader::Take(int line, std::string_view text) {
  const std::size_t separator = text.find('=');
  if (separator == text.npos) return;
  const std::string_view key = text.substr(0, separator);
  const std::string value(Trim(text.substr(separator + 1), " \t\n\v\f\r"));
  if (line == 0 && key == kVersionKey) ScanVersion(value, *this);
  if (line == 1 && key == kTableNameKey) table = value;
  if (line == 2 && key == kExportTypeKey) exportType = value;
}

std::string ExchangeHeaderLines(const std::string& table) {
  return HeaderLine(kVersionKey, ExchangeHeader().Version()) + HeaderLine(kTableNameKey, table) +
         HeaderLine(kExportTypeKey, kExportedByTable);
}

std::string EscapeField(std::string_view text) {
  std::string field = "\"";
  for (const char character : text) {
    const auto* const escape =
        std::ranges::find(kEscapes, character, &std::pair<char, char>::first);
    if (escape == std::end(kEscapes)) {
      field += character;
    } else {
      field += '\\';
      field += escape->second;
    }
  }
  return field += '"';
}

std::string UnescapeField(std::string_view text) {
  if (text.ends_with('"')) text.remove_suffix(1);
  if (text.starts_with('"')) text.remove_prefix(1);
  std::string unescaped;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\' || i + 1 == text.size()) {
      unescaped += text[i];
      continue;
    }
    const auto* const escape =
        std::ranges::find(kEscapes, text[++i], &std::pair<char, char>::second);
    if (escape != std::end(kEscapes)) unescaped += escape->first;
  }
  return unescaped;
}

std::vector<std::string> SplitFields(std::string_view line) {
  std::vector<std::string> fields;
  for (std::size_t end = 0;;) {
    const std::size_t begin = line.find('"', end);
    if (begin == line.npos) return fields;
    end = line.find('"', begin + 1);
    if (end++ == line.npos) return fields;
    fields.push_back(UnescapeField(line.substr(begin, end - begin)));
  }
}

ExchangeHeader ExchangeReader::ReadHeader() {
  ExchangeHeader header;
  for (int line = 0; line < 3 && !AtEnd(); ++line) {
    Next();
    header.Take(line, Text());
  }
  return header;
}

std::vector<std::string> ExchangeReader::ReadNames() {
  if (AtEnd()) return {};
  Next();
  std::vector<std::string> names = SplitFields(Text());
  m_line.clear();  // no tool is made of the names when no line follows them
  return names;
}

bool ExchangeReader::Next() {
  const bool isRest = IsTooLong() && !m_line.ends_with('\n');
  if (!m_file.ReadLine(m_line, kTooLong)) return false;
  m_isRest = isRest;
  if (!isRest) ++m_number;
  return true;
}

bool ExchangeReader::IsTooLong() const noexcept {
  return m_line.size() >= kTooLong;
}

std::string_view ExchangeReader::Text() const noexcept {
  return IsTooLong() ? std::string_view() : std::string_view(m_line.c_str());
}

std::string SameToolCriteria(std::span<const ExchangeColumn> columns,
                             std::span<const std::string> values) {
  std::string criteria;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (!columns[i].isCompared) continue;
    if (!criteria.empty()) criteria += " AND ";
    criteria += SameValue(columns[i], values[i]);
  }
  return criteria;
}

}  // namespace orxdb
