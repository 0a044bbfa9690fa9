#include "host/library/ToolListing.h"

#include <algorithm>

namespace orxdb {
namespace {

/// Positions of the properties to show.
std::vector<std::size_t> Chosen(ToolDatabase& database, const std::string& table,
                                const ListingOptions& options,
                                const std::vector<Property>& properties) {
  std::vector<std::size_t> positions;
  const auto add = [&](const Property& property) {
    const auto position = static_cast<std::size_t>(&property - properties.data());
    const bool again = std::ranges::find(positions, position) != positions.end();
    if (!again || !options.columns.empty()) positions.push_back(position);
  };
  for (const std::string& column : options.columns) {
    add(PropertyNamed(table, column, properties));
  }
  if (!options.columns.empty()) return positions;
  const auto addThose = [&](auto&& isWanted) {
    for (const Property& property : properties) {
      if (isWanted(property.name)) add(property);
    }
  };
  const std::vector<std::string> searched = database.SearchParams(table);
  addThose([&](const std::string& name) { return ToolDatabase::IsKey(table, name); });
  if (!options.all) addThose([](const std::string& name) { return name == "Name"; });
  for (const std::string& param : options.all ? std::vector<std::string>() : searched) {
    addThose([&](const std::string& name) { return name == param; });
  }
  if (options.all || searched.empty()) {
    addThose([&](const std::string& name) { return options.all || !database.IsHidden(name); });
  }
  return positions;
}

}  // namespace

Answer KindsOfTools(const ToolDatabase& database) {
  Answer answer({"Type", "Subtype", "Table"});
  for (const ToolKind& kind : database.Types()) {
    answer.rows.push_back(
        {Cell::Text(kind.type), Cell::Text(kind.subtype), Cell::Text(kind.table)});
  }
  return answer;
}

Answer CountTools(ToolDatabase& database, const std::string& table, const std::string& where) {
  long long count = 0;
  if (where.empty()) {
    count = database.Count(table);
  } else {
    // The component counts all records of the table, selected or not.
    database.Select(table, where, {});
    for (ToolWalk walk(database, table, where); walk; walk.Next()) ++count;
  }
  return {{"Table", "Count"}, {Cell::Text(table), Cell::Number(count)}};
}

ToolListing::ToolListing(ToolDatabase& database, const std::string& table,
                         const ListingOptions& options) {
  const std::vector<Property> properties = database.Properties(table);
  m_positions = Chosen(database, table, options, properties);
  for (const std::size_t position : m_positions) m_columns.push_back(properties[position].name);
  database.Select(table, options.where, options.order);
  m_walk.emplace(database, table, options.where);
}

std::optional<std::vector<Cell>> ToolListing::Next() {
  if (std::exchange(m_started, true) && *m_walk) m_walk->Next();
  if (!*m_walk) return std::nullopt;
  return m_walk->Values(m_positions);
}

}  // namespace orxdb
