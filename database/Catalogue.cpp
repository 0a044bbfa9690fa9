// Loading the catalogue.
#include <utility>

#include "database/ListParser.h"
#include "database/ToolDbData.h"
#include "database/ToolTypeColumns.h"
#include "interface/KnownNames.h"
#include "platform/framework/Exception.h"
#include "resources/ComponentText.h"

namespace {

std::string StoredQueryName(std::string_view table) {
  return "Q_" + std::string(table);
}

/// Runs one part of the loading; false when it raised anything.
template <typename Work>
bool Succeeds(Work&& work) {
  try {
    work();
    return true;
  } catch (const CException& exception) {
    orxdb::DropMessage(exception);
  } catch (...) {
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
  ReadToolTypes();
  for (auto& [name, table] : m_toolTables) {
    if (!table.m_pToolQuery) table.OpenCursor(m_db, StoredQueryName(name));
  }
  CDaoQueryDef query(&m_db);
  query.Open(StoredQueryName("STOCK_MATERIAL"));
  m_stockMaterialSet.Open(&query);
}

void CToolDbData::ReadToolTypes() {
  if (m_toolTypesSet.GetRecordCount() <= 0) return;
  for (m_toolTypesSet.MoveFirst(); !m_toolTypesSet.IsEOF(); m_toolTypesSet.MoveNext()) {
    CToolType type = orxdb::ReadToolType(m_toolTypesSet);
    const std::string searchParams = orxdb::TextField(m_toolTypesSet, "SEARCH_PARAM");
    // Not kept, but a catalogue without the column is not read any further.
    orxdb::TextField(m_toolTypesSet, "COMMENT");
    CToolTableInfo table;
    table.m_strTemplTabName = orxdb::TextField(m_toolTypesSet, "TEMPL_TAB_NAME");
    table.m_strTableName = type.tableName;
    table.m_strToolType = type.type;
    table.m_strToolSubtype = type.subtype;
    m_toolTypes.push_back(std::move(type));
    table.m_searchParamNames = orxdb::ParseSearchParams(searchParams);
    table.m_strDefNameFormat = orxdb::TextField(m_toolTypesSet, "DEF_NAME_FORMAT");
    m_toolTables[table.m_strTableName] = table;
  }
}

void CToolDbData::LoadDataTables() {
  CDaoQueryDef query(&m_db);
  for (const std::string_view name : orxdb::kMachiningTables) {
    query.Open(StoredQueryName(name));
    auto records = std::make_unique<CDaoRecordset>();
    records->Open(&query);
    query.Close();
    m_dataTables[std::string(name)] = std::move(records);
  }
}
