// The component as the host uses it: found beside the program or by its ProgID, then only through
// IOrxDbObj.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/Cell.h"
#include "interface/IOrxDbObj.h"
#include "platform/automation/ComPtr.h"
#include "platform/automation/SafeArray.h"
#include "platform/automation/Variant.h"

namespace orxdb {

/// One kind of tool.
struct ToolType {
  std::string type;
  std::string subtype;
  std::string table;
};

/// An open tool database. Operations throw HostError.
class ToolDatabase {
 public:
  /// Opens a file (either path separator), or the default database when the name is empty. Opened
  /// means that there are tool tables: the component itself answers success for any file.
  explicit ToolDatabase(const std::string& file);

  IOrxDbObj& Component() const noexcept { return *m_component; }

  const std::vector<ToolType>& Types() const noexcept { return m_types; }
  /// The table's exact name for a name in any case.
  std::string TableNamed(const std::string& name) const;

  /// Makes a filter and an order those of the next walks; empty ones keep what there is.
  void Select(const std::string& table, const std::string& where, const std::string& order);
  /// Number of all records, whatever the filter.
  LONG Count(const std::string& table);
  /// Whether the property is not meant for people.
  bool IsHidden(const std::string& property);

 private:
  ComPtr<IOrxDbObj> m_component;
  std::vector<ToolType> m_types;
};

/// A walk over the tools that a table's filter selects:
///
///   for (ToolWalk walk(database, "TAP"); walk; walk.Next()) Use(walk.Names(), walk.Value(0));
class ToolWalk {
 public:
  /// Stands on the first tool, if there is one. `filter` is for the message when it is refused.
  ToolWalk(ToolDatabase& database, const std::string& table, const std::string& filter);

  /// Whether there is a tool.
  explicit operator bool() const noexcept { return !m_values.empty(); }
  void Next();

  /// Names of the properties, in the table's order; none when no tool was found at all.
  const std::vector<std::string>& Names() const noexcept { return m_names; }
  /// Values of the tool, one for each name.
  std::vector<Cell> Values(const std::vector<std::size_t>& positions) const;

 private:
  ToolDatabase& m_database;
  Bstr m_table;
  std::vector<std::string> m_names;
  Variant m_values;
};

}  // namespace orxdb
