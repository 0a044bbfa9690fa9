#include "exchange/RecordExport.h"

#include <optional>
#include <span>
#include <vector>

#include "browse/PropertyArrays.h"
#include "database/ToolRules.h"
#include "interface/ExchangeFormat.h"
#include "platform/framework/CallNotes.h"
#include "values/ValueText.h"

namespace orxdb {
namespace {

/// The text of a value; nothing, not even quotes, for a type that has no text.
std::string FieldText(const VARIANT& value) {
  if (value.vt == VT_EMPTY || value.vt == VT_NULL) return EscapeField({});
  // The database's text is narrow, as the file is.
  if (value.vt == VT_BSTR) return EscapeField(Bytes(value.bstrVal));
  const std::optional<std::string> text = VariantText(value);
  return text ? EscapeField(*text) : std::string();
}

/// Writes the names of the fields that travel and gives their positions.
std::vector<int> WriteNames(const std::string& table, const CDaoRecordset& records,
                            TextFile& file) {
  std::vector<int> exported;
  std::string line;
  for (int i = 0; i < records.GetFieldCount(); ++i) {
    const std::string& name = records.GetFieldName(i);
    if (!IsExportedField(table, name)) continue;
    exported.push_back(i);
    line += EscapeField(name) += '\t';
  }
  file.Write(line += '\n');
  return exported;
}

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

void ExportRecords(const std::string& table, CDaoRecordset& records, TextFile& file) {
  file.Write(ExchangeHeaderLines(table));
  try {
    const std::vector<int> exported = WriteNames(table, records, file);
    WriteLines(records, exported, file);
  } catch (...) {
    NoteCurrentException();  // the file keeps the lines written so far
  }
}

}  // namespace orxdb
