#include <algorithm>
#include <array>
#include <cstdlib>

#include "browse/FieldVariantTypes.h"
#include "browse/PropertyArrays.h"
#include "exchange/ToolRecordExchange.h"
#include "platform/automation/Ascii.h"
#include "platform/framework/Text.h"
#include "values/ValueText.h"

namespace orxdb {
namespace {

/// A line of so many characters, its end included, is too long. It is read in pieces: the first is
/// dropped, what is left counts as a line of its own.
constexpr std::size_t kTooLong = 65534;

/// Scans a number and moves `text` behind it; false without a number.
bool ScanNumber(const char*& text, int& number) {
  char* end = nullptr;
  const long scanned = std::strtol(text, &end, 10);
  if (end == text) return false;
  text = end;
  number = static_cast<int>(scanned);
  return true;
}

/// The condition that a tool already there meets in one column.
std::string SameValue(const std::string& column, VARTYPE type, const std::string& value) {
  const bool isText = type == VT_BSTR;
  const std::string field = "[" + column + "] ";
  if (isText && value.empty()) return "(" + field + "is NULL OR " + field + "= \"\")";
  return field + "= " + (isText ? '"' + value + '"' : value);
}

}  // namespace

bool IsComparableTypeName(std::string_view name) {
  constexpr std::array<std::string_view, 5> kNotCompared = {"CURRENCY", "DATETIME", "LONGBINARY",
                                                            "LONGTEXT", "GUID"};
  return std::ranges::find(kNotCompared, name) == kNotCompared.end();
}

/// Reads the next line into `m_line`; false when it is too long to be used. A zero byte ends what
/// counts of a line.
bool ToolRecordExchange::ReadLine(TextFile& file) {
  file.ReadLine(m_line, kTooLong);
  const bool usable = m_line.size() < kTooLong;
  m_line.resize(std::min(m_line.find('\0'), m_line.size()));
  return usable;
}

void ToolRecordExchange::ReadHeader(TextFile& file) {
  for (int line = 0; line < 3 && !file.AtEnd(); ++line) {
    const bool usable = ReadLine(file);
    const std::size_t separator = m_line.find('=');
    if (!usable || separator == m_line.npos) continue;
    const std::string_view key = std::string_view(m_line).substr(0, separator);
    const std::string value = m_line.substr(separator + 1);
    const std::string_view trimmed = Trim(std::string_view(value), " \t\n\v\f\r");
    if (line == 0 && key == kVersionKey) ParseVersion(value);
    if (line == 1 && key == kTableNameKey) m_header.m_strTableName = trimmed;
    if (line == 2 && key == kExportTypeKey) m_header.m_strExportType = trimmed;
  }
}

void ToolRecordExchange::ParseVersion(const std::string& text) {
  const char* rest = text.c_str();
  if (!ScanNumber(rest, m_header.m_nMajor) || *rest == '\0') return;
  ++rest;
  ScanNumber(rest, m_header.m_nMinor);
}

std::size_t ToolRecordExchange::ReadFieldLine(TextFile& file, std::vector<std::string>& fields) {
  fields.clear();
  return !file.AtEnd() && ReadLine(file) ? SplitFields(m_line, fields) : 0;
}

std::vector<ToolRecordExchange::Column> ToolRecordExchange::DescribeColumns(
    CToolDbData& data, IOrxDbObj& own, const std::vector<std::string>& names) const {
  const Bstr table = WidenToBstr(m_header.m_strTableName);
  std::vector<Column> columns;
  VARTYPE type = VT_EMPTY;  // a column without a type of its own counts as the one before
  for (const std::string& name : names) {
    USHORT unused = VT_EMPTY;
    own.GetFieldType(table.get(), WidenToBstr(name).get(), &unused);  // reports unknown fields
    GetFieldVariantType(data, m_header.m_strTableName, name, type);
    columns.push_back(
        {.name = name,
         .type = type,
         .comparable = IsComparableTypeName(data.GetFieldTypeName(m_header.m_strTableName, name))});
  }
  return columns;
}

void ToolRecordExchange::ImportRecords(CToolDbData& data, IOrxDbObj& own, TextFile& file) {
  ReadHeader(file);
  if (m_header.m_nMajor != 1 || m_header.m_nMinor != 0 ||
      m_header.m_strExportType != kExportedByTable) {
    return;
  }
  std::vector<std::string> fields;
  if (ReadFieldLine(file, fields) == 0) return;
  const std::vector<Column> columns = DescribeColumns(data, own, fields);
  Variant names = MakeVector(VT_BSTR, columns.size(),
                             [&](std::size_t i) { return WidenToBstr(columns[i].name).detach(); });
  m_line.clear();  // no tool is made of the names when no line follows them
  while (!file.AtEnd()) {
    if (ReadLine(file) && SplitFields(m_line, fields) == columns.size()) {
      ImportRecord(data, own, columns, names.ptr(), fields);
    }
  }
}

/// Adds one tool unless the table has one with the same values.
void ToolRecordExchange::ImportRecord(CToolDbData& data, IOrxDbObj& own,
                                      const std::vector<Column>& columns, VARIANT* names,
                                      const std::vector<std::string>& values) {
  std::string duplicates;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (!columns[i].comparable) continue;
    if (!duplicates.empty()) duplicates += " AND ";
    duplicates += SameValue(columns[i].name, columns[i].type, values[i]);
  }
  // An unknown table gets an entry without a recordset: hosts see it in the number of tables.
  const CToolTableInfo& table = data.ToolTables()[m_header.m_strTableName];
  if (!table.m_pToolSet || table.m_pToolSet->FindFirst(duplicates)) return;

  Variant tool = MakeVector(VT_VARIANT, columns.size(), [&](std::size_t i) {
    Variant value;
    // Text comes back with a failing status; a value of an unknown type stays empty.
    ParseVariantText(values[i].c_str(), columns[i].type, *value.ptr());
    return value.detach();
  });
  LONG id = -1;
  own.AddNewRecord(WidenToBstr(m_header.m_strTableName).get(), names, tool.ptr(), &id);
}

}  // namespace orxdb
