#pragma once

#include <cstdint>
#include <optional>

#include "database/engine/RowReader.h"
#include "database/records/Position.h"

namespace orxdb {

[[noreturn]] inline void RaiseDeleted() {
  throw CDaoException(DaoError::RecordDeleted, "The record has been deleted");
}

/// A row among others.
struct RowView {
  const RowBlock* rows = nullptr;
  std::size_t row = 0;
};

/// A way through the records of one query. Which records there are and in which order is settled
/// by `Restart`, or by the first call that depends on it; their values are those of the moment.
/// Records deleted since are stepped over. Calls that fail raise `CDaoException`.
class Walk {
 public:
  Walk() = default;
  virtual ~Walk() = default;
  Walk(const Walk&) = delete;
  Walk& operator=(const Walk&) = delete;

  /// From now on the records are those of this moment. Positions from before lose their meaning.
  virtual void Restart() = 0;
  /// Whether there are no records. Settles nothing.
  virtual bool IsEmpty() = 0;
  /// Settles records and order; gives the place of the first one.
  virtual Position Start() = 0;

  /// The first, the last or the next record behind `from` that meets the criteria; nothing when
  /// none does. `from` counts for `Which::Next` alone.
  virtual std::optional<Position> Seek(const Criteria& criteria, Which which,
                                       const Position& from) = 0;
  /// The record with that key; nothing when it is none of the walk's or has been deleted.
  virtual std::optional<Position> Find(std::int64_t key) = 0;
  /// The record's row, good until the next call. Raises `RecordDeleted`.
  virtual RowView Read(const Position& at) = 0;

  /// The number of records, or of those up to and with `last`.
  virtual std::int64_t Count(const Position* last) = 0;
  /// Is told of each record that is deleted through the recordset.
  virtual void Removed() {}
};

}  // namespace orxdb
