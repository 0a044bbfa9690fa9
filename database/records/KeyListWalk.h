#pragma once

#include "database/engine/KeyList.h"
#include "database/records/KeysetWalk.h"

namespace orxdb {

/// The records of a query with an ordering, a condition or an inner join: their keys are listed in
/// order when that is first needed, and rows are read by key, some at a time. Positions are ranks
/// in the list, so what becomes of a record's values does not move it.
class KeyListWalk final : public KeysetWalk {
 public:
  using KeysetWalk::KeysetWalk;

  void Restart() override;
  bool IsEmpty() override;
  Position Start() override;
  std::optional<Position> Seek(const Criteria& criteria, Which which,
                               const Position& from) override;
  std::optional<Position> Find(std::int64_t key) override;
  std::int64_t Count(const Position* last) override;
  void Removed() override { ++m_removed; }

 private:
  using Ranks = std::vector<std::uint32_t>;
  /// The records that met criteria when they were asked.
  struct Matches {
    Criteria criteria = {};
    ChangeStamp stamp = {};
    Ranks ranks = {};
  };

  const KeyList& All();
  const Ranks& Matching(const Criteria& criteria, Which which, ChangeStamp stamp);
  template <typename RankAt>
  std::optional<Position> FirstExisting(std::size_t from, std::size_t size, RankAt rankAt,
                                        std::size_t most, ChangeStamp stamp);

  std::optional<KeyList> m_all;
  Matches m_walked;  ///< long lists, and those that are walked along
  Matches m_found;   ///< a few records, found by the way of a walk
  std::size_t m_removed = 0;
};

}  // namespace orxdb
