// Tools written as a transfer understands them, and read back: a tool is in the database as it was
// given, or not at all.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "host/library/Quantity.h"
#include "host/transfer/Understanding.h"

namespace orxdb {

/// Writes tools. Throws HostError, a sentence, for a tool that the database does not take as it
/// is; nothing of it is then left.
class ToolStore {
 public:
  struct Stored {
    LONG id = 0;
    ToolProperties tool;
  };

  explicit ToolStore(ToolDatabase& database) : m_database(database) {}

  Stored Add(const UnderstoodTool& tool);
  Stored Update(LONG id, const UnderstoodTool& tool);

  /// Makes the table's query run again, so that tools of other programs are seen.
  void Requery(const std::string& table);

  const std::vector<std::string>& Remarks() const noexcept { return m_remarks; }

 private:
  /// What new tools of a table start with.
  struct Defaults {
    Unit unit = Unit::None;
    Assignments lengths;  ///< in that unit
  };

  const Defaults& DefaultsOf(const std::string& table);
  /// Lengths that a tool does not give, in its unit.
  Assignments DefaultLengths(const UnderstoodTool& tool);
  void Write(const std::string& table, LONG id, const Assignments& values);
  /// The properties that the tool does not have as given.
  static std::string Missed(const ToolProperties& stored, const Assignments& values);

  ToolDatabase& m_database;
  std::map<std::string, Defaults> m_defaults;
  std::vector<std::string> m_remarks;
};

}  // namespace orxdb
