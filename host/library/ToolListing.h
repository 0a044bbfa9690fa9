// Looking at many tools.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/library/Answer.h"
#include "host/library/ToolDatabase.h"

namespace orxdb {

/// The kinds of tools.
Answer KindsOfTools(const ToolDatabase& database);

/// How many tools of the table meet a condition; an empty one is met by all. Throws HostError.
Answer CountTools(ToolDatabase& database, const std::string& table, const std::string& where);

/// Which tools of a table, and what of them.
struct ListingOptions {
  std::string where;                 ///< a condition; empty for all tools
  std::string order;                 ///< empty for the order that there is
  std::vector<std::string> columns;  ///< names of properties; empty for the usual ones
  /// Then the usual properties are all; else they are the ID, the name and those that tools of the
  /// table are searched by, or for a table without any, all that people may see.
  bool all = false;
};

/// Tools one by one. Operations throw HostError.
class ToolListing {
 public:
  ToolListing(ToolDatabase& database, const std::string& table, const ListingOptions& options);

  const std::vector<std::string>& Columns() const noexcept { return m_columns; }
  /// The next tool; nothing behind the last.
  std::optional<std::vector<Cell>> Next();

 private:
  std::vector<std::size_t> m_positions;
  std::vector<std::string> m_columns;
  std::optional<ToolWalk> m_walk;
  bool m_started = false;
};

}  // namespace orxdb
