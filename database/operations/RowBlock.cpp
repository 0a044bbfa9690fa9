#include "database/operations/RowBlock.h"

#include <algorithm>

namespace orxdb {

void RowBlock::Clear() noexcept {
  m_cells.clear();
  m_keys.clear();
  m_bytes.clear();
}

void RowBlock::Append(sqlite3_stmt* row, std::int64_t key) {
  for (int i = 0; i < static_cast<int>(m_columns); ++i) {
    // One look-up of the column instead of one for the type and one or two for the value; the
    // connection belongs to one thread, so the value needs no protection.
    sqlite3_value* value = sqlite3_column_value(row, i);
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
  m_keys.push_back(key);
}

void RowBlock::StoreBytes(StoredCell& cell, const void* bytes, sqlite3_value* value) {
  cell.length = static_cast<std::uint32_t>(sqlite3_value_bytes(value));
  cell.begin = m_bytes.size();
  if (cell.length > 0) m_bytes.append(static_cast<const char*>(bytes), cell.length);
}

void RowBlock::AppendFrom(const RowBlock& other, std::size_t row) {
  for (std::size_t i = 0; i < m_columns; ++i) {
    StoredCell cell = other.m_cells[row * m_columns + i];
    if (cell.kind == CellView::Kind::Text || cell.kind == CellView::Kind::Bytes) {
      const std::size_t begin = m_bytes.size();
      m_bytes.append(other.m_bytes, cell.begin, cell.length);
      cell.begin = begin;
    }
    m_cells.push_back(cell);
  }
  m_keys.push_back(other.m_keys[row]);
}

CellView RowBlock::Cell(std::size_t row, std::size_t column) const {
  const StoredCell& stored = m_cells[row * m_columns + column];
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
  return static_cast<std::size_t>(std::find(m_keys.begin(), m_keys.end(), key) - m_keys.begin());
}

}  // namespace orxdb
