#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace orxdb {

/// The keys of some records in their order.
class KeyList {
 public:
  static constexpr std::size_t kBytesPerKey = 12;

  /// Of equal keys only the first is listed: a join that meets more than one row shows its record
  /// again, and nobody could walk past a key that stands at two places.
  explicit KeyList(std::vector<std::int64_t> keys);

  std::size_t Size() const noexcept { return m_keys.size(); }
  std::int64_t operator[](std::size_t rank) const { return m_keys[rank]; }

  /// The key's index; nothing when it is not listed.
  std::optional<std::size_t> Rank(std::int64_t key) const;
  /// The indexes of those of the keys that are listed, each once, ascending.
  std::vector<std::uint32_t> Ranks(std::vector<std::int64_t> keys) const;

 private:
  using Place = std::vector<std::uint32_t>::const_iterator;
  Place Find(Place from, std::int64_t key) const;

  std::vector<std::int64_t> m_keys;
  std::vector<std::uint32_t> m_byKey;  ///< indexes into `m_keys`, ordered by key
};

}  // namespace orxdb
