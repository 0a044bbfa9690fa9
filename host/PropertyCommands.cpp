// show, name, defaults, fields: the properties of tools.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <memory>

#include "host/CommonArguments.h"
#include "host/PropertyText.h"
#include "host/ToolInput.h"
#include "interface/KnownNames.h"
#include "platform/framework/Text.h"

namespace orxdb {
namespace {

struct ShowOptions {
  std::string table;
  LONG id = 0;
  bool all = false;
};

/// Writes the properties of a tool that `isShown` selects.
template <typename Predicate>
void WriteTool(Format format, const ToolProperties& tool, Predicate isShown) {
  std::vector<std::string> names = tool.Names();
  std::vector<Cell> cells = tool.Cells();
  for (std::size_t i = names.size(); i-- > 0;) {
    if (isShown(names[i])) continue;
    names.erase(names.begin() + static_cast<std::ptrdiff_t>(i));
    cells.erase(cells.begin() + static_cast<std::ptrdiff_t>(i));
  }
  WriteRecord(format, names, std::move(cells));
}

void Show(const Settings& settings, const ShowOptions& options) {
  ToolDatabase database(settings.database);
  const ToolProperties tool = database.Get(database.TableNamed(options.table), options.id);
  WriteTool(settings.format, tool,
            [&](const std::string& name) { return options.all || !database.IsHidden(name); });
}

void Defaults(const Settings& settings, const ShowOptions& options) {
  auto [database, table] = OpenTable(settings, options.table);
  const Bstr wideTable = WidenToBstr(table);
  VARIANT_BOOL unique = VARIANT_TRUE;
  database.Component().IsToolNameUnique(wideTable.get(), Bstr(kTemporaryToolName).get(), &unique);
  if (unique == VARIANT_FALSE) {
    // Where names must be unique, the component would now delete some other tool.
    throw HostError("An interrupted program left a tool named " +
                    Cited(Narrow(kTemporaryToolName)) + " in " + table +
                    ". `orxdb delete` it first.");
  }
  ToolProperties tool;
  if (FAILED(database.Component().GetDefPropsValues(wideTable.get(), tool.names.put(),
                                                    tool.values.put())) ||
      !tool) {
    throw HostError("The database does not tell the values of a new tool in " + table +
                    ": it must be possible to add one.");
  }
  const auto isShown = [&database = database, &table = table, &options](const std::string& name) {
    return name != "Name" && !ToolDatabase::IsKey(table, name) &&
           (options.all || !database.IsHidden(name));
  };
  WriteTool(settings.format, tool, isShown);
}

struct NameOptions {
  std::string table;
  std::vector<std::string> words;
};

/// The word as the identifier of a tool, if it is one.
std::optional<LONG> AsIdentifier(const std::string& word) {
  LONG id = 0;
  const char* end = word.data() + word.size();
  const auto [stop, error] = std::from_chars(word.data(), end, id);
  return error == std::errc() && stop == end ? std::optional(id) : std::nullopt;
}

std::string CheckNameWord(const std::string& word) {
  return AsIdentifier(word) ? "" : CheckInputWord(word);
}

void Name(const Settings& settings, const NameOptions& options) {
  auto [database, table] = OpenTable(settings, options.table);
  const auto writer = MakeBareWriter(settings.format);
  const auto write = [&](const std::string& name) { writer->Row({Cell::Text(name)}); };
  writer->Header({"Name"});
  std::vector<std::string> words = options.words;
  for (const std::string& word : options.words) {
    if (const std::optional<LONG> id = AsIdentifier(word)) {
      database.Get(table, *id);  // there must be one
      write(database.DefaultName(table, *id));
      std::erase(words, word);
    }
  }
  if (!words.empty()) {
    for (const Assignments& tool : ReadTools(database, table, words)) {
      write(database.DefaultName(table, ArraysOf(tool)));
    }
  }
  writer->End();
}

void ListFields(const Settings& settings, const std::string& name) {
  auto [database, table] = OpenTable(settings, name);
  const std::vector<std::string> searched = database.SearchParams(table);
  const auto flag = [](bool value) { return Cell{Cell::Kind::Flag, value ? "true" : "false"}; };
  const auto writer = MakeRowWriter(settings.format);
  writer->Header({"Name", "Type", "Hidden", "Search", "Lookup"});
  for (const Property& property : database.Properties(table)) {
    writer->Row({Cell::Text(property.name), Cell::Text(TypeName(property.type)),
                 flag(database.IsHidden(property.name)),
                 flag(std::ranges::find(searched, property.name) != searched.end()),
                 flag(database.PermissibleValues(table, property.name).has_value())});
  }
  writer->End();
}

}  // namespace

void AddPropertyCommands(CLI::App& app, const Settings& settings) {
  CLI::App* show = app.add_subcommand("show", "Show the properties of a tool");
  const auto shown = std::make_shared<ShowOptions>();
  AddTable(*show, shown->table);
  show->add_option("ID", shown->id, "The number of the tool")->required()->type_name("");
  show->add_flag("--all", shown->all, "Hidden properties too");
  show->footer("Example:\n  orxdb show TAP 5");
  show->callback([&settings, shown] { Show(settings, *shown); });

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
      "A tool is added and deleted again to find out; its number is used up.\n\n"
      "Example:\n  orxdb defaults TAP");
  defaults->callback([&settings, fresh] { Defaults(settings, *fresh); });

  CLI::App* fields = app.add_subcommand("fields", "List the properties of a table's tools");
  const auto table = std::make_shared<std::string>();
  AddTable(*fields, *table);
  fields->footer(
      "Search is yes for properties that tools are looked for by, Lookup for those whose text\n"
      "comes from a list.\n\n"
      "Example:\n  orxdb fields TAP");
  fields->callback([&settings, table] { ListFields(settings, *table); });
}

}  // namespace orxdb
