#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace orxdb {

/// The keys of some records in their order, with a place among them. Costs 12 bytes a record.
class KeyList {
 public:
  void Clear() noexcept;
  void Add(std::int64_t key) { m_keys.push_back(key); }

  std::size_t Size() const noexcept { return m_keys.size(); }
  std::int64_t operator[](std::size_t index) const { return m_keys[index]; }

  /// Leaves only the first of equal keys: a join that meets more than one row lists its record
  /// again, and nobody could walk past a key that stands at two places.
  void DropRepeats();

  /// The key's index; nothing when it is not in the list. Looks near the last answer first.
  std::optional<std::size_t> Rank(std::int64_t key);
  /// Leaves only the keys of `all`, in the order that they have there.
  void ArrangeAs(KeyList& all);

 private:
  void OrderByKey();

  std::vector<std::int64_t> m_keys;
  std::vector<std::uint32_t> m_byKey;  ///< indexes into `m_keys`, ordered by key
  std::size_t m_last = 0;
};

}  // namespace orxdb
