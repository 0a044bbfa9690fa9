#include "database/operations/KeyList.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace orxdb {

void KeyList::Clear() noexcept {
  m_keys.clear();
  m_byKey.clear();
  m_last = 0;
}

void KeyList::OrderByKey() {
  if (m_byKey.size() == m_keys.size()) return;
  m_byKey.resize(m_keys.size());
  std::iota(m_byKey.begin(), m_byKey.end(), 0U);
  std::sort(m_byKey.begin(), m_byKey.end(), [&](std::uint32_t a, std::uint32_t b) {
    return std::pair(m_keys[a], a) < std::pair(m_keys[b], b);
  });
}

void KeyList::DropRepeats() {
  OrderByKey();
  std::vector<bool> repeats(m_keys.size());
  for (std::size_t i = 1; i < m_byKey.size(); ++i) {
    repeats[m_byKey[i]] = m_keys[m_byKey[i]] == m_keys[m_byKey[i - 1]];
  }
  std::size_t kept = 0;
  for (std::size_t i = 0; i < m_keys.size(); ++i) {
    if (!repeats[i]) m_keys[kept++] = m_keys[i];
  }
  if (kept == m_keys.size()) return;
  m_keys.resize(kept);
  m_byKey.clear();
}

std::optional<std::size_t> KeyList::Rank(std::int64_t key) {
  for (const std::size_t near : {m_last, m_last + 1}) {
    if (near < m_keys.size() && m_keys[near] == key) return m_last = near;
  }
  OrderByKey();
  const auto found = std::lower_bound(
      m_byKey.begin(), m_byKey.end(), key,
      [&](std::uint32_t index, std::int64_t wanted) { return m_keys[index] < wanted; });
  if (found == m_byKey.end() || m_keys[*found] != key) return std::nullopt;
  return m_last = *found;
}

void KeyList::ArrangeAs(KeyList& all) {
  std::vector<std::size_t> ranks;
  for (const std::int64_t key : m_keys) {
    if (const auto rank = all.Rank(key)) ranks.push_back(*rank);
  }
  std::sort(ranks.begin(), ranks.end());
  Clear();
  for (const std::size_t rank : ranks) m_keys.push_back(all[rank]);
}

}  // namespace orxdb
