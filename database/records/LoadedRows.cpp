#include "database/records/LoadedRows.h"

#include <algorithm>
#include <utility>

namespace orxdb {

LoadedRows::LoadedRows(std::size_t fields)
    : m_last{RowBlock(static_cast<int>(fields))}, m_before{RowBlock(static_cast<int>(fields))} {}

void LoadedRows::Clear() noexcept {
  for (Block* block : {&m_last, &m_before}) {
    block->rows.Clear();
    block->reading.stamp = {};
  }
}

RowBlock& LoadedRows::Incoming() noexcept {
  m_before.reading.stamp = {};
  return m_before.rows;
}

bool LoadedRows::Take(Reading reading) {
  if (m_before.rows.Size() == 0) return false;
  std::swap(m_last, m_before);
  m_last.reading = std::move(reading);
  m_row = 0;
  return true;
}

bool LoadedRows::GoTo(std::int64_t key, ChangeStamp stamp) {
  if (m_last.reading.stamp == stamp) {
    for (std::size_t near = m_row; near < std::min(m_row + 2, m_last.rows.Size()); ++near) {
      if (m_last.rows.Key(near) != key) continue;
      m_row = near;
      return true;
    }
  }
  for (Block* block : {&m_last, &m_before}) {
    if (block->reading.stamp != stamp) continue;
    const std::size_t row = block->rows.Find(key);
    if (row >= block->rows.Size()) continue;
    if (block == &m_before) std::swap(m_last, m_before);
    m_row = row;
    return true;
  }
  return false;
}

bool LoadedRows::Advance() noexcept {
  if (m_row + 1 >= m_last.rows.Size()) return false;
  ++m_row;
  return true;
}

std::size_t LoadedRows::RowsAtOnce() const noexcept {
  const std::size_t rows = m_last.rows.Size();
  if (rows == 0) return 1;
  const std::size_t bytes = m_last.rows.Bytes() / rows + 1;
  return std::clamp<std::size_t>(RowReader::kBlockBytes / bytes, 1, RowReader::kBlockRows);
}

}  // namespace orxdb
