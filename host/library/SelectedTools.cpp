#include "host/library/SelectedTools.h"

#include <algorithm>

#include "host/library/ChangeGroup.h"
#include "host/library/ToolEdits.h"

namespace orxdb {
namespace {

/// Selections of more tools are asked about.
constexpr std::size_t kMany = 20;

std::vector<LONG> Select(ToolDatabase& database, const std::string& table,
                         const std::string& where) {
  const std::vector<Property> properties = database.Properties(table);
  const auto key = std::ranges::find_if(properties, [&table](const Property& property) {
    return ToolDatabase::IsKey(table, property.name);
  });
  if (key == properties.end()) throw HostError("The tools of " + table + " have no numbers.");
  const auto position = static_cast<std::size_t>(key - properties.begin());
  std::vector<LONG> ids;
  database.Select(table, where, {});
  for (ToolWalk walk(database, table, where); walk; walk.Next()) {
    const ArrayAccess<VARIANT> values(walk.Current().values().get().parray);
    ids.push_back(values[position].lVal);
  }
  return ids;
}

/// Does it to each of the tools, which are still those that were asked about.
void ForEach(ToolDatabase& database, const std::string& table, const Selection& selection,
             const std::function<void(LONG id)>& change) {
  const std::vector<LONG> ids = Select(database, table, selection.where);
  if (ids.size() > kMany && !selection.dryRun) selection.consent(ids.size());
  ChangeGroup group(database);
  if (Select(database, table, selection.where) != ids) {
    throw HostError("Meanwhile other tools meet the condition; nothing was changed.");
  }
  for (const LONG id : ids) change(id);
  if (!selection.dryRun) group.End();
}

void Sum(const Selection& selection, std::size_t selected, Answer& answer) {
  if (selected == 0) answer.remarks.emplace_back("No tool meets the condition.");
  if (selection.dryRun) answer.remarks.emplace_back("Only tried; nothing is changed.");
}

}  // namespace

Answer ChangeTools(ToolDatabase& database, const std::string& table, const Selection& selection,
                   const Assignments& given) {
  Answer answer({"ID", "Name", "Property", "Before", "After"});
  std::size_t selected = 0;
  std::size_t changed = 0;
  ForEach(database, table, selection, [&](LONG id) {
    const ToolProperties before = database.Get(table, id);
    const Answer after = ChangeToolInGroup(database, table, id, given);
    const std::size_t rows = answer.rows.size();
    for (std::size_t i = 0; i < given.size(); ++i) {
      Cell old = before.Value(given[i].property);
      if (old == after.rows[0][i]) continue;
      answer.rows.push_back({Cell::Number(id), before.Value("Name"), Cell::Text(after.columns[i]),
                             std::move(old), after.rows[0][i]});
    }
    ++selected;
    if (answer.rows.size() > rows) ++changed;
  });
  Sum(selection, selected, answer);
  if (changed < selected) {
    answer.remarks.push_back(std::to_string(selected - changed) + " of " +
                             std::to_string(selected) + " tools are so already.");
  }
  return answer;
}

Answer DeleteTools(ToolDatabase& database, const std::string& table, const Selection& selection) {
  Answer answer({"Name", "ID"});
  ForEach(database, table, selection, [&](LONG id) {
    Cell name = database.Get(table, id).Value("Name");
    DeleteToolInGroup(database, table, id);
    answer.rows.push_back({std::move(name), Cell::Number(id)});
  });
  Sum(selection, answer.rows.size(), answer);
  return answer;
}

}  // namespace orxdb
