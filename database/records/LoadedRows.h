#pragma once

#include <cstdint>

#include "database/records/Walk.h"

namespace orxdb {

/// When rows were read, and how.
struct Reading {
  ChangeStamp stamp = {};
  Criteria criteria = {};  ///< what they have to meet; they follow on one another
  std::size_t asked = 1;
  bool sorted = false;  ///< SQLite had to sort before it gave them
};

/// The rows read last, with a current one among them, and those read before, for a way back. They
/// are good only as long as nobody has written to the file.
class LoadedRows {
 public:
  explicit LoadedRows(std::size_t fields);

  void Clear() noexcept;
  /// Where to read the next rows; what was there no longer counts.
  RowBlock& Incoming() noexcept;
  /// Makes the rows just read the last ones and the first of them current; false without rows.
  bool Take(Reading reading);

  /// Makes the row of a record current if it is here and still good.
  bool GoTo(std::int64_t key, ChangeStamp stamp);
  /// Makes the next one of the rows read together current.
  bool Advance() noexcept;

  std::int64_t Key() const { return m_last.rows.Key(m_row); }  ///< of the current row
  RowView Row() const noexcept { return {&m_last.rows, m_row}; }
  const Reading& How() const noexcept { return m_last.reading; }  ///< the current row was read
  /// How many rows like those read last may be read together.
  std::size_t RowsAtOnce() const noexcept;

 private:
  struct Block {
    RowBlock rows;
    Reading reading = {};
  };

  Block m_last;
  Block m_before;
  std::size_t m_row = 0;
};

}  // namespace orxdb
