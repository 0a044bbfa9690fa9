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

#include <string>
#include <string_view>
#include <vector>

#include "database/ToolDbData.h"
#include "interface/IOrxDbObj.h"
#include "platform/framework/TextFile.h"

namespace orxdb {

/// The names that the lines of the header begin with, and the one kind of export that is read.
inline constexpr std::string_view kVersionKey = "ORX_tool_table_version";
inline constexpr std::string_view kTableNameKey = "ORX_tool_table_name";
inline constexpr std::string_view kExportTypeKey = "ORX_table_export_type";
inline constexpr std::string_view kExportedByTable = "ORX_exported_by_table";

/// Type names of fields that an import compares with the tools already there; all others count.
bool IsComparableTypeName(std::string_view name);

/// One export or one import.
class ToolRecordExchange {
 public:
  struct Header {
    int m_nMajor = 1;
    int m_nMinor = 0;
    std::string m_strTableName;
    std::string m_strExportType;
  };

  /// For an export of the table; for an import without a name, which then comes from the file.
  explicit ToolRecordExchange(std::string tableName = {}) {
    m_header.m_strTableName = std::move(tableName);
  }

  const Header& GetHeader() const noexcept { return m_header; }

  // Text
  /// The text between double quotes, with its backslashes, double quotes, line ends and tabs
  /// escaped.
  static std::string EscapeField(std::string_view text);
  /// Takes enclosing quotes and escapes away; a backslash before any other character takes that
  /// with it.
  static std::string UnescapeField(std::string_view text);
  /// Splits a line into unescaped fields and gives their number. Every double quote begins or ends
  /// a field, an escaped one too: a value with a double quote falls apart.
  static std::size_t SplitFields(std::string_view line, std::vector<std::string>& fields);

  // Export
  void WriteHeader(TextFile& file) const;
  /// Whether a field travels: hidden bookkeeping and cutting data do not, nor what follows from a
  /// tap's tapping head.
  bool IsFieldExported(std::string_view name) const;
  /// Writes the names of the exported fields, then all records from the first to the last, and
  /// leaves the recordset behind the last. Only the names are written when the recordset stands at
  /// an end, nothing for null or a closed one. A database error ends the file there.
  void WriteRecords(CDaoRecordset* records, TextFile& file) const;
  void ExportTable(CDaoRecordset* records, TextFile& file) const;

  // Import
  /// Reads up to three lines of the header; what a line does not give keeps its preset.
  void ReadHeader(TextFile& file);
  /// Major and minor number with any one character between them.
  void ParseVersion(const std::string& text);
  /// The fields of the next line; their number.
  std::size_t ReadFieldLine(TextFile& file, std::vector<std::string>& fields);
  /// Adds the tools of the file by AddNewRecord of the component, except those that the table named
  /// by the file already holds. Lines that are too long or have another number of fields are passed
  /// over. Raises CDaoException for criteria that the database refuses; tools added before stay.
  void ImportRecords(CToolDbData& data, IOrxDbObj& own, TextFile& file);

 private:
  /// A column of the file and the field that it goes to.
  struct Column {
    std::string name;
    VARTYPE type = VT_EMPTY;
    bool comparable = true;
  };

  bool ReadLine(TextFile& file);
  std::vector<Column> DescribeColumns(CToolDbData& data, IOrxDbObj& own,
                                      const std::vector<std::string>& names) const;
  void ImportRecord(CToolDbData& data, IOrxDbObj& own, const std::vector<Column>& columns,
                    VARIANT* names, const std::vector<std::string>& values);

  Header m_header;
  /// The line read last. A read that meets nothing but the end of the file leaves it, and it is
  /// processed once more: the last record meets itself as its own duplicate.
  std::string m_line;
};

}  // namespace orxdb
