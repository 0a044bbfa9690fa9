#pragma once

#include <memory>
#include <span>

#include "database/records/LoadedRows.h"

namespace orxdb {

/// What the walks over records with keys share: rows are read by key, some at a time.
class KeysetWalk : public Walk {
 public:
  KeysetWalk(std::shared_ptr<Connection> connection, const SelectText& select,
             const QuerySource& source);

  void Restart() override;
  RowView Read(const Position& at) override;

 protected:
  ChangeStamp Stamp() { return m_connection->Stamp(); }
  /// Makes the record's row the current one; false when the record does not exist any more.
  bool Load(std::int64_t key);
  /// Reads rows by their keys and makes the first of them current. Gives its index among the keys,
  /// or their number when none of the records exists any more.
  std::size_t LoadFirst(std::span<const std::int64_t> keys, Reading reading);

  RowReader m_reader;
  LoadedRows m_rows;

 private:
  std::shared_ptr<Connection> m_connection;
};

}  // namespace orxdb
