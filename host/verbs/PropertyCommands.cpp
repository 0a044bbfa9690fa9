// show, name, defaults, fields: the properties of tools.
#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

#include "host/library/ToolReading.h"
#include "host/verbs/CommonArguments.h"
#include "host/verbs/Show.h"

namespace orxdb {
namespace {

struct ShowOptions {
  std::string table;
  LONG id = 0;
  bool all = false;
};

struct NameOptions {
  std::string table;
  std::vector<std::string> words;
};

std::string CheckNameWord(const std::string& word) {
  return AsIdentifier(word) ? "" : CheckInputWord(word);
}

/// A verb is given either numbers or properties; numbers come first where there are both.
void Name(const Settings& settings, const NameOptions& options) {
  auto [database, table] = OpenTable(settings, options.table);
  Answer answer({"Name"});
  std::vector<std::string> described;
  const auto add = [&answer](Answer names) {
    std::ranges::move(names.rows, std::back_inserter(answer.rows));
  };
  for (const std::string& word : options.words) {
    if (const std::optional<LONG> id = AsIdentifier(word)) {
      add(NameOf(database, table, *id));
    } else {
      described.push_back(word);
    }
  }
  if (!described.empty()) {
    add(NamesOf(database, table, ReadTools(database, table, described, std::cin)));
  }
  Show(settings.format, Shape::Bare, std::move(answer));
}

}  // namespace

void AddPropertyCommands(CLI::App& app, const Settings& settings) {
  CLI::App* show = app.add_subcommand("show", "Show the properties of a tool");
  const auto shown = std::make_shared<ShowOptions>();
  AddTable(*show, shown->table);
  show->add_option("ID", shown->id, "The number of the tool")->required()->type_name("");
  show->add_flag("--all", shown->all, "Hidden properties too");
  show->footer("Example:\n  orxdb show TAP 5");
  show->callback([&settings, shown] {
    auto [database, exact] = OpenTable(settings, shown->table);
    Show(settings.format, Shape::Record, ShowTool(database, exact, shown->id, shown->all));
  });

  CLI::App* name = app.add_subcommand("name", "Make the default name of a tool");
  const auto named = std::make_shared<NameOptions>();
  AddTable(*name, named->table);
  name->add_option("TOOL", named->words,
                   "The number of a tool, or its properties as NAME=VALUE or as JSON (see add)")
      ->required()
      ->check(CLI::Validator(CheckNameWord, ""))
      ->type_name("");
  name->footer("Example:\n  orxdb name FLAT_END_MILL Diameter=6 Unit=mm Flutes_#=3");
  name->callback([&settings, named] { Name(settings, *named); });

  CLI::App* defaults =
      app.add_subcommand("defaults", "Show the properties that a new tool starts with");
  const auto fresh = std::make_shared<ShowOptions>();
  AddTable(*defaults, fresh->table);
  defaults->add_flag("--all", fresh->all, "Hidden properties too");
  defaults->footer(
      "Tools are added and deleted again to find out; their numbers are used up.\n\n"
      "Example:\n  orxdb defaults TAP");
  defaults->callback([&settings, fresh] {
    auto [database, exact] = OpenTable(settings, fresh->table);
    Show(settings.format, Shape::Record, ShowDefaults(database, exact, fresh->all));
  });

  CLI::App* fields = app.add_subcommand("fields", "List the properties of a table's tools");
  const auto table = std::make_shared<std::string>();
  AddTable(*fields, *table);
  fields->footer(
      "Search is yes for properties that tools are looked for by, Lookup for those whose text\n"
      "comes from a list.\n\n"
      "Example:\n  orxdb fields TAP");
  fields->callback([&settings, table] {
    auto [database, exact] = OpenTable(settings, *table);
    Show(settings.format, Shape::Rows, ListFields(database, exact));
  });
}

}  // namespace orxdb
