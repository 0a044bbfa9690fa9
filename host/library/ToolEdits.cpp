#include "host/library/ToolEdits.h"

#include <algorithm>
#include <array>

#include "host/library/Cause.h"
#include "host/library/ChangeGroup.h"
#include "host/library/MessageCatcher.h"
#include "platform/framework/Text.h"

namespace orxdb {
namespace {

std::string Described(const std::string& table, LONG id) {
  return "Tool " + std::to_string(id) + " of " + table;
}

/// The beginning of a UTF-8 text, of so many characters.
std::string FirstCharacters(const std::string& text, std::size_t count) {
  std::size_t end = 0;
  for (; end < text.size(); ++end) {
    const bool begins = (static_cast<unsigned char>(text[end]) & 0xc0U) != 0x80U;
    if (begins && count-- == 0) break;
  }
  return text.substr(0, end);
}

Variant CopyOf(const VARIANT& value) {
  Variant copy;
  if (FAILED(VariantCopy(copy.ptr(), &value))) throw std::bad_alloc();
  return copy;
}

/// Complains of what was given and is not in the tool, which has a cause.
void Compare(const std::string& table, LONG id, const ToolProperties& tool,
             const Assignments& given, const std::string& cause, Answer& answer) {
  std::string missed;
  for (const Assignment& assignment : given) {
    if (tool.Value(assignment.property) == assignment.shown) continue;
    missed += (missed.empty() ? "" : ", ") + assignment.property;
  }
  if (missed.empty()) return;
  answer.Complain(Described(table, id) + ": not written: " + missed + '.' + cause);
}

/// Changes properties of the tool, complains of what is not written, and gives the tool as it then
/// is.
ToolProperties Write(ToolDatabase& database, const std::string& table, LONG id,
                     const Assignments& given, Answer& answer) {
  ToolProperties arrays = ArraysOf(given);
  if (FAILED(database.Component().SetToolProps(WidenToBstr(table).get(), id, arrays.names.ptr(),
                                               arrays.values.ptr()))) {
    throw HostError(Described(table, id) + " was not changed." + Cause(database));
  }
  const std::string cause = Cause(database);
  ToolProperties tool = database.Get(table, id);
  Compare(table, id, tool, given, cause, answer);
  return tool;
}

/// Adds tools, in a group of changes.
class Adding {
 public:
  Adding(ToolDatabase& database, const std::string& table)
      : m_database(database), m_table(table), m_wideTable(WidenToBstr(table)) {}

  /// The number of the new tool.
  LONG Add(Assignments given) {
    std::erase_if(given, [this](const Assignment& assignment) {
      return assignment.value.isNull() || IsGivenKey(assignment.property);
    });
    ToolProperties arrays = ArraysOf(given);
    const MessageCatcher message;
    LONG id = -1;
    if (FAILED(m_database.Component().AddNewRecord(m_wideTable.get(), arrays.names.ptr(),
                                                   arrays.values.ptr(), &id))) {
      throw HostError("No tool was added to " + m_table + '.' +
                      (message.Text().empty() ? Cause(m_database) : ' ' + message.Text() + '.'));
    }
    const std::string cause = Cause(m_database);
    const ToolProperties stored = m_database.Get(m_table, id);
    Compare(m_table, id, stored, given, cause, m_answer);
    std::string name = stored.Value("Name").text;
    const std::vector<std::string> names = stored.Names();
    if (name.empty() && std::ranges::count(names, "Name") > 0) name = GiveName(id);
    m_answer.rows.push_back({Cell::Text(name), Cell::Number(id)});
    return id;
  }

  Answer Result() && { return std::move(m_answer); }

 private:
  bool IsGivenKey(const std::string& property) {
    if (!ToolDatabase::IsKey(m_table, property)) return false;
    if (!std::exchange(m_keyTold, true)) {
      m_answer.remarks.push_back(property + " is not used: the database numbers the tools.");
    }
    return true;
  }

  /// Names a stored tool by its properties, those that the database filled in too.
  std::string GiveName(LONG id) {
    std::string name = m_database.DefaultName(m_table, m_database.Get(m_table, id));
    if (name.empty()) return name;
    Assignments given(1);
    given[0] = {"Name", Variant::FromBstr(WidenToBstr(name)), Cell::Text(name)};
    Write(m_database, m_table, id, given, m_answer);
    m_answer.remarks.push_back("Tool " + std::to_string(id) + " is named '" + name + "'.");
    return name;
  }

