#pragma once

#include <cstddef>
#include <cstdint>

namespace orxdb {

/// A place among the records of a walk. A value: it keeps its place whatever becomes of the record,
/// until the walk begins anew.
struct Position {
  enum class At {
    Before,   ///< BOF and EOF: there are no records
    Record,   ///< on a record, which may have been deleted elsewhere
    Deleted,  ///< where a record was that has been deleted through the recordset
    Behind,   ///< EOF
  };

  At at = At::Before;
  std::int64_t key = 0;  ///< of the record
  std::size_t rank = 0;  ///< its index among the records, where the walk lists them
};

}  // namespace orxdb
