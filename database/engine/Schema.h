#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "database/dialect/Dialect.h"

namespace orxdb {

class Connection;
class QuerySource;

/// Tells whether anything in the database may have changed between two looks.
struct ChangeStamp {
  std::int64_t own = -1;     ///< rows written and taken back by this connection
  std::int64_t others = -1;  ///< commits of every other connection, of this process or another

  bool operator==(const ChangeStamp&) const = default;
};

/// A column of a base table.
struct TableColumn {
  std::string name;
  std::string declaredType;
  std::string defaultText;  ///< SQL expression; empty when there is none
  bool required = false;
  bool generated = false;  ///< computed by the database; it cannot be written
};

/// A base table.
struct TableInfo {
  std::string name;
  std::vector<TableColumn> columns;
  std::string key;             ///< the integer primary key; empty when there is none
  bool autoIncrement = false;  ///< keys are never used twice
  bool hasTriggers = false;    ///< a change here may change other tables

  const TableColumn* Find(std::string_view column) const noexcept;
};

/// What a stored query was made of.
struct StoredText {
  std::string select;         ///< in the engine's SQL
  bool namesColumns = false;  ///< beside the SELECT
  SelectText parts;           ///< of the SELECT
};

/// The tables and stored queries of a database, as they are now: every call sees what other
/// processes made of them.
class Schema {
 public:
  explicit Schema(Connection& connection) : m_connection(connection) {}

  /// Reads the names of tables and stored queries again when they may have changed.
  void Follow();
  /// Null when there is no stored query of that name. It holds until the next call.
  const StoredText* Definition(std::string_view name);
  /// Whether the database has a table or a stored query of that name.
  bool HasSource(std::string_view name);
  /// Raises `NotFound` when there is no such table.
  const TableInfo& Table(std::string_view name);

  /// The description of a query that was kept under that key and still holds; null without one.
  std::shared_ptr<const QuerySource> Description(const std::string& key);
  void Keep(const std::string& key, std::shared_ptr<const QuerySource> description);

  void Clear() noexcept;

 private:
  struct View {
    std::string definition;  ///< the CREATE text
    std::optional<StoredText> text;
  };

  Connection& m_connection;
  std::int64_t m_version = -1;  ///< as the engine counts changes of the schema
  ChangeStamp m_stamp;          ///< nothing has been committed since the version was read
  std::unordered_map<std::string, View> m_views;        ///< folded name
  std::unordered_map<std::string, TableInfo> m_tables;  ///< folded name
  std::unordered_map<std::string, std::shared_ptr<const QuerySource>> m_descriptions;
};

}  // namespace orxdb
