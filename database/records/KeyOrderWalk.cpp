#include "database/records/KeyOrderWalk.h"

#include <algorithm>

namespace orxdb {

Position KeyOrderWalk::Start() {
  if (IsEmpty()) return {};
  return {Position::At::Record, m_reader.FirstKey()};
}

std::optional<Position> KeyOrderWalk::Seek(const Criteria& criteria, Which which,
                                           const Position& from) {
  const ChangeStamp stamp = Stamp();
  std::size_t most = 1;
  if (which == Which::Next) {
    bool listed = m_listing.stamp == stamp && m_listing.criteria == criteria;
    if (m_rows.GoTo(from.key, stamp) && m_rows.How().criteria == criteria) {
      if (m_rows.Advance()) return Current();
      listed = listed || m_rows.How().sorted;
      // Who goes on walking gets more rows at a time.
      most = std::min(m_rows.How().asked * 4, RowReader::kBlockRows);
    }
    if (listed) return NextListed(criteria, from.key, stamp);
  }
  const bool sorted = m_reader.ReadInKeyOrder(criteria, which, from.key, most, m_rows.Incoming());
  if (!m_rows.Take({stamp, criteria, most, sorted})) return std::nullopt;
  return Current();
}

std::optional<Position> KeyOrderWalk::NextListed(const Criteria& criteria, std::int64_t after,
                                                 ChangeStamp stamp) {
  if (m_listing.stamp != stamp || m_listing.criteria != criteria) {
    m_listing = {criteria, stamp, m_reader.ReadKeys(criteria)};
    std::ranges::sort(m_listing.keys);
  }
  std::span<const std::int64_t> rest(std::ranges::upper_bound(m_listing.keys, after),
                                     m_listing.keys.end());
  while (!rest.empty()) {
    const auto keys = rest.first(std::min(m_rows.RowsAtOnce(), rest.size()));
    if (LoadFirst(keys, {stamp, criteria, 1, true}) < keys.size()) return Current();
    rest = rest.subspan(keys.size());
  }
  return std::nullopt;
}

std::optional<Position> KeyOrderWalk::Find(std::int64_t key) {
  if (key > m_reader.LastKey() || !Load(key)) return std::nullopt;
  return Current();
}

std::int64_t KeyOrderWalk::Count(const Position* last) {
  return m_reader.Count(last != nullptr ? last->key : m_reader.LastKey());
}

}  // namespace orxdb
