// types, list, count: looking at the tools.
#include <CLI/CLI.hpp>
#include <limits>
#include <memory>

#include "host/library/ToolListing.h"
#include "host/verbs/CommonArguments.h"
#include "host/verbs/Show.h"
#include "platform/automation/Ascii.h"

namespace orxdb {
namespace {

constexpr long long kNoLimit = -1;

struct ListOptions : ListingOptions {
  std::string table;
  long long limit = kNoLimit;
};

void List(const Settings& settings, const ListOptions& options) {
  auto [database, table] = OpenTable(settings, options.table);
  ToolListing tools(database, table, options);
  std::optional<std::vector<Cell>> tool = tools.Next();
  if (!tool) Tell("No tool is selected.");
  // Not gathered first: there may be many, and a reader who has read enough.
  const auto writer = MakeRowWriter(settings.format, Put);
  writer->Header(tools.Columns());
  for (long long count = 0; tool && count != options.limit; ++count) {
    writer->Row(*std::move(tool));
    tool = tools.Next();
  }
  writer->End();
  EndOutput();
}

void AddFilter(CLI::App& verb, std::string& where) {
  verb.add_option("--where", where, "Only tools that meet a condition")->type_name("FILTER");
}

}  // namespace

void AddBrowseCommands(CLI::App& app, const Settings& settings) {
  CLI::App* types = app.add_subcommand("types", "List the kinds of tools");
  types->footer("Example:\n  orxdb types");
  types->callback([&settings] {
    Show(settings.format, Shape::Rows, KindsOfTools(ToolDatabase(settings.database)));
  });

  CLI::App* list = app.add_subcommand("list", "List the tools of a table");
  const auto options = std::make_shared<ListOptions>();
  AddTable(*list, options->table);
  AddFilter(*list, options->where);
  list->add_option("--order", options->order, "Properties to sort by, each with DESC for falling")
      ->type_name("ORDER");
  list->add_option("--columns", options->columns, "Only these properties, in this order")
      ->transform([](const std::string& name) { return std::string(Trim<char>(name, " ")); })
      ->delimiter(',')
      ->allow_extra_args(false)
      ->type_name("A,B,C");
  list->add_option("--limit", options->limit, "At most so many tools; -1 for all")
      ->check(CLI::Range(kNoLimit, std::numeric_limits<long long>::max(), ""))
      ->type_name("N");
  list->add_flag("--all", options->all,
                 "All properties; else the ID, the name and what tools are searched by");
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
  count->callback([&settings, counted] {
    auto [database, table] = OpenTable(settings, counted->table);
    Show(settings.format, Shape::Bare, CountTools(database, table, counted->where));
  });
}

}  // namespace orxdb
