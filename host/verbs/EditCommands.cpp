// add, copy, set, delete: changing the tools.
#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <unistd.h>

#include "host/library/SelectedTools.h"
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
  std::optional<std::string> where;
  bool dryRun = false;
  bool certain = false;
};

/// Asks whether so many tools are to be changed ("Delete 30 tools of TAP"), or refuses where nobody
/// can be asked.
void AskFor(const std::string& change) {
  if (isatty(STDIN_FILENO) == 0 || isatty(STDERR_FILENO) == 0) {
    throw HostError(change + "? --yes says so, --dry-run shows what would be done.");
  }
  std::cerr << change + "? [y/N] " << std::flush;
  std::string reply;
  std::getline(std::cin, reply);
  if (!EqualNoCase(reply, "y") && !EqualNoCase(reply, "yes")) {
    throw HostError("Nothing is changed.");
  }
}

Selection SelectionOf(const EditOptions& options, const std::string& change,
                      const std::string& table) {
  const auto consent = [change, table, certain = options.certain](std::size_t count) {
    if (!certain) AskFor(change + ' ' + std::to_string(count) + " tools of " + table);
  };
  return {.where = options.where.value_or(""), .dryRun = options.dryRun, .consent = consent};
}

/// The properties of the one tool that the words describe.
Assignments ReadTool(ToolDatabase& database, const EditOptions& options, const std::string& table) {
  std::vector<Assignments> tools = ReadTools(database, table, options.words, std::cin);
  if (tools.size() != 1) throw HostError("The properties of one tool are wanted.");
  return std::move(tools.front());
}

void Add(const Settings& settings, const EditOptions& options) {
  auto [database, table] = OpenTable(settings, options.table);
  // All are read before the first is written.
  std::vector<Assignments> tools = ReadTools(database, table, options.words, std::cin);
  Show(settings.format, Shape::Bare, AddTools(database, table, std::move(tools)));
}

void Copy(const Settings& settings, const EditOptions& options) {
  auto [database, table] = OpenTable(settings, options.table);
  Show(settings.format, Shape::Bare,
       CopyTool(database, table, options.id, ReadTool(database, options, table)));
}

void Set(const Settings& settings, EditOptions options) {
  const std::optional<LONG> id =
      options.words.empty() ? std::nullopt : AsIdentifier(options.words.front());
  if (id.has_value() == options.where.has_value()) {
    throw CLI::ValidationError("set", "either the number of a tool or --where is wanted");
  }
  if (id) options.words.erase(options.words.begin());
  if (options.words.empty()) throw CLI::RequiredError("NAME=VALUE");
  auto [database, table] = OpenTable(settings, options.table);
  const Assignments given = ReadTool(database, options, table);
  if (id) {
    Show(settings.format, Shape::Record, ChangeTool(database, table, *id, given, options.dryRun));
  } else {
    Show(settings.format, Shape::Rows,
         ChangeTools(database, table, SelectionOf(options, "Change", table), given));
  }
}

void Delete(const Settings& settings, const EditOptions& options) {
  if (options.ids.empty() != options.where.has_value()) {
    throw CLI::ValidationError("delete", "either numbers of tools or --where is wanted");
  }
  auto [database, table] = OpenTable(settings, options.table);
  if (options.where) {
    Show(settings.format, Shape::Rows,
         DeleteTools(database, table, SelectionOf(options, "Delete", table)));
  } else {
    Show(settings.format, Shape::Bare, DeleteTools(database, table, options.ids, options.dryRun));
  }
}

std::string CheckChangeWord(const std::string& word) {
  return AsIdentifier(word) ? "" : CheckInputWord(word);
}

void AddSelection(CLI::App& verb, EditOptions& options) {
  verb.add_option("--where", options.where, "All tools that meet a condition, or none of them")
      ->type_name("FILTER");
  verb.add_flag("--dry-run", options.dryRun, "Show what would be done, and change nothing");
  verb.add_flag("--yes", options.certain, "Do not ask before more than twenty tools are changed");
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

  CLI::App* copy = app.add_subcommand("copy", "Add a tool that is like another");
  const auto copied = std::make_shared<EditOptions>();
  AddTable(*copy, copied->table);
  copy->add_option("ID", copied->id, "The number of the other tool")->required()->type_name("");
  copy->add_option("NAME=VALUE", copied->words, "What is different; - for JSON on standard input")
      ->check(CLI::Validator(CheckInputWord, ""))
      ->type_name("");
  copy->footer(
      "The number of the new tool is written. Without a Name it is called a copy of the other.\n\n"
      "Example:\n  orxdb copy TAP 5 Name=\"Tap M5 long\" Overall_Length=100");
  copy->callback([&settings, copied] { Copy(settings, *copied); });

  CLI::App* set = app.add_subcommand("set", "Change properties of a tool, or of many");
  const auto changed = std::make_shared<EditOptions>();
  AddTable(*set, changed->table);
  set->add_option(
         "CHANGES", changed->words,
         "The number of the tool, if no --where selects tools; then NAME=VALUE, none behind "
         "the sign for no value, - for JSON on standard input")
      ->check(CLI::Validator(CheckChangeWord, ""))
      ->type_name("");
  AddSelection(*set, *changed);
  set->footer(
      "The properties of one tool are written as they then are. Those that do not take their\n"
      "value are named, and the code is then 1. Of many tools, all values that are then other\n"
      "ones are written; if a tool cannot be changed, none is.\n\n"
      "Example:\n  orxdb set TAP 5 Comment=\"Second shelf\" Holder=\n"
      "  orxdb set TAP --where \"Coating = 'TiN' AND Diameter < 6\" Coating=TiCN --dry-run");
  set->callback([&settings, changed] { Set(settings, *changed); });

  CLI::App* remove = app.add_subcommand("delete", "Delete tools");
  const auto deleted = std::make_shared<EditOptions>();
  AddTable(*remove, deleted->table);
  remove->add_option("ID", deleted->ids, "The numbers of the tools, if no --where selects them")
      ->type_name("");
  AddSelection(*remove, *deleted);
  remove->footer(
      "The numbers of the tools that are gone are written.\n\n"
      "Example:\n  orxdb delete TAP 5 6\n  orxdb delete TAP --where \"Stock = 0\" --dry-run");
  remove->callback([&settings, deleted] { Delete(settings, *deleted); });
}

}  // namespace orxdb
