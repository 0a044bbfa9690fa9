#pragma once

#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <vector>

#include "database/engine/Connection.h"
#include "database/engine/KeyList.h"
#include "database/engine/QuerySource.h"
#include "database/engine/RowBlock.h"

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
/// added after `Restart` are kept out by a key limit taken there.
class RowReader {
 public:
  static constexpr std::size_t kBlockRows = 128;  ///< most rows that are read at once
  /// A block ends early when its rows are long, pictures for instance.
  static constexpr std::size_t kBlockBytes = 1 << 20;

  RowReader(Connection& connection, const SelectText& select, const QuerySource& source);

  /// From now on the records are those that the database holds at this moment. When it fails they
  /// stay those of before.
  void Restart();
  /// The least key of the table then; above `LastKey` when the table was empty.
  std::int64_t FirstKey() const noexcept { return m_first; }
  std::int64_t LastKey() const noexcept { return m_last; }

  /// For queries in key order: the first or last records that meet the criteria; with `Next`, the
  /// first ones behind the key `after`. Tells whether SQLite had to sort them first, which makes
  /// reading a few at a time dear.
  bool ReadInKeyOrder(const Criteria& criteria, Which which, std::int64_t after, std::size_t most,
                      RowBlock& rows) const;
  /// The keys of all records in the query's order; of a record that a join shows more than once,
  /// more than once.
  std::vector<std::int64_t> ReadKeys() const;
  /// The keys of the records that meet the criteria, in any order.
  std::vector<std::int64_t> ReadKeys(const Criteria& criteria) const;
  /// Up to `kBlockRows` records by their keys, in the order of the keys; those that no longer
  /// exist are left out.
  void ReadListed(std::span<const std::int64_t> keys, RowBlock& rows) const;

  bool HasAny(const Criteria& criteria) const;
  /// In key order, the number of records up to the key `last` that exist now.
  std::int64_t Count(std::int64_t last) const;

 private:
  SqlText Select(const std::string& columns, const SqlText& rows, const Criteria& criteria) const;
  std::vector<std::int64_t> ReadKeys(const SqlText& sql) const;
  SelectText WithOrderOfIndexes() const;

  Connection& m_connection;
  const SelectText& m_select;
  const QuerySource& m_source;
  std::string m_key;       ///< the key's field, as SQL over the alias `q`
  std::string m_oneRow;    ///< SELECT of one record by its key
  std::string m_someRows;  ///< the same of `kBlockRows`
  std::int64_t m_first = std::numeric_limits<std::int64_t>::max();
  std::int64_t m_last = std::numeric_limits<std::int64_t>::min();
};

/// The first row of a query, without a key; no row when there is none.
RowBlock ReadFirstRow(Connection& connection, const SelectText& select, const QuerySource& source);

}  // namespace orxdb
