#include "database/engine/KeyList.h"

#include <algorithm>
#include <utility>

namespace orxdb {

KeyList::KeyList(std::vector<std::int64_t> keys) : m_keys(std::move(keys)) {
  using Entry = std::pair<std::int64_t, std::uint32_t>;  // a key and its index
  std::vector<Entry> byKey;
  byKey.reserve(m_keys.size());
  for (const std::int64_t key : m_keys) {
    byKey.emplace_back(key, static_cast<std::uint32_t>(byKey.size()));
  }
  if (!std::is_sorted(byKey.begin(), byKey.end())) std::sort(byKey.begin(), byKey.end());
  const auto repeats = std::unique(byKey.begin(), byKey.end(), [](const Entry& a, const Entry& b) {
    return a.first == b.first;
  });
  if (repeats != byKey.end()) {
    byKey.erase(repeats, byKey.end());
    std::ranges::sort(byKey, {}, &Entry::second);
    m_keys.clear();
    for (const Entry& entry : byKey) m_keys.push_back(entry.first);
    *this = KeyList(std::move(m_keys));
    return;
  }
  m_byKey.reserve(byKey.size());
  for (const Entry& entry : byKey) m_byKey.push_back(entry.second);
}

/// The first of the places from there on whose key is not less.
KeyList::Place KeyList::Find(Place from, std::int64_t key) const {
  // Looked for one behind the other, keys are mostly near.
  constexpr std::ptrdiff_t kNear = 8;
  Place to = m_byKey.end();
  if (to - from > kNear && m_keys[from[kNear]] >= key) to = from + kNear;
  return std::lower_bound(from, to, key, [this](std::uint32_t rank, std::int64_t wanted) {
    return m_keys[rank] < wanted;
  });
}

std::optional<std::size_t> KeyList::Rank(std::int64_t key) const {
  const Place place = Find(m_byKey.begin(), key);
  if (place == m_byKey.end() || m_keys[*place] != key) return std::nullopt;
  return *place;
}

std::vector<std::uint32_t> KeyList::Ranks(std::vector<std::int64_t> keys) const {
  if (!std::ranges::is_sorted(keys)) std::ranges::sort(keys);
  std::vector<std::uint32_t> ranks;
  ranks.reserve(keys.size());
  Place place = m_byKey.begin();
  for (const std::int64_t key : keys) {
    place = Find(place, key);
    if (place == m_byKey.end()) break;
    if (m_keys[*place] == key) ranks.push_back(*place++);
  }
  std::ranges::sort(ranks);
  return ranks;
}

}  // namespace orxdb
