#include "database/ToolTableInfo.h"

CToolTableInfo& CToolTableInfo::operator=(const CToolTableInfo& other) {
  if (this == &other) return *this;
  m_pToolSet = other.m_pToolSet;
  m_pToolQuery = other.m_pToolQuery;
  m_strTableName = other.m_strTableName;
  m_strToolType = other.m_strToolType;
  m_strToolSubtype = other.m_strToolSubtype;
  m_propList1 = other.m_propList1;
  m_propList2 = other.m_propList2;
  m_searchParamNames = other.m_searchParamNames;
  m_strDefNameFormat = other.m_strDefNameFormat;
  m_strTemplTabName = other.m_strTemplTabName;
  return *this;
}

CDaoRecordset& CToolTableInfo::ToolSet() const {
  if (!m_pToolSet) {
    throw CDaoException(DaoError::Closed, "The table " + m_strTableName + " has no recordset");
  }
  return *m_pToolSet;
}

bool CToolTableInfo::IsLookupField(const CDaoFieldInfo& field) const noexcept {
  return !field.m_strSourceTable.empty() && field.m_strSourceTable != m_strTableName &&
         !field.m_strSourceField.empty();
}

void CToolTableInfo::OpenCursor(CDaoDatabase& database, const std::string& queryName) {
  m_pToolQuery = std::make_shared<CDaoQueryDef>(&database);
  m_pToolQuery->Open(queryName);
  m_pToolSet = std::make_shared<CDaoRecordset>();
  m_pToolSet->Open(m_pToolQuery.get());
}

void CToolTableInfo::Reset() noexcept {
  if (m_pToolSet) m_pToolSet->Close();
  m_pToolSet.reset();
  if (m_pToolQuery) m_pToolQuery->Close();
  m_pToolQuery.reset();
  for (std::string* text :
       {&m_strTableName, &m_strToolType, &m_strToolSubtype, &m_strDefNameFormat}) {
    text->clear();
  }
}
