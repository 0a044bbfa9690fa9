#pragma once

#include <memory>
#include <optional>
#include <string>

#include "database/engine/Connection.h"
#include "database/engine/QuerySource.h"
#include "database/engine/RowBlock.h"
#include "database/engine/RowReader.h"

namespace orxdb {

/// All rows of a query as they were when it ran. Criteria are answered by SQLite over a temporary
/// table that is filled when the first one comes.
class RowCopy {
 public:
  RowCopy(std::shared_ptr<Connection> connection, const SelectText& select,
          const QuerySource& source);
  ~RowCopy();
  RowCopy(const RowCopy&) = delete;
  RowCopy& operator=(const RowCopy&) = delete;

  /// The rows, under their records' keys; where there are none, under their numbers from 0.
  const RowBlock& Rows() const noexcept { return m_rows; }
  /// The first or last row that meets the criteria, or the first one at or behind `from`.
  std::optional<std::size_t> Find(const Criteria& criteria, Which which, std::size_t from);

 private:
  void FillTable();
  void Drop(const std::string& table) noexcept;

  std::shared_ptr<Connection> m_connection;
  const QuerySource& m_source;
  RowBlock m_rows;
  std::string m_table;           ///< empty until the first criteria
  std::int64_t m_rollbacks = 0;  ///< of the connection when it was filled; one takes it back too
};

}  // namespace orxdb
