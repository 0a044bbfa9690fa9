#include "host/transfer/CsvRecord.h"

#include <algorithm>

namespace orxdb {
namespace {

/// Number of fields that the line begins with; 0 when it is no record.
std::size_t CountFields(std::string_view line, char separator) {
  CsvRecord record(separator);
  return record.Add(line) == CsvRecord::State::Wrong ? 0 : record.Fields().size();
}

std::string_view TakeLine(std::string_view& text) {
  const std::string_view line = text.substr(0, text.find_first_of("\r\n"));
  text.remove_prefix(line.size());
  text.remove_prefix(std::min(text.find_first_not_of("\r\n"), text.size()));
  return line;
}

}  // namespace

char SeparatorOf(std::string_view line) {
  constexpr std::string_view kSeparators = "\t;,";
  const auto count = [line](char separator) { return CountFields(line, separator); };
  const char most = *std::ranges::max_element(kSeparators, {}, count);
  return count(most) > 1 ? most : ',';
}

bool LooksSeparated(std::string_view text) {
  std::string_view line = TakeLine(text);
  char separator = SeparatorOf(line);
  if (line.size() == 5 && line.starts_with("sep=")) {
    separator = line.back();
    line = TakeLine(text);
  }
  const std::size_t columns = CountFields(line, separator);
  if (columns < 2) return false;
  const std::string_view next = TakeLine(text);
  return next.empty() || next.find('"') != next.npos || CountFields(next, separator) == columns;
}

CsvRecord::State CsvRecord::Add(std::string_view line) {
  for (;;) {
    if (!m_open) {
      m_fields.push_back({.text = {}, .quoted = line.starts_with('"')});
      if (m_fields.back().quoted) {
        line.remove_prefix(1);
        m_open = true;
      } else {
        const std::size_t end = std::min(line.find(m_separator), line.size());
        m_fields.back().text = line.substr(0, end);
        line.remove_prefix(end);
      }
    }
    while (m_open) {
      const std::size_t quote = line.find('"');
      m_fields.back().text += line.substr(0, quote);
      if (quote == line.npos) return State::Open;
      line.remove_prefix(quote + 1);
      m_open = line.starts_with('"');
      if (!m_open) break;
      m_fields.back().text += '"';
      line.remove_prefix(1);
    }
    if (line.empty()) return State::Whole;
    if (line.front() != m_separator) return State::Wrong;
    line.remove_prefix(1);
  }
}

}  // namespace orxdb
