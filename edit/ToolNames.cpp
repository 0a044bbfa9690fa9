#include "edit/ToolNames.h"

#include "browse/ToolCursor.h"
#include "database/ToolDbData.h"
#include "database/ToolRules.h"
#include "platform/framework/MessageBox.h"
#include "platform/framework/Text.h"
#include "resources/ComponentText.h"
#include "resources/StringTable.h"

namespace orxdb {
namespace {

/// Whether the component knows the name to be in use; not when the question fails.
bool IsInUse(BSTR table, BSTR name, IOrxDbObj& own) {
  VARIANT_BOOL unique = VARIANT_TRUE;
  own.IsToolNameUnique(table, name, &unique);
  return unique == VARIANT_FALSE;
}

}  // namespace

bool IsToolNameUnique(const CToolTableInfo& table, const std::string& name) {
  bool unique = false;
  UseFoundTool(table.ToolSet(), "[Name] = '" + name + "'", [&](bool found) { unique = !found; });
  return unique;
}

bool IsHeadNameFree(BSTR name, IOrxDbObj& own) {
  if (!IsInUse(WidenToBstr(kTappingHeadTable).get(), name, own)) return true;
  if (g_pToolDbData) g_pToolDbData->BeforeMessage();
  ShowComponentMessage(IDS_HEAD_NAME_IN_USE, MB_ICONSTOP);
  return false;
}

std::string UniqueToolName(BSTR table, const std::string& name, IOrxDbObj& own) {
  std::string candidate = name;
  for (int n = 1; IsInUse(table, WidenToBstr(candidate).get(), own); ++n) {
    candidate = name + '_' + std::to_string(n);
  }
  return candidate;
}

}  // namespace orxdb
