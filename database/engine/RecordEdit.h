#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "database/engine/Connection.h"
#include "database/engine/QuerySource.h"

namespace orxdb {

/// A record being added or edited: the values that it has of its own, until it is stored.
class RecordEdit {
 public:
  /// Begins a new record: reserves its key and evaluates the defaults of its fields.
  static RecordEdit Adding(Connection& connection, const QuerySource& source);
  /// Begins editing the record with that key.
  static RecordEdit Editing(const QuerySource& source, std::int64_t key);

  bool IsAdding() const noexcept { return m_adding; }
  std::int64_t Key() const noexcept { return m_key; }
  /// The field's own value: always there while adding, when it has been set while editing.
  const SqlValue* Value(std::size_t field) const noexcept;
  void Set(std::size_t field, const VARIANT& value);
  /// Writes the record in one transaction; on failure nothing is written and the edit lives on.
  void Store(Connection& connection) const;

  static void Remove(Connection& connection, const QuerySource& source, std::int64_t key);

 private:
  RecordEdit(const QuerySource& source, bool adding, std::int64_t key);
  void ReadDefaults(Connection& connection);

  const QuerySource* m_source;
  bool m_adding;
  std::int64_t m_key;
  std::vector<std::optional<SqlValue>> m_values;  ///< by field
};

}  // namespace orxdb
