#pragma once

#include "database/records/KeysetWalk.h"

namespace orxdb {

/// The records of a table, or of a stored query without an ordering that shows them all, in the
/// order of their keys. Every step asks for the rows behind the current key, a growing block at a
/// time; nothing is remembered but the range of the keys.
class KeyOrderWalk final : public KeysetWalk {
 public:
  using KeysetWalk::KeysetWalk;

  void Restart() override {
    m_listing = {};
    KeysetWalk::Restart();
  }
  bool IsEmpty() override { return m_reader.FirstKey() > m_reader.LastKey(); }
  Position Start() override;
  std::optional<Position> Seek(const Criteria& criteria, Which which,
                               const Position& from) override;
  std::optional<Position> Find(std::int64_t key) override;
  std::int64_t Count(const Position* last) override;

 private:
  std::optional<Position> NextListed(const Criteria& criteria, std::int64_t after,
                                     ChangeStamp stamp);
  Position Current() const { return {Position::At::Record, m_rows.Key()}; }

  /// The keys of the records that meet criteria for which SQLite had to sort. Asked for block by
  /// block, the rest would be sorted again each time.
  struct Listing {
    Criteria criteria;
    ChangeStamp stamp;
    std::vector<std::int64_t> keys;
  };
  Listing m_listing;
};

}  // namespace orxdb
