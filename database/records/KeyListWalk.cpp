#include "database/records/KeyListWalk.h"

#include <algorithm>
#include <utility>

namespace orxdb {

void KeyListWalk::Restart() {
  m_all.reset();
  m_walked = m_found = {};
  m_removed = 0;
  KeysetWalk::Restart();
}

bool KeyListWalk::IsEmpty() {
  return m_all ? m_all->Size() == 0 : !m_reader.HasAny({});
}

const KeyList& KeyListWalk::All() {
  if (!m_all) m_all.emplace(m_reader.ReadKeys());
  return *m_all;
}

Position KeyListWalk::Start() {
  if (All().Size() == 0) return {};
  return {Position::At::Record, All()[0], 0};
}

std::optional<Position> KeyListWalk::Seek(const Criteria& criteria, Which which,
                                          const Position& from) {
  const ChangeStamp stamp = Stamp();
  const bool next = which == Which::Next;
  const std::size_t most = next ? m_rows.RowsAtOnce() : 1;
  const auto seek = [&](std::size_t begin, std::size_t size, auto rankAt) {
    if (which != Which::Last) return FirstExisting(begin, size, rankAt, most, stamp);
    return FirstExisting(
        0, size, [&](std::size_t i) { return rankAt(size - 1 - i); }, most, stamp);
  };
  if (criteria.text.empty()) {
    return seek(next ? from.rank + 1 : 0, All().Size(), [](std::size_t i) { return i; });
  }
  // As long as nothing is listed, a find that meets nothing needs no list either.
  if (!m_all && !m_reader.HasAny(criteria)) return std::nullopt;
  const Ranks& ranks = Matching(criteria, which, stamp);
  const auto begin = next ? std::ranges::upper_bound(ranks, from.rank) : ranks.begin();
  return seek(static_cast<std::size_t>(begin - ranks.begin()), ranks.size(),
              [&](std::size_t i) { return ranks[i]; });
}

/// Of the records at the ranks `rankAt(from)` to `rankAt(size - 1)`, the first that exists.
template <typename RankAt>
std::optional<Position> KeyListWalk::FirstExisting(std::size_t from, std::size_t size,
                                                   RankAt rankAt, std::size_t most,
                                                   ChangeStamp stamp) {
  const auto at = [&](std::size_t i) {
    return Position{Position::At::Record, All()[rankAt(i)], rankAt(i)};
  };
  if (from < size && m_rows.GoTo(at(from).key, stamp)) return at(from);
  std::vector<std::int64_t> keys;
  for (; from < size; from += keys.size(), most = RowReader::kBlockRows) {
    keys.clear();
    while (keys.size() < std::min(most, size - from)) keys.push_back(at(from + keys.size()).key);
    const std::size_t found = LoadFirst(keys, {stamp});
    if (found < keys.size()) return at(from + found);
  }
  return std::nullopt;
}

const KeyListWalk::Ranks& KeyListWalk::Matching(const Criteria& criteria, Which which,
                                                ChangeStamp stamp) {
  constexpr std::size_t kFew = 16;
  for (const Matches* kept : {&m_walked, &m_found}) {
    if (kept->stamp == stamp && kept->criteria == criteria) return kept->ranks;
  }
  Matches found{criteria, stamp, All().Ranks(m_reader.ReadKeys(criteria))};
  const bool byTheWay = which != Which::Next && found.ranks.size() <= kFew;
  Matches& kept = byTheWay ? m_found : m_walked;
  kept = std::move(found);
  return kept.ranks;
}

std::optional<Position> KeyListWalk::Find(std::int64_t key) {
  const auto rank = All().Rank(key);
  if (!rank || !Load(key)) return std::nullopt;
  return Position{Position::At::Record, key, *rank};
}

std::int64_t KeyListWalk::Count(const Position* last) {
  const std::size_t reached = last != nullptr ? last->rank + 1 : All().Size();
  return static_cast<std::int64_t>(reached - std::min(reached, m_removed));
}

}  // namespace orxdb
