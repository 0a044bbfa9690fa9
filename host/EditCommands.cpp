// add, set, delete: changing the tools. The component passes over what a field does not take, and
// its results tell little; so tools are read back, and what is not as it was given is told.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <memory>

#include "host/CommonArguments.h"
#include "host/ToolInput.h"
#include "platform/framework/Exception.h"
#include "platform/framework/MessageBox.h"
#include "platform/framework/Text.h"

namespace orxdb {
namespace {

constexpr const char* kRefused = " The database may be read-only, full or in use.";

struct EditOptions {
  std::string table;
  LONG id = 0;
  std::vector<LONG> ids;
  std::vector<std::string> words;
};

/// Keeps the last message that the component shows, instead of showing it.
class MessageCatcher {
 public:
  MessageCatcher()
      : m_earlier(
            InstallMessageBoxHandler([this](const std::string& text, const std::string&, unsigned) {
              m_text = text;
              return IDOK;
            })) {}
  MessageCatcher(const MessageCatcher&) = delete;
  MessageCatcher& operator=(const MessageCatcher&) = delete;
  ~MessageCatcher() { InstallMessageBoxHandler(m_earlier); }

  /// Empty without a message.
  const std::string& Text() const noexcept { return m_text; }

 private:
  std::string m_text;
  MessageBoxHandler m_earlier;
};

std::string Described(const std::string& table, LONG id) {
  return "Tool " + std::to_string(id) + " of " + table;
}

/// What a verb could not do although it did the rest, told when all is done.
class Complaints {
 public:
  void Add(const std::string& sentence) { m_text += (m_text.empty() ? "" : "\n") + sentence; }
  /// Throws HostError when there are any.
  void Tell() const {
    if (!m_text.empty()) throw HostError(m_text);
  }

 private:
  std::string m_text;
};

/// Complains of what was given and is not in the tool.
void Compare(const std::string& which, const ToolProperties& tool, const Assignments& given,
             Complaints& complaints) {
  std::string missed;
  for (const Assignment& assignment : given) {
    if (tool.Value(assignment.property) == assignment.shown) continue;
    missed += (missed.empty() ? "" : ", ") + assignment.property;
  }
  if (!missed.empty()) complaints.Add(which + ": not written: " + missed + '.');
}

/// Adds tools, which can be undone: a batch is added as a whole or not at all.
class Adding {
 public:
  Adding(ToolDatabase& database, const std::string& table)
      : m_database(database), m_table(table), m_wideTable(WidenToBstr(table)) {}

  void Add(Assignments given) {
    std::erase_if(given, [this](const Assignment& assignment) {
      return assignment.value.isNull() || IsGivenKey(assignment.property);
    });
    ToolProperties arrays = ArraysOf(given);
    const MessageCatcher message;
    Tool tool;
    if (FAILED(m_database.Component().AddNewRecord(m_wideTable.get(), arrays.names.ptr(),
                                                   arrays.values.ptr(), &tool.id))) {
      throw HostError("No tool was added to " + m_table + '.' +
                      (message.Text().empty() ? kRefused : ' ' + message.Text() + '.'));
    }
    m_tools.push_back(tool);
    const ToolProperties stored = m_database.Get(m_table, tool.id);
    Compare(Described(m_table, tool.id), stored, given, m_complaints);
    m_tools.back().name = stored.Value("Name").text;
    const std::vector<std::string> names = stored.Names();
    const bool nameless = m_tools.back().name.empty() && std::ranges::count(names, "Name") > 0;
    if (nameless) GiveName(m_tools.back());
  }

  /// Deletes the tools again; gives a sentence, behind a blank, on those that did not go.
  std::string Undo() {
    std::string left;
    for (const Tool& tool : m_tools) {
      m_database.Component().DeleteTool(m_wideTable.get(), tool.id);
      if (MayBeThere(tool)) left += ' ' + std::to_string(tool.id);
    }
    return left.empty() ? left : " Added before, and not deleted again:" + left + '.';
  }

