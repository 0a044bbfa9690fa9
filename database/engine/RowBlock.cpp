#include "database/engine/RowBlock.h"

#include <algorithm>
#include <sqlite3.h>

#include "database/engine/Statement.h"

namespace orxdb {

void RowBlock::Clear() noexcept {
  m_cells.clear();
  m_rows.clear();
  m_bytes.clear();
}

void RowBlock::Append(const Statement& row, std::int64_t key) {
  m_rows.push_back({key, m_cells.size()});
  for (int i = 0; i < static_cast<int>(m_columns); ++i) {
    // One look-up of the column instead of one for the type and one or two for the value; the
    // connection belongs to one thread, so the value needs no protection.
    sqlite3_value* value = sqlite3_column_value(row.Handle(), i);
    StoredCell cell{};
    switch (sqlite3_value_type(value)) {
      case SQLITE_INTEGER:
        cell.kind = CellView::Kind::Integer;
        cell.integer = sqlite3_value_int64(value);
        break;
      case SQLITE_FLOAT:
        cell.kind = CellView::Kind::Real;
        cell.real = sqlite3_value_double(value);
        break;
      case SQLITE_TEXT:
        cell.kind = CellView::Kind::Text;
        StoreBytes(cell, sqlite3_value_text(value), value);
        break;
      case SQLITE_BLOB:
        cell.kind = CellView::Kind::Bytes;
        StoreBytes(cell, sqlite3_value_blob(value), value);
        break;
      default:
        cell.kind = CellView::Kind::Null;
    }
    m_cells.push_back(cell);
  }
}

void RowBlock::StoreBytes(StoredCell& cell, const void* bytes, sqlite3_value* value) {
  cell.length = static_cast<std::uint32_t>(sqlite3_value_bytes(value));
  cell.begin = m_bytes.size();
  if (cell.length > 0) m_bytes.append(static_cast<const char*>(bytes), cell.length);
}

void RowBlock::Arrange(std::span<const std::int64_t> keys) {
  std::vector<Row> found = std::move(m_rows);
  m_rows.clear();
  std::ranges::stable_sort(found, {}, &Row::key);
  for (const std::int64_t key : keys) {
    const auto row = std::ranges::lower_bound(found, key, {}, &Row::key);
    if (row != found.end() && row->key == key) m_rows.push_back(*row);
  }
}

CellView RowBlock::Cell(std::size_t row, std::size_t column) const {
  const StoredCell& stored = m_cells[m_rows[row].cells + column];
  CellView cell;
  cell.kind = stored.kind;
  switch (stored.kind) {
    case CellView::Kind::Integer:
      cell.integer = stored.integer;
      break;
    case CellView::Kind::Real:
      cell.real = stored.real;
      break;
    case CellView::Kind::Text:
    case CellView::Kind::Bytes:
      cell.text = std::string_view(m_bytes).substr(stored.begin, stored.length);
      break;
    case CellView::Kind::Null:
      break;
  }
  return cell;
}

std::size_t RowBlock::Find(std::int64_t key) const noexcept {
  return static_cast<std::size_t>(std::ranges::find(m_rows, key, &Row::key) - m_rows.begin());
}

}  // namespace orxdb
