#include "database/records/DaoQueryDef.h"

#include "database/engine/Connection.h"
#include "platform/framework/DaoException.h"

void CDaoQueryDef::Open(const std::string& name) {
  Close();
  if (m_database == nullptr) throw CDaoException(DaoError::Closed, "There is no database");
  if (m_database->GetConnection()->GetSchema().Definition(name) == nullptr) {
    throw CDaoException(DaoError::NotFound, "There is no stored query " + name);
  }
  m_name = name;
  m_open = true;
}

void CDaoQueryDef::Create(const std::string& sql) {
  Close();
  if (m_database == nullptr) throw CDaoException(DaoError::Closed, "There is no database");
  m_database->GetConnection();
  m_sql = sql;
  m_open = true;
}

void CDaoQueryDef::Close() noexcept {
  m_name.clear();
  m_sql.clear();
  m_open = false;
}
