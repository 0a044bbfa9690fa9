#include <algorithm>
#include <array>
#include <span>

#include "browse/PropertyArrays.h"
#include "database/ToolRules.h"
#include "exchange/ToolRecordExchange.h"
#include "values/ValueText.h"

namespace orxdb {
namespace {

/// Parts of names of fields that do not travel.
constexpr std::array<std::string_view, 5> kSkippedParts = {"ID", "AUX_", "Feed", "Speed",
                                                           "IsFavorite"};

/// The text of a value; nothing, not even quotes, for a type that has no text.
std::string FieldText(const VARIANT& value) {
  if (value.vt == VT_EMPTY || value.vt == VT_NULL) return ToolRecordExchange::EscapeField({});
  // The database's text is narrow, as the file is.
  if (value.vt == VT_BSTR) return ToolRecordExchange::EscapeField(Bytes(value.bstrVal));
  const std::optional<std::string> text = VariantText(value);
  return text ? ToolRecordExchange::EscapeField(*text) : std::string();
}

/// A line for each record, from the first to the last; none when the recordset stands at an end.
void WriteLines(CDaoRecordset& records, std::span<const int> fields, TextFile& file) {
  if (!HasCurrentRecord(records)) return;
  std::vector<Variant> values(fields.size());
  std::string line;
  for (records.MoveFirst(); HasCurrentRecord(records); records.MoveNext()) {
    try {
      records.GetFieldValues(fields, values);
    } catch (const CDaoException& exception) {
      if (exception.Error() != DaoError::RecordDeleted) throw;
      continue;  // deleted by another process since the move, which steps over such records
    }
    line.clear();
    for (const Variant& value : values) line += FieldText(value.get()) += '\t';
    file.Write(line += '\n');
  }
}

}  // namespace

void ToolRecordExchange::WriteHeader(TextFile& file) const {
  std::string header(kVersionKey);
  header += '=' + std::to_string(m_header.m_nMajor) + '.' + std::to_string(m_header.m_nMinor);
  header += '\n';
  header.append(kTableNameKey) += '=' + m_header.m_strTableName + '\n';
  header.append(kExportTypeKey) += '=';
  header.append(kExportedByTable) += '\n';
  file.Write(header);
}

bool ToolRecordExchange::IsFieldExported(std::string_view name) const {
  const bool skipped = std::ranges::any_of(
      kSkippedParts, [name](std::string_view part) { return name.find(part) != name.npos; });
  return !skipped && !IsUnwrittenField(m_header.m_strTableName, name);
}

void ToolRecordExchange::WriteRecords(CDaoRecordset* records, TextFile& file) const {
  if (!records || !records->IsOpen()) return;
  try {
    std::vector<int> exported;
    std::string line;
    for (int i = 0; i < records->GetFieldCount(); ++i) {
      const std::string& name = records->GetFieldName(i);
      if (!IsFieldExported(name)) continue;
      exported.push_back(i);
      line += EscapeField(name) += '\t';
    }
    file.Write(line += '\n');
    WriteLines(*records, exported, file);
  } catch (...) {
    // The file keeps the lines written so far.
  }
}

void ToolRecordExchange::ExportTable(CDaoRecordset* records, TextFile& file) const {
  WriteHeader(file);
  WriteRecords(records, file);
}

}  // namespace orxdb
