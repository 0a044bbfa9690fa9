// The exchange file, in which the tools of one table travel as text:
//
//   ORX_tool_table_version=1.0
//   ORX_tool_table_name=TAP
//   ORX_table_export_type=ORX_exported_by_table
//   "Name"<tab>"Diameter"<tab>
//   "M6"<tab>"6.000000"<tab>
//
// Three lines of the header, the names of the fields, then a line for each tool. Every field stands
// in double quotes with backslash escapes and is followed by a tab. Lines are written with CR LF.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/automation/Types.h"
#include "platform/framework/TextFile.h"

namespace orxdb {

/// The kinds of exports that files name; the first alone is written and imported.
inline constexpr std::string_view kExportedByTable = "ORX_exported_by_table";
inline constexpr std::string_view kExportedByQuery = "ORX_exported_by_query";

/// What the header of a file tells; what it does not tell keeps its preset.
struct ExchangeHeader {
  int majorVersion = 1;
  int minorVersion = 0;
  std::string table;
  std::string exportType;

  /// Takes what a line of the header tells, the first one being 0.
  void Take(int line, std::string_view text);
  /// "1.0".
  std::string Version() const;
  /// Whether files of such a header are imported.
  bool IsImported() const noexcept {
    return majorVersion == 1 && minorVersion == 0 && exportType == kExportedByTable;
  }
};

/// The three lines of the header of an export of the table.
std::string ExchangeHeaderLines(const std::string& table);

/// The text between double quotes, with its backslashes, double quotes, line ends and tabs escaped.
std::string EscapeField(std::string_view text);
/// Takes enclosing quotes and escapes away; a backslash before any other character takes that
/// with it.
std::string UnescapeField(std::string_view text);
/// The unescaped fields of a line. Every double quote begins or ends a field, an escaped one too: a
/// value with a double quote falls apart.
std::vector<std::string> SplitFields(std::string_view line);

/// Reads a file line by line. A line of 65534 characters or more, its end included, is too long: it
/// comes in pieces, each a line of its own, and those that are too long have no meaning.
///
///   ExchangeReader reader(TextFile::OpenForReading(path));
///   const ExchangeHeader header = reader.ReadHeader();
///   const std::vector<std::string> names = reader.ReadNames();
///   while (reader.Next()) Use(SplitFields(reader.Text()));
class ExchangeReader {
 public:
  explicit ExchangeReader(TextFile file) noexcept : m_file(std::move(file)) {}

  /// Reads up to three lines as the header.
  ExchangeHeader ReadHeader();
  /// Reads a line as the names of the fields, and forgets it; none when it is none.
  std::vector<std::string> ReadNames();
  /// Reads the next line. False when the file has nothing left: the line then stays the one before.
  bool Next();
  /// Whether a read has met the end of the file. A last line with its end has not: only the next
  /// read does.
  bool AtEnd() const noexcept { return m_file.AtEnd(); }

  // The line read last
  bool IsTooLong() const noexcept;
  /// What counts of it: a zero byte ends it. Nothing when it is too long.
  std::string_view Text() const noexcept;
  /// Whether it is what a line that was too long left.
  bool IsRest() const noexcept { return m_isRest; }
  /// The number of its line in the file, from 1.
  long long Number() const noexcept { return m_number; }

 private:
  TextFile m_file;
  std::string m_line;
  bool m_isRest = false;
  long long m_number = 0;
};

/// A field of the file and what it is in the table that it goes to.
struct ExchangeColumn {
  std::string name;
  VARTYPE type = VT_EMPTY;
  bool isCompared = true;  ///< whether it tells tools apart
};

/// The condition that a tool meets which is taken for the one of a line: the same values in all
/// columns that are compared. It is not sound for every line: a value that holds a double quote and
/// a number without digits make a text that the database refuses.
std::string SameToolCriteria(std::span<const ExchangeColumn> columns,
                             std::span<const std::string> values);

}  // namespace orxdb