  ToolDatabase& m_database;
  const std::string& m_table;
  Bstr m_wideTable;
  Answer m_answer{{"Name", "ID"}};
  bool m_keyTold = false;
};

/// Changes the tool and gives the properties as they then are, in one row.
Answer Changed(ToolDatabase& database, const std::string& table, LONG id,
               const Assignments& given) {
  Answer answer({}, {});
  const ToolProperties tool = Write(database, table, id, given, answer);
  for (const Assignment& assignment : given) {
    answer.columns.push_back(assignment.property);
    answer.rows.front().push_back(tool.Value(assignment.property));
  }
  return answer;
}

/// A name for a copy of a tool that no tool of the table has yet.
std::string NameOfCopy(ToolDatabase& database, const std::string& table, const std::string& name) {
  const auto longest = static_cast<std::size_t>(database.Limits(table, "Name").longest);
  for (int number = 1;; ++number) {
    const std::string ending = " copy" + (number == 1 ? "" : ' ' + std::to_string(number));
    std::string copy = name;
    if (longest > 0) copy = FirstCharacters(copy, longest - std::min(longest, ending.size()));
    copy += ending;
    // The component looks for it between apostrophes.
    VARIANT_BOOL unique = VARIANT_FALSE;
    if (FAILED(database.Component().IsToolNameUnique(
            WidenToBstr(table).get(), WidenToBstr(WithApostrophesDoubled(copy)).get(), &unique))) {
      throw HostError("The names of " + table + " cannot be looked at." + Cause(database));
    }
    if (unique != VARIANT_FALSE) return copy;
  }
}

/// Whether a copy of a tool has its property, whatever else is given for the copy. Others are of
/// the tool alone or follow from what it has.
bool IsCopied(const std::string& table, const std::string& property, const Assignments& given) {
  const auto isGiven = [&given](std::string_view name) {
    return std::ranges::find(given, name, &Assignment::property) != given.end();
  };
  constexpr auto kOfHead = std::to_array<std::string_view>(
      {"Approach_Height", "Retraction_Height", "Extra_Depth", "Retraction_Ratio"});
  const bool follows = property.starts_with("AUX_") ||
                       (isGiven("TappingHead") && std::ranges::count(kOfHead, property) > 0);
  return !ToolDatabase::IsKey(table, property) && property != "Name" && !follows &&
         !isGiven(property);
}

}  // namespace

Answer AddTools(ToolDatabase& database, const std::string& table, std::vector<Assignments> tools) {
  ChangeGroup group(database);
  Adding adding(database, table);
  for (Assignments& tool : tools) adding.Add(std::move(tool));
  group.End();
  return std::move(adding).Result();
}

Answer CopyTool(ToolDatabase& database, const std::string& table, LONG id,
                const Assignments& given) {
  const ToolProperties original = database.Get(table, id);
  const std::vector<Property> properties = database.Properties(table);
  const std::vector<Cell> cells = original.Cells();
  const ArrayAccess<VARIANT> values(original.values.get().parray);
  Assignments copy;
  Assignments cleared;  // the copy begins with defaults
  for (const Assignment& assignment : given) {
    Assignments& list = assignment.value.isNull() ? cleared : copy;
    list.push_back({assignment.property, assignment.value.Copy(), assignment.shown});
  }
  for (std::size_t i = 0; i < properties.size() && i < cells.size(); ++i) {
    const std::string& name = properties[i].name;
    if (!IsCopied(table, name, given)) continue;
    if (cells[i].kind == Cell::Kind::Null) {
      cleared.push_back({name, Variant::Null(), {}});
    } else if (properties[i].type == VT_BSTR && database.PermissibleValues(table, name)) {
      copy.push_back(LookedUp(name, cells[i].text));
    } else {
      copy.push_back({name, CopyOf(values[i]), cells[i]});
    }
  }
  if (std::ranges::find(given, "Name", &Assignment::property) == given.end()) {
    const std::string name = NameOfCopy(database, table, original.Value("Name").text);
    copy.push_back({"Name", Variant::FromBstr(WidenToBstr(name)), Cell::Text(name)});
  }
  ChangeGroup group(database);
  Adding adding(database, table);
  const LONG added = adding.Add(std::move(copy));
  const ToolProperties begun = database.Get(table, added);
  std::erase_if(cleared, [&begun](const Assignment& assignment) {
    return begun.Value(assignment.property).kind == Cell::Kind::Null;
  });
  Answer answer = std::move(adding).Result();
  if (!cleared.empty()) Write(database, table, added, cleared, answer);
  group.End();
  return answer;
}

Answer ChangeToolInGroup(ToolDatabase& database, const std::string& table, LONG id,
                         const Assignments& given) {
  Answer answer = Changed(database, table, id, given);
  if (!answer.complaint.empty()) throw HostError(answer.complaint);
  return answer;
}

Answer ChangeTool(ToolDatabase& database, const std::string& table, LONG id,
                  const Assignments& given, bool dryRun) {
  database.Get(table, id);  // there must be one
  ChangeGroup group(database);
  Answer answer = Changed(database, table, id, given);
  if (!dryRun) group.End();
  return answer;
}

void DeleteToolInGroup(ToolDatabase& database, const std::string& table, LONG id) {
  database.Component().DeleteTool(WidenToBstr(table).get(), id);
  const std::string cause = Cause(database);
  if (database.Find(table, id)) throw HostError(Described(table, id) + " was not deleted." + cause);
}

Answer DeleteTools(ToolDatabase& database, const std::string& table, const std::vector<LONG>& ids,
                   bool dryRun) {
  ChangeGroup group(database);
  Answer answer({"ID"});
  for (const LONG id : ids) {
    try {
      database.Get(table, id);  // there must be one
      DeleteToolInGroup(database, table, id);
      answer.rows.push_back({Cell::Number(id)});
    } catch (const HostError& e) {
      answer.Complain(e.what());
    }
  }
  if (!dryRun) group.End();
  return answer;
}

}  // namespace orxdb
