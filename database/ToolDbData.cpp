#include "database/ToolDbData.h"

#include <new>

#include "platform/framework/CallNotes.h"
#include "platform/framework/Exception.h"

CToolDbData* g_pToolDbData = nullptr;

CToolDbData::~CToolDbData() {
  CloseAll();
}

bool CToolDbData::OpenDatabase(const std::string& path) {
  if (m_db.IsOpen()) return true;
  try {
    m_db.Open(path);
    m_bCanTransact = m_db.CanTransact();
    m_pToolTypesQuery = std::make_unique<CDaoQueryDef>(&m_db);
    m_pToolTypesQuery->Open("TOOL_TYPES");
    return true;
  } catch (const CException&) {
    orxdb::NoteCurrentException();
  } catch (const std::bad_alloc&) {
    // Memory running out counts as one of the framework's exceptions, whoever raises it.
    orxdb::NoteCurrentException();
  }
  return false;
}

void CToolDbData::CloseAll() noexcept {
  m_toolTypesSet.Close();
  m_pToolTypesQuery.reset();
  m_stockMaterialSet.Close();
  for (auto& [name, table] : m_toolTables) {
    DeleteAllProps(table.m_propList1);
    DeleteAllProps(table.m_propList2);
    table.Reset();
  }
  m_dataTables.clear();
  m_db.Close();
}

CToolTableInfo* CToolDbData::FindToolTable(std::string_view name) noexcept {
  const auto found = m_toolTables.find(name);
  return found == m_toolTables.end() ? nullptr : &found->second;
}

const orxdb::FieldType& CToolDbData::TypeOfField(std::string_view table, const std::string& field) {
  CDaoFieldInfo info;
  try {
    if (const CToolTableInfo* tools = FindToolTable(table)) {
      tools->ToolSet().GetFieldInfo(field, info);
    }
  } catch (const CException&) {
    orxdb::NoteCurrentException();
  }
  return orxdb::FieldTypeOf(info.m_nType);
}

CDaoRecordset* CToolDbData::FindDataTable(std::string_view name) noexcept {
  const auto found = m_dataTables.find(name);
  return found == m_dataTables.end() ? nullptr : found->second.get();
}
