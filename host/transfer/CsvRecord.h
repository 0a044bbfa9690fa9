// One record of a text with separated fields.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orxdb {

struct CsvField {
  std::string text;
  bool quoted = false;
};

/// Takes a record line by line: fields may stand in double quotes, doubled inside, and then hold
/// separators and line ends. A quote inside an unquoted field is a character like any other.
class CsvRecord {
 public:
  enum class State {
    Whole,
    Open,   ///< a quoted field goes on in the next line
    Wrong,  ///< text stands behind a closing quote
  };

  explicit CsvRecord(char separator) : m_separator(separator) {}

  /// Takes one more line without its end. After Wrong the record is of no use.
  State Add(std::string_view line);
  /// The line end inside an open field.
  void AddLineEnd(std::string_view end) { m_fields.back().text += end; }

  std::vector<CsvField>& Fields() noexcept { return m_fields; }

 private:
  char m_separator;
  std::vector<CsvField> m_fields;
  bool m_open = false;
};

/// The separator, tab, semicolon or comma, that a line of column names has most of outside quotes.
char SeparatorOf(std::string_view line);

/// Whether the text begins like a table: names in two columns or more, and in the next line as
/// many fields.
bool LooksSeparated(std::string_view text);

}  // namespace orxdb
