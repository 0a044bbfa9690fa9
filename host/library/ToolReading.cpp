#include "host/library/ToolReading.h"

#include <algorithm>

#include "host/library/NewToolDefaults.h"
#include "host/library/PropertyText.h"

namespace orxdb {
namespace {

/// The properties of a tool that `isShown` selects.
template <typename Predicate>
Answer Shown(const ToolProperties& tool, Predicate isShown) {
  const std::vector<std::string> names = tool.Names();
  std::vector<Cell> cells = tool.Cells();
  Answer answer({}, {});
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (!isShown(names[i])) continue;
    answer.columns.push_back(names[i]);
    answer.rows.front().push_back(std::move(cells[i]));
  }
  return answer;
}

Cell Flag(bool value) {
  return {Cell::Kind::Flag, value ? "true" : "false"};
}

}  // namespace

Answer ShowTool(ToolDatabase& database, const std::string& table, LONG id, bool hidden) {
  return Shown(database.Get(table, id),
               [&](const std::string& name) { return hidden || !database.IsHidden(name); });
}

Answer ShowDefaults(ToolDatabase& database, const std::string& table, bool hidden) {
  return Shown(DefaultsOfNewTool(database, table), [&](const std::string& name) {
    return name != "Name" && !ToolDatabase::IsKey(table, name) &&
           (hidden || !database.IsHidden(name));
  });
}

Answer NameOf(ToolDatabase& database, const std::string& table, LONG id) {
  database.Get(table, id);  // there must be one
  return {{"Name"}, {Cell::Text(database.DefaultName(table, id))}};
}

Answer NamesOf(ToolDatabase& database, const std::string& table,
               const std::vector<Assignments>& tools) {
  Answer answer({"Name"});
  for (const Assignments& tool : tools) {
    answer.rows.push_back({Cell::Text(database.DefaultName(table, ArraysOf(tool)))});
  }
  return answer;
}

Answer ListFields(ToolDatabase& database, const std::string& table) {
  const std::vector<std::string> searched = database.SearchParams(table);
  Answer answer({"Name", "Type", "Hidden", "Search", "Lookup"});
  for (const Property& property : database.Properties(table)) {
    answer.rows.push_back({Cell::Text(property.name), Cell::Text(TypeName(property.type)),
                           Flag(database.IsHidden(property.name)),
                           Flag(std::ranges::find(searched, property.name) != searched.end()),
                           Flag(database.PermissibleValues(table, property.name).has_value())});
  }
  return answer;
}

}  // namespace orxdb
