#include "database/records/KeysetWalk.h"

#include <algorithm>
#include <utility>

namespace orxdb {

KeysetWalk::KeysetWalk(std::shared_ptr<Connection> connection, const SelectText& select,
                       const QuerySource& source)
    : m_reader(*connection, select, source),
      m_rows(source.fields.size()),
      m_connection(std::move(connection)) {}

void KeysetWalk::Restart() {
  m_rows.Clear();
  m_reader.Restart();
}

bool KeysetWalk::Load(std::int64_t key) {
  const ChangeStamp stamp = Stamp();
  return m_rows.GoTo(key, stamp) || LoadFirst({&key, 1}, {stamp}) == 0;
}

std::size_t KeysetWalk::LoadFirst(std::span<const std::int64_t> keys, Reading reading) {
  m_reader.ReadListed(keys, m_rows.Incoming());
  if (!m_rows.Take(std::move(reading))) return keys.size();
  return static_cast<std::size_t>(std::ranges::find(keys, m_rows.Key()) - keys.begin());
}

RowView KeysetWalk::Read(const Position& at) {
  if (!Load(at.key)) RaiseDeleted();
  return m_rows.Row();
}

}  // namespace orxdb
