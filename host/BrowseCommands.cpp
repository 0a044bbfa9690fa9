// types, list, count: looking at the tools.
#include <CLI/CLI.hpp>
#include <cstdint>
#include <limits>
#include <memory>

#include "host/CommonArguments.h"

namespace orxdb {
namespace {

struct ListOptions {
  std::string table;
  std::string where;
  std::string order;
  std::vector<std::string> columns;
  std::uint64_t limit = std::numeric_limits<std::uint64_t>::max();
  bool all = false;
};

void ShowTypes(const Settings& settings) {
  const ToolDatabase database(settings.database);
  const auto writer = MakeRowWriter(settings.format);
  writer->Header({"Type", "Subtype", "Table"});
  for (const ToolKind& type : database.Types()) {
    writer->Row({Cell::Text(type.type), Cell::Text(type.subtype), Cell::Text(type.table)});
  }
  writer->End();
}

/// Positions of the properties to show.
std::vector<std::size_t> Chosen(ToolDatabase& database, const std::string& table,
                                const ListOptions& options,
                                const std::vector<Property>& properties) {
  std::vector<std::size_t> positions;
  for (const std::string& column : options.columns) {
    const Property& property = PropertyNamed(table, column, properties);
    positions.push_back(static_cast<std::size_t>(&property - properties.data()));
  }
  if (options.columns.empty()) {
    for (std::size_t i = 0; i < properties.size(); ++i) {
      if (options.all || !database.IsHidden(properties[i].name)) positions.push_back(i);
    }
  }
  return positions;
}

void List(const Settings& settings, const ListOptions& options) {
  auto [database, table] = OpenTable(settings, options.table);
  const std::vector<Property> properties = database.Properties(table);
  const std::vector<std::size_t> positions = Chosen(database, table, options, properties);
  database.Select(table, options.where, options.order);
  ToolWalk walk(database, table, options.where);
  if (!walk) Tell("No tool is selected.");

  std::vector<std::string> header;
  header.reserve(positions.size());
  for (const std::size_t position : positions) header.push_back(properties[position].name);
  const auto writer = MakeRowWriter(settings.format);
  writer->Header(header);
  for (std::uint64_t count = 0; walk && count < options.limit; ++count) {
    writer->Row(walk.Values(positions));
    walk.Next();
  }
  writer->End();
}

void Count(const Settings& settings, const std::string& name, const std::string& where) {
  auto [database, table] = OpenTable(settings, name);
  long long count = 0;
  if (where.empty()) {
    count = database.Count(table);
  } else {
    // The component counts all records of the table, selected or not.
    database.Select(table, where, {});
    for (ToolWalk walk(database, table, where); walk; walk.Next()) ++count;
  }
  WriteRow(settings.format, {"Table", "Count"}, {Cell::Text(table), Cell::Number(count)});
}

void AddFilter(CLI::App& verb, std::string& where) {
  verb.add_option("--where", where, "Only tools that meet a condition")->type_name("FILTER");
}

}  // namespace

void AddBrowseCommands(CLI::App& app, const Settings& settings) {
  CLI::App* types = app.add_subcommand("types", "List the kinds of tools");
  types->footer("Example:\n  orxdb types");
  types->callback([&settings] { ShowTypes(settings); });

  CLI::App* list = app.add_subcommand("list", "List the tools of a table");
  const auto options = std::make_shared<ListOptions>();
  AddTable(*list, options->table);
  AddFilter(*list, options->where);
  list->add_option("--order", options->order, "Properties to sort by, each with DESC for falling")
      ->type_name("ORDER");
  list->add_option("--columns", options->columns, "Only these properties, in this order")
      ->delimiter(',')
      ->allow_extra_args(false)
      ->type_name("A,B,C");
  list->add_option("--limit", options->limit, "At most so many tools")
      ->check(CLI::NonNegativeNumber)
      ->type_name("N");
  list->add_flag("--all", options->all, "Hidden properties too");
  list->footer(
      "Example:\n"
      "  orxdb list TAP --where \"Diameter BETWEEN 3 AND 6 AND Name LIKE 'Tap M*'\" \\\n"
      "    --order \"Diameter DESC\" --columns Name,Diameter,Pitch");
  list->callback([&settings, options] { List(settings, *options); });

  CLI::App* count = app.add_subcommand("count", "Count the tools of a table");
  const auto counted = std::make_shared<ListOptions>();
  AddTable(*count, counted->table);
  AddFilter(*count, counted->where);
  count->footer("Example:\n  orxdb count TAP --where \"Unit = 'in'\"");
  count->callback([&settings, counted] { Count(settings, counted->table, counted->where); });
}

}  // namespace orxdb
