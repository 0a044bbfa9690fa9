#include "exchange/RecordImport.h"

#include <string>
#include <vector>

#include "browse/FieldVariantTypes.h"
#include "browse/PropertyArrays.h"
#include "platform/framework/Text.h"
#include "values/ValueText.h"

namespace orxdb {
namespace {

/// One import into the table that a file names.
class RecordImport {
 public:
  RecordImport(CToolDbData& data, IOrxDbObj& own, std::string table,
               const std::vector<std::string>& names)
      : m_data(data), m_own(own), m_table(std::move(table)), m_wideTable(WidenToBstr(m_table)) {
    VARTYPE type = VT_EMPTY;  // a column without a type of its own counts as the one before
    for (const std::string& name : names) {
      USHORT unused = VT_EMPTY;
      own.GetFieldType(m_wideTable.get(), WidenToBstr(name).get(),
                       &unused);  // reports unknown ones
      GetFieldVariantType(data, m_table, name, type);
      m_columns.push_back({name, type, data.TypeOfField(m_table, name).comparable});
    }
    m_names = MakeVector(VT_BSTR, names.size(),
                         [&](std::size_t i) { return WidenToBstr(names[i]).detach(); });
  }

  /// Adds a tool unless the table has one with the same values.
  void Take(const std::vector<std::string>& values) {
    if (values.size() != m_columns.size()) return;
    // An unknown table gets an entry without a recordset: hosts see it in the number of tables.
    const CToolTableInfo& table = m_data.ToolTables()[m_table];
    if (!table.m_pToolSet || table.m_pToolSet->FindFirst(SameToolCriteria(m_columns, values))) {
      return;
    }
    Variant tool = MakeVector(VT_VARIANT, values.size(), [&](std::size_t i) {
      Variant value;
      // Text comes back with a failing status; a value of an unknown type stays empty.
      ParseVariantText(values[i].c_str(), m_columns[i].type, *value.ptr());
      return value.detach();
    });
    LONG id = -1;
    m_own.AddNewRecord(m_wideTable.get(), m_names.ptr(), tool.ptr(), &id);
  }

 private:
  CToolDbData& m_data;
  IOrxDbObj& m_own;
  std::string m_table;
  Bstr m_wideTable;
  std::vector<ExchangeColumn> m_columns;
  Variant m_names;
};

}  // namespace

void ImportRecords(CToolDbData& data, IOrxDbObj& own, ExchangeReader file) {
  const ExchangeHeader header = file.ReadHeader();
  if (!header.IsImported()) return;
  const std::vector<std::string> names = file.ReadNames();
  if (names.empty()) return;
  RecordImport import(data, own, header.table, names);
  // The message that AddNewRecord may show lets the host run: it can end the data object.
  while (&data == g_pToolDbData && !file.AtEnd()) {
    // At the end the last line is taken once more: its tool meets itself and is there already.
    file.Next();
    if (!file.IsTooLong()) import.Take(SplitFields(file.Text()));
  }
}

}  // namespace orxdb
