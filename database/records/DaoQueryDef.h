#pragma once

#include <memory>
#include <string>

#include "database/records/DaoDatabase.h"

/// A query: a stored one of the database (a view), or a temporary one made from SQL text.
///
/// The database must outlive the definition; a recordset opened over it does not need it any more.
class CDaoQueryDef {
 public:
  explicit CDaoQueryDef(CDaoDatabase* database) : m_database(database) {}

  /// Opens the stored query of that name; raises `NotFound` when there is none.
  void Open(const std::string& name);
  /// Makes a temporary query from a SELECT in the query dialect. The text is checked when a
  /// recordset is opened over it.
  void Create(const std::string& sql);
  bool IsOpen() const noexcept { return m_open; }
  void Close() noexcept;

  CDaoDatabase* GetDatabase() const noexcept { return m_database; }
  /// The stored query's name; empty for a temporary query.
  const std::string& GetName() const noexcept { return m_name; }
  /// The SQL text of a temporary query; empty for a stored one.
  const std::string& GetSQL() const noexcept { return m_sql; }

 private:
  CDaoDatabase* m_database;
  std::string m_name;
  std::string m_sql;
  bool m_open = false;
};