  /// Writes the numbers of the tools.
  void Tell(Format format) const {
    const auto writer = MakeBareWriter(format);
    writer->Header({"Name", "ID"});
    for (const Tool& tool : m_tools) {
      writer->Row({Cell::Text(tool.name), Cell::Number(tool.id)});
    }
    writer->End();
    m_complaints.Tell();
  }

 private:
  struct Tool {
    LONG id = -1;
    std::string name;
  };

  bool MayBeThere(const Tool& tool) {
    try {
      return static_cast<bool>(m_database.Find(m_table, tool.id));
    } catch (const HostError&) {
      return true;
    }
  }

  bool IsGivenKey(const std::string& property) {
    if (!ToolDatabase::IsKey(m_table, property)) return false;
    if (!std::exchange(m_keyTold, true)) {
      std::fprintf(stderr, "%s is not used: the database numbers the tools.\n", property.c_str());
    }
    return true;
  }

  /// Names a stored tool by its properties, those that the database filled in too.
  void GiveName(Tool& tool) {
    tool.name = m_database.DefaultName(m_table, m_database.Get(m_table, tool.id));
    if (tool.name.empty()) return;
    Assignments name(1);
    name[0] = {"Name", Variant::FromBstr(WidenToBstr(tool.name)), Cell::Text(tool.name)};
    ToolProperties arrays = ArraysOf(name);
    m_database.Component().SetToolProps(m_wideTable.get(), tool.id, arrays.names.ptr(),
                                        arrays.values.ptr());
    Compare(Described(m_table, tool.id), m_database.Get(m_table, tool.id), name, m_complaints);
    std::fprintf(stderr, "Tool %d is named '%s'.\n", tool.id, tool.name.c_str());
  }

  ToolDatabase& m_database;
  const std::string& m_table;
  Bstr m_wideTable;
  std::vector<Tool> m_tools;
  Complaints m_complaints;
  bool m_keyTold = false;
};

void Add(const Settings& settings, const EditOptions& options) {
  auto [database, table] = OpenTable(settings, options.table);
  // All are read before the first is written.
  std::vector<Assignments> tools = ReadTools(database, table, options.words);
  Adding adding(database, table);
  try {
    for (Assignments& tool : tools) adding.Add(std::move(tool));
  } catch (const std::exception& e) {
    throw HostError(e.what() + adding.Undo());
  } catch (const CException&) {
    adding.Undo();
    throw;
  }
  adding.Tell(settings.format);
}

void Set(const Settings& settings, const EditOptions& options) {
  auto [database, table] = OpenTable(settings, options.table);
  const LONG id = options.id;
  const std::vector<Assignments> tools = ReadTools(database, table, options.words);
  if (tools.size() != 1) throw HostError("The properties of one tool are wanted.");
  const Assignments& given = tools.front();
  database.Get(table, id);  // there must be one
  ToolProperties arrays = ArraysOf(given);
  if (FAILED(database.Component().SetToolProps(WidenToBstr(table).get(), id, arrays.names.ptr(),
                                               arrays.values.ptr()))) {
    throw HostError(Described(table, id) + " was not changed." + kRefused);
  }
  const ToolProperties tool = database.Get(table, id);
  std::vector<std::string> names;
  std::vector<Cell> cells;
  for (const Assignment& assignment : given) {
    names.push_back(assignment.property);
    cells.push_back(tool.Value(assignment.property));
  }
  WriteRecord(settings.format, names, std::move(cells));
  Complaints complaints;
  Compare(Described(table, id), tool, given, complaints);
  complaints.Tell();
}

void Delete(const Settings& settings, const EditOptions& options) {
  auto [database, table] = OpenTable(settings, options.table);
  const auto writer = MakeBareWriter(settings.format);
  writer->Header({"ID"});
  Complaints complaints;
  for (const LONG id : options.ids) {
    const bool present = static_cast<bool>(database.Find(table, id));
    database.Component().DeleteTool(WidenToBstr(table).get(), id);
    if (!present) {
      complaints.Add("There is no tool " + std::to_string(id) + " in " + table + '.');
    } else if (database.Find(table, id)) {
      complaints.Add(Described(table, id) + " was not deleted." + kRefused);
    } else {
      writer->Row({Cell::Number(id)});
    }
  }
  writer->End();
  complaints.Tell();
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
