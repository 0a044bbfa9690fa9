// Changes that are stored together or not at all.
#pragma once

#include "host/library/ToolDatabase.h"

namespace orxdb {

/// A group of changes of the open database; others who write wait meanwhile. Taken back unless it
/// ends.
class ChangeGroup {
 public:
  /// Throws HostError when the database stays locked or cannot be written.
  explicit ChangeGroup(ToolDatabase& database);
  ~ChangeGroup();
  ChangeGroup(const ChangeGroup&) = delete;
  ChangeGroup& operator=(const ChangeGroup&) = delete;

  /// Stores the changes. Throws HostError when none of them is stored.
  void End();

 private:
  ToolDatabase& m_database;
  bool m_open = true;
};

}  // namespace orxdb
