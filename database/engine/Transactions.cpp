#include "database/engine/Transactions.h"

#include <sqlite3.h>
#include <utility>

#include "database/engine/Connection.h"

namespace orxdb {
namespace {

void RunOnce(Statement& statement) {
  const StatementUse use(statement);
  use->Run();
}

bool Runs(Statement& statement) noexcept {
  try {
    RunOnce(statement);
    return true;
  } catch (...) {
    return false;
  }
}

}  // namespace

Transactions::Statements::Statements(Connection& connection)
    : begin(connection.Prepare("BEGIN IMMEDIATE")),
      commit(connection.Prepare("COMMIT")),
      rollback(connection.Prepare("ROLLBACK")),
      savepoint(connection.Prepare("SAVEPOINT orx_change")),
      release(connection.Prepare("RELEASE orx_change")),
      rollbackTo(connection.Prepare("ROLLBACK TO orx_change")) {}

void Transactions::Follow(sqlite3* database) noexcept {
  sqlite3_rollback_hook(
      database, [](void* self) { ++static_cast<Transactions*>(self)->m_rollbacks; }, this);
}

/// Whether the engine has ended a transaction that is open here.
bool Transactions::IsLost() const noexcept {
  return m_depth > 0 && sqlite3_get_autocommit(m_connection.Handle()) != 0;
}

void Transactions::RequireIntact() const {
  if (!IsLost()) return;
  throw CDaoException(DaoError::Engine, "The database has taken back the whole group of changes" +
                                            (m_cause.empty() ? "" : ": " + m_cause));
}

void Transactions::Enter() {
  sqlite3* const database = m_connection.Handle();
  RequireIntact();
  if (!m_statements) m_statements = std::make_unique<Statements>(m_connection);
  if (m_depth == 0 && sqlite3_get_autocommit(database) == 0) RunOnce(m_statements->rollback);
  RunOnce(m_depth == 0 ? m_statements->begin : m_statements->savepoint);
  if (m_depth++ == 0) m_cause.clear();
}

void Transactions::Commit() {
  m_connection.Handle();
  RequireIntact();
  RunOnce(m_depth == 1 ? m_statements->commit : m_statements->release);
  --m_depth;
}

void Transactions::NoteCause() noexcept {
  try {
    sqlite3* const database = m_connection.Handle();
    if (m_cause.empty()) {
      m_cause = PlainWords(sqlite3_extended_errcode(database), sqlite3_errmsg(database));
    }
  } catch (...) {
    // The loss is told without its cause.
  }
}

void Transactions::TakeBack() noexcept {
  if (m_depth == 0) return;  // closed meanwhile
  if (IsLost()) {
    NoteCause();
  } else if (m_depth == 1) {
    Runs(m_statements->rollback);  // what does not come off now is made up for by the next one
  } else {
    Runs(m_statements->rollbackTo);
    Runs(m_statements->release);
  }
  ++m_rollbacks;
  --m_depth;
}

void Transactions::BeginGroup() {
  if (InTransaction()) throw CDaoException(DaoError::Engine, "A group of changes is open already");
  Enter();
  m_group = ++m_groups;
}

void Transactions::RequireGroup() const {
  m_connection.Handle();
  if (!InGroup()) throw CDaoException(DaoError::Engine, "No group of changes is open");
}

void Transactions::EndGroup() {
  RequireGroup();
  try {
    Commit();
  } catch (...) {
    CancelGroup();
    throw;
  }
  m_group = 0;
}

void Transactions::CancelGroup() {
  RequireGroup();
  TakeBack();
  const std::int64_t group = std::exchange(m_group, 0);
  m_connection.Listeners().TellCancelled(group);
}

void Transactions::Reserved(const std::string& table, std::int64_t key) {
  if (InTransaction()) m_reserved[table] = key;
}

std::int64_t Transactions::LastReserved(const std::string& table) const {
  const auto found = m_reserved.find(table);
  return found == m_reserved.end() ? 0 : found->second;
}

void Transactions::Close() noexcept {
  if (m_statements && m_depth > 0) Runs(m_statements->rollback);
  m_statements.reset();
  m_depth = 0;
  m_group = 0;
}

Transaction::Transaction(Connection& connection) : m_transactions(connection.GetTransactions()) {
  m_transactions.Enter();
}

Transaction::~Transaction() {
  if (m_open) m_transactions.TakeBack();
}

void Transaction::Commit() {
  m_transactions.Commit();
  m_open = false;
}

}  // namespace orxdb
