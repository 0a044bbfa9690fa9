#include <algorithm>

#include "browse/PropertyArrays.h"
#include "database/ToolRules.h"
#include "exchange/ToolRecordExchange.h"
#include "values/ValueText.h"

namespace orxdb {
namespace {

/// The text of a value; nothing, not even quotes, for a type that has no text.
std::string FieldText(const VARIANT& value) {
  if (value.vt == VT_EMPTY || value.vt == VT_NULL) return ToolRecordExchange::EscapeField({});
  // The database's text is narrow, as the file is.
  if (value.vt == VT_BSTR) return ToolRecordExchange::EscapeField(Bytes(value.bstrVal));
  const std::optional<std::string> text = VariantText(value);
  return text ? ToolRecordExchange::EscapeField(*text) : std::string();
}

/// All values of a record, used again for the next one.
class RecordValues {
 public:
  explicit RecordValues(std::size_t count) : m_values(count) {}
  RecordValues(const RecordValues&) = delete;
  RecordValues& operator=(const RecordValues&) = delete;
  ~RecordValues() { Clear(); }

  void Read(const CDaoRecordset& records) {
    Clear();
    records.GetFieldValues(m_values);
  }
  const VARIANT& operator[](std::size_t field) const { return m_values[field]; }

 private:
  void Clear() {
    for (VARIANT& value : m_values) VariantClear(&value);
  }

  std::vector<VARIANT> m_values;
};

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
      m_skipFields, [name](std::string_view part) { return name.find(part) != name.npos; });
  return !skipped && !(IsTapTable(m_header.m_strTableName) && IsTapOperationField(name));
}

void ToolRecordExchange::WriteRecords(CDaoRecordset* records, TextFile& file) const {
  if (!records || !records->IsOpen()) return;
  try {
    std::vector<std::size_t> exported;
    std::string line;
    const auto count = static_cast<std::size_t>(records->GetFieldCount());
    CDaoFieldInfo field;
    for (std::size_t i = 0; i < count; ++i) {
      records->GetFieldInfo(static_cast<int>(i), field);
      if (!IsFieldExported(field.m_strName)) continue;
      exported.push_back(i);
      line += EscapeField(field.m_strName) += '\t';
    }
    file.Write(line += '\n');

    if (!HasCurrentRecord(*records)) return;
    RecordValues values(count);
    for (records->MoveFirst(); HasCurrentRecord(*records); records->MoveNext()) {
      values.Read(*records);
      line.clear();
      for (const std::size_t i : exported) line += FieldText(values[i]) += '\t';
      file.Write(line += '\n');
    }
  } catch (...) {
    // The file keeps the lines written so far.
  }
}

void ToolRecordExchange::ExportTable(CDaoRecordset* records, TextFile& file) const {
  WriteHeader(file);
  WriteRecords(records, file);
}

}  // namespace orxdb
