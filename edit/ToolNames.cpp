#include "edit/ToolNames.h"

#include "browse/ToolCursor.h"

namespace orxdb {

bool IsToolNameUnique(const CToolTableInfo& table, const std::string& name) {
  bool unique = false;
  UseFoundTool(table.ToolSet(), "[Name] = '" + name + "'", [&](bool found) { unique = !found; });
  return unique;
}

}  // namespace orxdb
