#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>

#include "database/engine/Statement.h"

namespace orxdb {

class Connection;

/// The transactions of one connection: those that single changes make, and the group of changes
/// that a host may hold open around many of them.
///
/// From its beginning on a group keeps other writers out, of this process and others; they wait as
/// for any lock. What is changed is seen through the connection at once and by others when the
/// group ends. A change that fails inside it takes only itself back. Some errors (no space, a
/// failing disk, a rule of the file that says so) make the engine take back all of it: the group is
/// then lost, changes are refused, and its end fails with the cause. A group whose connection is
/// closed, or whose process ends, is cancelled.
class Transactions {
 public:
  explicit Transactions(Connection& connection) noexcept : m_connection(connection) {}
  Transactions(const Transactions&) = delete;
  Transactions& operator=(const Transactions&) = delete;

  /// Follows a connection that has been opened.
  void Follow(sqlite3* database) noexcept;

  /// Raises when a group is open already, and `Busy` when others hold the file for too long.
  void BeginGroup();
  /// Stores what the group changed. Raises when that fails or the group was lost; nothing of it is
  /// stored then. In any case the group is over. Raises without a group.
  void EndGroup();
  /// Takes back what the group changed. Recordsets whose query ran in it run it again; every record
  /// being added or edited is given up. Raises without a group.
  void CancelGroup();
  bool InGroup() const noexcept { return m_group != 0; }
  /// The group's number, never the same for two; 0 outside.
  std::int64_t Group() const noexcept { return m_group; }
  /// Whether the engine has taken the open group back.
  bool HasLostGroup() const noexcept { return InGroup() && IsLost(); }
  bool InTransaction() const noexcept { return m_depth > 0; }

  /// Counts whatever was taken back, so that nothing read before is taken for what is there.
  std::int64_t Rollbacks() const noexcept { return m_rollbacks; }

  /// A key given out in a transaction. When that is taken back, the count in the database goes back
  /// as well; as long as the connection is open it gives the key out to nobody again. Others may
  /// get it: they could not have seen it, since nobody else reserves keys meanwhile.
  void Reserved(const std::string& table, std::int64_t key);
  /// The highest of them; 0 without one.
  std::int64_t LastReserved(const std::string& table) const;

  /// The connection closes: what is open is taken back.
  void Close() noexcept;

 private:
  friend class Transaction;

  struct Statements {
    explicit Statements(Connection& connection);
    Statement begin, commit, rollback, savepoint, release, rollbackTo;
  };

  void Enter();
  void Commit();
  void TakeBack() noexcept;
  void NoteCause() noexcept;
  bool IsLost() const noexcept;
  void RequireIntact() const;
  void RequireGroup() const;

  Connection& m_connection;
  /// Prepared before the first transaction begins: taking back must not fail for want of memory.
  std::unique_ptr<Statements> m_statements;
  int m_depth = 0;  ///< of transactions in one another, the group included
  std::int64_t m_group = 0;
  std::int64_t m_groups = 0;
  std::int64_t m_rollbacks = 0;
  std::string m_cause;  ///< of the loss, as far as it is known
  std::unordered_map<std::string, std::int64_t> m_reserved;
};

/// Looks and changes that belong together: nobody else changes anything between them, and all of
/// the changes are stored or none. Inside another one, or in a group of changes, it is a part of
/// that and is stored with it.
///
///   Transaction transaction(connection);
///   ... look, change; an exception takes back what this one changed
///   transaction.Commit();
class Transaction {
 public:
  /// Raises `Busy` when others hold the file for too long, and in a group that was lost.
  explicit Transaction(Connection& connection);
  ~Transaction();
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;
  void Commit();

 private:
  Transactions& m_transactions;
  bool m_open = true;
};

}  // namespace orxdb
