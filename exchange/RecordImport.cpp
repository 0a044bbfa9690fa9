#include "exchange/RecordImport.h"

#include <string>
#include <utility>
#include <vector>

#include "browse/FieldVariantTypes.h"
#include "browse/PropertyArrays.h"
#include "exchange/ImportGroups.h"
#include "platform/framework/CallNotes.h"
#include "platform/framework/Text.h"
#include "values/ValueText.h"

namespace orxdb {
namespace {

/// One import into the table that a file names.
class RecordImport {
 public:
  RecordImport(CToolDbData& data, IOrxDbObj& own, std::string table,
               const std::vector<std::string>& names)
      : m_groups(data),
        m_data(data),
        m_own(own),
        m_table(std::move(table)),
        m_wideTable(WidenToBstr(m_table)) {
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

  /// Adds a tool unless the table has one with the same values. False when a message has ended the
  /// data object.
  bool Take(std::vector<std::string> values) {
    if (values.size() != m_columns.size()) {
      NoteCause("A line of the file has another number of values than there are names");
      return true;
    }
    // An unknown table gets an entry without a recordset: hosts see it in the number of tables.
    const CToolTableInfo& table = m_data.ToolTables()[m_table];
    if (!table.m_pToolSet) {
      NoteCause("There is no table " + m_table);
      return true;
    }
    m_unstored.push_back(std::move(values));
    AddIfMissing(*table.m_pToolSet, m_unstored.back());
    if (!m_groups.HasData()) return false;
    if (m_groups.TakeLoss()) return TakeOneByOne(*table.m_pToolSet);
    if (m_groups.IsFull()) m_groups.End();
    if (m_groups.IsStored()) m_unstored.clear();
    return true;
  }

  /// Stores what has been added; raises when that fails.
  void End() {
    if (m_groups.HasData()) m_groups.End();
  }

 private:
  /// What made the database take back a group may be the matter of one tool alone.
  bool TakeOneByOne(CDaoRecordset& tools) {
    for (const auto& values : std::exchange(m_unstored, {})) {
      AddIfMissing(tools, values);
      if (!m_groups.HasData()) return false;
      if (!m_groups.TakeLoss()) m_groups.End();
    }
    return true;
  }

  void AddIfMissing(CDaoRecordset& tools, const std::vector<std::string>& values) {
    m_othersChanged |= m_groups.Enter();
    const std::string criteria = SameToolCriteria(m_columns, values);
    bool found = tools.FindFirst(criteria);
    if (!found && std::exchange(m_othersChanged, false)) {
      tools.Requery();
      found = tools.FindFirst(criteria);
    }
    if (!found) Add(values);
    m_groups.Leave();
  }

  void Add(const std::vector<std::string>& values) {
    Variant tool = MakeVector(VT_VARIANT, values.size(), [&](std::size_t i) {
      Variant value;
      // Text comes back with a failing status; a value of an unknown type stays empty.
      ParseVariantText(values[i].c_str(), m_columns[i].type, *value.ptr());
      return value.detach();
    });
    LONG id = -1;
    m_own.AddNewRecord(m_wideTable.get(), m_names.ptr(), tool.ptr(), &id);
  }

  ImportGroups m_groups;
  CToolDbData& m_data;
  IOrxDbObj& m_own;
  std::string m_table;
  Bstr m_wideTable;
  std::vector<ExchangeColumn> m_columns;
  Variant m_names;
  bool m_othersChanged = false;                      ///< perhaps, since the table's query ran
  std::vector<std::vector<std::string>> m_unstored;  ///< values of the records of the open group
};

}  // namespace

void ImportRecords(CToolDbData& data, IOrxDbObj& own, ExchangeReader file) {
  const ExchangeHeader header = file.ReadHeader();
  if (!header.IsImported()) return NoteCause("The file is no exchange file");
  const std::vector<std::string> names = file.ReadNames();
  if (names.empty()) return NoteCause("The file names no fields");
  RecordImport import(data, own, header.table, names);
  try {
    while (!file.AtEnd()) {
      // At the end the last line is taken once more: its tool meets itself and is there already.
      file.Next();
      if (file.IsTooLong()) {
        NoteCause("A line of the file is too long");
      } else if (!import.Take(SplitFields(file.Text()))) {
        return;
      }
    }
  } catch (...) {
    import.End();  // what was added before stays
    throw;
  }
  import.End();
}

}  // namespace orxdb
