#include "host/library/NewToolDefaults.h"

#include "host/library/ToolInput.h"
#include "interface/KnownNames.h"
#include "platform/framework/Text.h"

namespace orxdb {
namespace {

HostError LeftOver(const std::string& table) {
  return HostError("An interrupted program left a tool named " + Cited(Narrow(kTemporaryToolName)) +
                   " in " + table + ". `orxdb delete` it first.");
}

HostError NotAdded(const std::string& table) {
  return HostError("The values of a new tool in " + table +
                   " are not known, since none can be added: the database may be read-only, full "
                   "or in use, or a property needs a value and has no default.");
}

HostError NotShown(const std::string& table, LONG id) {
  return HostError("The values of a new tool in " + table + " are not known: tool " +
                   std::to_string(id) + " was added to find out, but the stored query Q_" + table +
                   " does not show it. It is still in the table.");
}

HostError NotDeleted(const std::string& table, LONG id) {
  return HostError("Tool " + std::to_string(id) + " was added to " + table +
                   " to find out its values and cannot be deleted again. Try `orxdb delete`.");
}

HostError NotTold(const std::string& table) {
  return HostError("The database does not tell the values of a new tool in " + table +
                   ", although one could be added a moment ago.");
}

void RefuseLeftOver(ToolDatabase& database, const std::string& table) {
  VARIANT_BOOL unique = VARIANT_TRUE;
  database.Component().IsToolNameUnique(WidenToBstr(table).get(), Bstr(kTemporaryToolName).get(),
                                        &unique);
  if (unique == VARIANT_FALSE) throw LeftOver(table);
}

/// Shows that a tool can be added and is then found, and leaves the cursor on the last tool: there
/// it goes when the tool under it is deleted.
void TryOut(ToolDatabase& database, const std::string& table) {
  const Bstr wideTable = WidenToBstr(table);
  Assignments given(1);
  given[0] = {"Name", Variant::FromText(kTemporaryToolName), {}};
  ToolProperties arrays = ArraysOf(given);
  LONG id = -1;
  if (FAILED(database.Component().AddNewRecord(wideTable.get(), arrays.names.ptr(),
                                               arrays.values.ptr(), &id))) {
    throw NotAdded(table);
  }
  const std::string itself = table + ".ID = " + std::to_string(id);
  database.Select(table, itself, {});
  if (!ToolWalk(database, table, itself)) throw NotShown(table, id);
  database.Component().DeleteTool(wideTable.get(), id);
  if (database.Find(table, id)) throw NotDeleted(table, id);
}

/// Moves the cursor from the last tool to behind it.
void LeaveLastTool(ToolDatabase& database, const std::string& table) {
  Variant nothing;
  database.Select(table, {}, {});
  database.Component().GetNextTool(WidenToBstr(table).get(), nothing.put());
  if (database.Count(table) != 0) throw NotTold(table);  // none are counted from there
}

}  // namespace

ToolProperties DefaultsOfNewTool(ToolDatabase& database, const std::string& table) {
  RefuseLeftOver(database, table);
  // GetDefPropsValues adds a tool, too, and then deletes the one under the cursor, which is another
  // one when its own was not stored or is not shown. So that is tried out first, and in case it
  // goes otherwise now, the cursor stands on no tool.
  TryOut(database, table);
  LeaveLastTool(database, table);
  ToolProperties tool;
  if (FAILED(database.Component().GetDefPropsValues(WidenToBstr(table).get(), tool.names.put(),
                                                    tool.values.put())) ||
      !tool) {
    throw NotTold(table);
  }
  return tool;
}

}  // namespace orxdb
