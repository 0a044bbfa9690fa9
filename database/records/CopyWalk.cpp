#include "database/records/CopyWalk.h"

#include <utility>

namespace orxdb {

CopyWalk::CopyWalk(std::shared_ptr<Connection> connection, const SelectText& select,
                   const QuerySource& source)
    : m_connection(std::move(connection)), m_select(select), m_source(source) {}

void CopyWalk::Restart() {
  m_copy = std::make_unique<RowCopy>(m_connection, m_select, m_source);
}

std::optional<Position> CopyWalk::Seek(const Criteria& criteria, Which which,
                                       const Position& from) {
  const std::size_t next = which == Which::Next ? from.rank + 1 : 0;
  std::optional<std::size_t> row = which == Which::Last ? Rows().Size() - 1 : next;
  if (!criteria.text.empty()) row = m_copy->Find(criteria, which, next);
  if (!row || *row >= Rows().Size()) return std::nullopt;
  return At(*row);
}

std::optional<Position> CopyWalk::Find(std::int64_t key) {
  const std::size_t row = Rows().Find(key);
  if (row == Rows().Size()) return std::nullopt;
  return At(row);
}

std::int64_t CopyWalk::Count(const Position* last) {
  return static_cast<std::int64_t>(last != nullptr ? last->rank + 1 : Rows().Size());
}

}  // namespace orxdb
