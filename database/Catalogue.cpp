// Loading the catalogue.
#include <utility>

#include "database/ListParser.h"
#include "database/ToolDbData.h"
#include "database/ToolRules.h"
#include "interface/KnownNames.h"
#include "platform/framework/CallNotes.h"
#include "platform/framework/Exception.h"

using orxdb::CatalogueRow;
using orxdb::StoredQueryOf;
using orxdb::TextField;

namespace {

/// Runs one part of the loading; false when it raised anything.
template <typename Work>
bool Succeeds(Work&& work) {
  try {
    work();
    return true;
  } catch (...) {
    orxdb::NoteCurrentException();
  }
  return false;
}

}  // namespace

bool CToolDbData::LoadCatalogue() {
  // Each part goes as far as it can: machining data does not suffer from a missing tool table.
  const bool toolTables = m_pToolTypesQuery && Succeeds([this] { LoadToolTables(); });
  const bool dataTables = Succeeds([this] { LoadDataTables(); });
  return toolTables && dataTables;
}

void CToolDbData::LoadToolTables() {
  m_toolTypesSet.Open(m_pToolTypesQuery.get());
  ReadRows();
  for (auto& [name, table] : m_toolTables) {
    if (!table.m_pToolQuery) table.OpenCursor(m_db, StoredQueryOf(name));
  }
  CDaoQueryDef query(&m_db);
  query.Open(StoredQueryOf("STOCK_MATERIAL"));
  m_stockMaterialSet.Open(&query);
}

void CToolDbData::ReadRows() {
  if (m_toolTypesSet.GetRecordCount() <= 0) return;
  for (m_toolTypesSet.MoveFirst(); !m_toolTypesSet.IsEOF(); m_toolTypesSet.MoveNext()) {
    CatalogueRow row = CatalogueRow::Read(m_toolTypesSet);
    const std::string searchParams = TextField(m_toolTypesSet, "SEARCH_PARAM");
    // Not kept, but a catalogue without the column is not read any further.
    TextField(m_toolTypesSet, "COMMENT");
    CToolTableInfo table;
    table.m_strTemplTabName = TextField(m_toolTypesSet, "TEMPL_TAB_NAME");
    table.m_strTableName = row.tableName;
    table.m_strToolType = row.type;
    table.m_strToolSubtype = row.subtype;
    m_rows.push_back(std::move(row));
    table.m_searchParamNames = orxdb::ParseSearchParams(searchParams);
    table.m_strDefNameFormat = TextField(m_toolTypesSet, "DEF_NAME_FORMAT");
    m_toolTables[table.m_strTableName] = table;
  }
}

void CToolDbData::LoadDataTables() {
  CDaoQueryDef query(&m_db);
  for (const std::string_view name : orxdb::kMachiningTables) {
    query.Open(StoredQueryOf(name));
    auto records = std::make_unique<CDaoRecordset>();
    records->Open(&query);
    query.Close();
    m_dataTables[std::string(name)] = std::move(records);
  }
}
