#pragma once

#include <memory>

#include "database/engine/RowCopy.h"
#include "database/records/Walk.h"

namespace orxdb {

/// A copy of all rows, read by `Restart`: of a query whose rows are no records of one table, or of
/// a snapshot. Positions are the rows' numbers.
class CopyWalk final : public Walk {
 public:
  CopyWalk(std::shared_ptr<Connection> connection, const SelectText& select,
           const QuerySource& source);

  void Restart() override;
  bool IsEmpty() override { return Rows().Size() == 0; }
  Position Start() override { return IsEmpty() ? Position() : At(0); }
  std::optional<Position> Seek(const Criteria& criteria, Which which,
                               const Position& from) override;
  std::optional<Position> Find(std::int64_t key) override;
  RowView Read(const Position& at) override { return {&Rows(), at.rank}; }
  std::int64_t Count(const Position* last) override;

 private:
  const RowBlock& Rows() const noexcept { return m_copy->Rows(); }
  Position At(std::size_t row) const { return {Position::At::Record, Rows().Key(row), row}; }

  std::shared_ptr<Connection> m_connection;
  const SelectText& m_select;
  const QuerySource& m_source;
  std::unique_ptr<RowCopy> m_copy;
};

}  // namespace orxdb
