#pragma once

#include <cstdint>
#include <sqlite3.h>
#include <string>
#include <vector>

#include "database/operations/SqlValue.h"

namespace orxdb {

/// Some rows of one query, copied out of SQLite: values side by side, text in one buffer.
class RowBlock {
 public:
  explicit RowBlock(int columns) : m_columns(static_cast<std::size_t>(columns)) {}

  void Clear() noexcept;
  /// Copies the statement's current row, whose record has that key.
  void Append(sqlite3_stmt* row, std::int64_t key);
  /// Copies a row of another block of the same query.
  void AppendFrom(const RowBlock& other, std::size_t row);

  std::size_t Size() const noexcept { return m_keys.size(); }
  std::int64_t Key(std::size_t row) const { return m_keys[row]; }
  CellView Cell(std::size_t row, std::size_t column) const;
  /// Index of the row with that key; `Size()` when there is none.
  std::size_t Find(std::int64_t key) const noexcept;
  std::size_t Bytes() const noexcept { return m_bytes.size(); }

 private:
  struct StoredCell {
    union {
      std::int64_t integer;
      double real;
      std::size_t begin;  ///< of text and bytes, in `m_bytes`
    };
    std::uint32_t length;
    CellView::Kind kind;
  };

  void StoreBytes(StoredCell& cell, const void* bytes, sqlite3_value* value);

  std::size_t m_columns;
  std::vector<StoredCell> m_cells;
  std::vector<std::int64_t> m_keys;
  std::string m_bytes;
};

}  // namespace orxdb
