#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "database/dialect/SqlText.h"

struct sqlite3_value;

namespace orxdb {

class Statement;

/// Some rows of one query, copied out of SQLite: values side by side, text in one buffer.
class RowBlock {
 public:
  explicit RowBlock(int columns) : m_columns(static_cast<std::size_t>(columns)) {}

  void Clear() noexcept;
  /// Copies the statement's current row, whose record has that key.
  void Append(const Statement& row, std::int64_t key);
  /// Puts the rows into the order of the keys; of rows with one key only the first stays.
  void Arrange(std::span<const std::int64_t> keys);

  std::size_t Size() const noexcept { return m_rows.size(); }
  std::int64_t Key(std::size_t row) const { return m_rows[row].key; }
  CellView Cell(std::size_t row, std::size_t column) const;
  /// Index of the row with that key; `Size()` when there is none.
  std::size_t Find(std::int64_t key) const noexcept;
  std::size_t Bytes() const noexcept {
    return m_bytes.size() + m_cells.size() * sizeof(StoredCell);
  }

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

  struct Row {
    std::int64_t key;
    std::size_t cells;  ///< index of the first one
  };

  void StoreBytes(StoredCell& cell, const void* bytes, sqlite3_value* value);

  std::size_t m_columns;
  std::vector<StoredCell> m_cells;
  std::vector<Row> m_rows;
  std::string m_bytes;
};

}  // namespace orxdb
