// add, set, delete: changing the tools.
#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

#include "host/library/ToolEdits.h"
#include "host/verbs/CommonArguments.h"
#include "host/verbs/Show.h"

namespace orxdb {
namespace {

struct EditOptions {
  std::string table;
  LONG id = 0;
  std::vector<LONG> ids;
  std::vector<std::string> words;
};

void Add(const Settings& settings, const EditOptions& options) {
  auto [database, table] = OpenTable(settings, options.table);
  // All are read before the first is written.
  std::vector<Assignments> tools = ReadTools(database, table, options.words, std::cin);
  Show(settings.format, Shape::Bare, AddTools(database, table, std::move(tools)));
}

void Set(const Settings& settings, const EditOptions& options) {
  auto [database, table] = OpenTable(settings, options.table);
  const std::vector<Assignments> tools = ReadTools(database, table, options.words, std::cin);
  if (tools.size() != 1) throw HostError("The properties of one tool are wanted.");
  Show(settings.format, Shape::Record, ChangeTool(database, table, options.id, tools.front()));
}

void Delete(const Settings& settings, const EditOptions& options) {
  auto [database, table] = OpenTable(settings, options.table);
  Show(settings.format, Shape::Bare, DeleteTools(database, table, options.ids));
}

void AddWords(CLI::App& verb, EditOptions& options) {
  verb.add_option("NAME=VALUE", options.words,
                  "A property and its value, none behind the sign for no value; - for JSON on "
                  "standard input")
      ->required()
      ->check(CLI::Validator(CheckInputWord, ""))
      ->type_name("");
}

}  // namespace

void AddEditCommands(CLI::App& app, const Settings& settings) {
  CLI::App* add = app.add_subcommand("add", "Add a tool, or several from JSON");
  const auto added = std::make_shared<EditOptions>();
  AddTable(*add, added->table);
  AddWords(*add, *added);
  add->footer(
      "The number of the new tool is written. Properties without a value start as\n"
      "`orxdb defaults` shows them, and a tool without a Name gets its default name.\n"
      "JSON is an object or an array of objects; NAME=VALUE beside - holds for all.\n"
      "Properties that do not take their value are named, and the code is then 1.\n\n"
      "Example:\n  orxdb add FLAT_END_MILL Name=\"End mill 6\" Diameter=6 Material=HSS\n"
      "  orxdb show TAP 5 --json | orxdb add TAP - Name=\"My tap\"");
  add->callback([&settings, added] { Add(settings, *added); });

  CLI::App* set = app.add_subcommand("set", "Change properties of a tool");
  const auto changed = std::make_shared<EditOptions>();
  AddTable(*set, changed->table);
  set->add_option("ID", changed->id, "The number of the tool")->required()->type_name("");
  AddWords(*set, *changed);
  set->footer(
      "The properties are written as they then are. Those that do not take their value are\n"
      "named, and the code is then 1.\n\n"
      "Example:\n  orxdb set TAP 5 Comment=\"Second shelf\" Holder=");
  set->callback([&settings, changed] { Set(settings, *changed); });

  CLI::App* remove = app.add_subcommand("delete", "Delete tools");
  const auto deleted = std::make_shared<EditOptions>();
  AddTable(*remove, deleted->table);
  remove->add_option("ID", deleted->ids, "The numbers of the tools")->required()->type_name("");
  remove->footer(
      "The numbers of the tools that are gone are written.\n\n"
      "Example:\n  orxdb delete TAP 5 6");
  remove->callback([&settings, deleted] { Delete(settings, *deleted); });
}

}  // namespace orxdb
