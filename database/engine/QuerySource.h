#pragma once

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "database/dialect/Dialect.h"
#include "database/engine/Connection.h"
#include "values/FieldTypes.h"

namespace orxdb {

/// What is known of a query before any of its rows is read: its fields, where they come from, and
/// how its records are told apart. Shared by all recordsets over one SELECT.
class QuerySource {
 public:
  /// Describes a SELECT, from the connection's store when it was described before. `name` is the
  /// stored query's name, empty for other texts.
  static std::shared_ptr<const QuerySource> Of(Connection& connection, const SelectText& select,
                                               const std::string& name);

  std::vector<Field> fields;
  /// The base table whose records these are: the one that the query is named after, else that of
  /// the first key shown. Empty when the rows are not records of one table.
  std::string table;
  int keyField = -1;             ///< index of the field that shows the table's key
  bool inKeyOrder = false;       ///< no order of its own, and every record of the table is a row
  std::set<std::string> tables;  ///< folded names of all that the query reads
  NameScope scope;               ///< the fields as criteria name them, under the alias `q`
  std::uint64_t identity = 0;

  /// Index of the field of that name, letter case aside; -1 when there is none.
  int Find(std::string_view fieldName) const noexcept;
};

/// The SELECT of a query, ready to be described: of a stored query by name (raises `NotFound`), or
/// of a text in the dialect. `SELECT * FROM Q` without an ordering is the stored query Q itself.
SelectText SelectOfStoredQuery(Connection& connection, const std::string& name);
SelectText SelectOfText(Connection& connection, const std::string& sql);

/// Lets the translator ask for the columns of tables and stored queries.
class ConnectionColumns : public SourceColumns {
 public:
  explicit ConnectionColumns(Connection& connection) : m_connection(connection) {}
  std::vector<ScopeColumn> ColumnsOf(const std::string& source) override;

 private:
  Connection& m_connection;
};

}  // namespace orxdb
