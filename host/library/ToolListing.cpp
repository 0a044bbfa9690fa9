#include "host/library/ToolListing.h"

namespace orxdb {
namespace {

/// Positions of the properties to show.
std::vector<std::size_t> Chosen(ToolDatabase& database, const std::string& table,
                                const ListingOptions& options,
                                const std::vector<Property>& properties) {
  std::vector<std::size_t> positions;
  for (const std::string& column : options.columns) {
    const Property& property = PropertyNamed(table, column, properties);
    positions.push_back(static_cast<std::size_t>(&property - properties.data()));
  }
  if (options.columns.empty()) {
    for (std::size_t i = 0; i < properties.size(); ++i) {
      if (options.hidden || !database.IsHidden(properties[i].name)) positions.push_back(i);
    }
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
