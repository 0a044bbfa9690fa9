#pragma once

#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "database/operations/Connection.h"
#include "database/operations/KeyList.h"
#include "database/operations/QuerySource.h"
#include "database/operations/RowBlock.h"

namespace orxdb {

/// Which record a move or a find wants.
enum class Which { First, Next, Last };

/// A condition over the fields of a query, as SQL over the alias `q`; no text means all records.
struct Criteria {
  std::string text;
  std::vector<SqlValue> values;
  bool operator==(const Criteria&) const = default;
};

/// Reads records of a query whose records have keys: by order, by criteria or by key. Records
/// added elsewhere after `Restart` are kept out by a key limit taken there.
class RowReader {
 public:
  RowReader(Connection& connection, const SelectText& select, const QuerySource& source)
      : m_connection(connection), m_select(select), m_source(source) {}

  /// From now on the records are those that the database holds at this moment.
  void Restart();
  /// Lets a record that was added through the recordset in, behind the others.
  void Admit(std::int64_t key) { m_admitted.push_back(key); }
  bool Admits(std::int64_t key) const noexcept;

  /// The first or last records that meet the criteria, in the query's order; with `Next`, only
  /// for queries in key order, the first ones behind the key `after`. Tells whether SQLite had to
  /// sort them first, which makes reading a few at a time dear.
  bool Read(const Criteria& criteria, Which which, std::int64_t after, std::size_t most,
            RowBlock& rows) const;
  /// The keys of all records that meet the criteria, in the query's order.
  void ReadKeys(const Criteria& criteria, KeyList& keys) const;
  /// Up to `kBlockRows` records of the list from an index on, in the list's order; those that no
  /// longer exist are left out.
  static constexpr std::size_t kBlockRows = 128;
  void ReadListed(const KeyList& keys, std::size_t first, std::size_t most, RowBlock& rows) const;
  void ReadRecord(std::int64_t key, RowBlock& rows) const;

  bool HasAny() const;
  /// The number of records; in key order, of those up to the key `last`.
  std::int64_t Count(std::int64_t last = std::numeric_limits<std::int64_t>::max()) const;

 private:
  SqlText Select(const std::string& columns, const SqlText& rows, const Criteria& criteria) const;
  SqlText Membership() const;
  std::string Key() const;
  std::string KeyPosition() const { return std::to_string(m_source.keyField + 1); }
  void Append(RowBlock& rows, const Statement& row) const;

  Connection& m_connection;
  const SelectText& m_select;
  const QuerySource& m_source;
  std::int64_t m_limit = std::numeric_limits<std::int64_t>::min();
  std::vector<std::int64_t> m_admitted;
};

}  // namespace orxdb
