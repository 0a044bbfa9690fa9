#pragma once

#include <chrono>
#include <exception>
#include <functional>

#include "database/ToolDbData.h"

namespace orxdb {

/// The groups of changes that an import works in, one after another: so large that storing them
/// costs little, so short that others hardly wait. Where the host has a group open, the import is a
/// part of that. A group ends before a message is shown.
class ImportGroups {
 public:
  explicit ImportGroups(CToolDbData& data);
  ~ImportGroups();
  ImportGroups(const ImportGroups&) = delete;
  ImportGroups& operator=(const ImportGroups&) = delete;

  /// Opens a group unless one is open, after others had their turn. True when they may have changed
  /// the database since the record before.
  bool Enter();
  /// A record has been dealt with. Raises when a group could not be stored before a message, or the
  /// database has taken back that of the host.
  void Leave();
  /// Whether the group is large or old enough to be stored.
  bool IsFull() const;
  /// Whether the database has taken back the group: nothing of it is stored. It is over then.
  bool TakeLoss();
  /// Stores the group if there is one. Raises when that fails; nothing of it is stored then.
  void End();
  /// Whether all that was dealt with is stored.
  bool IsStored() const noexcept { return !m_open; }
  /// False when a message has ended the data object.
  bool HasData() const noexcept { return &m_data == g_pToolDbData; }

 private:
  using Clock = std::chrono::steady_clock;

  void EndBeforeMessage() noexcept;

  CToolDbData& m_data;
  bool m_joined = false;  ///< a group of the host
  bool m_open = false;
  int m_records = 0;
  Clock::time_point m_begin;
  std::exception_ptr m_failure;
  std::function<void()> m_outer;  ///< what lets go before messages otherwise
};

}  // namespace orxdb
