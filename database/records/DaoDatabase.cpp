#include "database/records/DaoDatabase.h"

#include "database/engine/Connection.h"
#include "database/engine/DatabaseFile.h"
#include "platform/framework/DaoException.h"
#include "platform/framework/ExecutablePath.h"

CDaoDatabase::~CDaoDatabase() {
  Close();
}

void CDaoDatabase::Open(const std::string& path, bool exclusive, bool readOnly,
                        const std::string& connect) {
  if (IsOpen()) throw CDaoException(DaoError::Engine, "The database is open already");
  if (!connect.empty()) throw CDaoException(DaoError::Engine, "There is nothing to connect to");
  if (path.empty()) throw CDaoException(DaoError::NotFound, "The path is empty");
  m_connection = orxdb::Connection::Open(orxdb::NativePath(path), exclusive, readOnly);
}

bool CDaoDatabase::IsOpen() const noexcept {
  return m_connection && m_connection->IsOpen();
}

bool CDaoDatabase::CanTransact() const {
  GetConnection();
  return true;
}

double CDaoDatabase::ChangeNumber() const {
  return static_cast<double>(GetConnection()->Stamp().others);
}

void CDaoDatabase::BeginChanges() {
  GetConnection()->GetTransactions().BeginGroup();
}
void CDaoDatabase::EndChanges() {
  GetConnection()->GetTransactions().EndGroup();
}
void CDaoDatabase::CancelChanges() {
  GetConnection()->GetTransactions().CancelGroup();
}
bool CDaoDatabase::IsChanging() const noexcept {
  return m_connection && m_connection->GetTransactions().InGroup();
}

bool CDaoDatabase::HasLostChanges() const noexcept {
  return m_connection && m_connection->GetTransactions().HasLostGroup();
}

void CDaoDatabase::BackUp(const std::string& file, bool replace) const {
  orxdb::BackUpDatabase(GetConnection()->Path(), orxdb::NativePath(file), replace);
}

void CDaoDatabase::Close() noexcept {
  if (m_connection) m_connection->Close();
  m_connection.reset();
}

const std::shared_ptr<orxdb::Connection>& CDaoDatabase::GetConnection() const {
  if (!IsOpen()) throw CDaoException(DaoError::Closed, "The database is closed");
  return m_connection;
}

void AfxDaoTerm() noexcept {
  orxdb::CloseAllConnections();
}
