#include "database/ToolDbData.h"

#include <algorithm>
#include <new>

#include "database/ToolTypeColumns.h"
#include "platform/framework/Exception.h"
#include "resources/ComponentText.h"

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
  } catch (const CException& exception) {
    orxdb::DropMessage(exception);
  } catch (const std::bad_alloc&) {
    // Memory running out counts as one of the framework's exceptions, whoever raises it.
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

std::string CToolDbData::GetFieldTypeName(std::string_view table, const std::string& field) {
  static constexpr std::array<const char*, 16> kTypeNames = {
      "",         "BOOLEAN", "BYTE", "SHORT",      "LONG",     "CURRENCY", "SINGLE", "DOUBLE",
      "DATETIME", "",        "TEXT", "LONGBINARY", "LONGTEXT", "",         "",       "GUID"};
  const CToolTableInfo* tools = FindToolTable(table);
  if (!tools) return {};
  try {
    CDaoFieldInfo info;
    tools->ToolSet().GetFieldInfo(field, info);
    const auto type = static_cast<std::size_t>(info.m_nType);
    return type < kTypeNames.size() ? kTypeNames[type] : "";
  } catch (const CException& exception) {
    orxdb::DropMessage(exception);
    return {};
  }
}

CDaoRecordset* CToolDbData::FindDataTable(std::string_view name) noexcept {
  const auto found = m_dataTables.find(name);
  return found == m_dataTables.end() ? nullptr : found->second.get();
}

bool CToolDbData::IsHiddenProperty(std::string_view name) noexcept {
  return std::ranges::any_of(kHiddenProps, [name](std::string_view part) {
    return name.find(part) != std::string_view::npos;
  });
}
