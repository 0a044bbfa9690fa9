#include "host/library/ToolEdits.h"

#include <algorithm>

#include "host/library/Cause.h"
#include "host/library/MessageCatcher.h"
#include "platform/framework/Exception.h"
#include "platform/framework/Text.h"

namespace orxdb {
namespace {

std::string Described(const std::string& table, LONG id) {
  return "Tool " + std::to_string(id) + " of " + table;
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

/// Adds tools, which can be undone.
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
    LONG id = -1;
    if (FAILED(m_database.Component().AddNewRecord(m_wideTable.get(), arrays.names.ptr(),
                                                   arrays.values.ptr(), &id))) {
      throw HostError("No tool was added to " + m_table + '.' +
                      (message.Text().empty() ? Cause(m_database) : ' ' + message.Text() + '.'));
    }
    m_ids.push_back(id);
    const std::string cause = Cause(m_database);
    const ToolProperties stored = m_database.Get(m_table, id);
    Compare(m_table, id, stored, given, cause, m_answer);
    std::string name = stored.Value("Name").text;
    const std::vector<std::string> names = stored.Names();
    if (name.empty() && std::ranges::count(names, "Name") > 0) name = GiveName(id);
    m_answer.rows.push_back({Cell::Text(name), Cell::Number(id)});
  }

  /// Deletes the tools again; gives a sentence, behind a blank, on those that did not go.
  std::string Undo() {
    std::string left;
    for (const LONG id : m_ids) {
      m_database.Component().DeleteTool(m_wideTable.get(), id);
      if (MayBeThere(id)) left += ' ' + std::to_string(id);
    }
    return left.empty() ? left : " Added before, and not deleted again:" + left + '.';
  }

  Answer Result() && { return std::move(m_answer); }

 private:
  bool MayBeThere(LONG id) {
    try {
      return static_cast<bool>(m_database.Find(m_table, id));
    } catch (const HostError&) {
      return true;
    }
  }

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
    ToolProperties arrays = ArraysOf(given);
    m_database.Component().SetToolProps(m_wideTable.get(), id, arrays.names.ptr(),
                                        arrays.values.ptr());
    const std::string cause = Cause(m_database);
    Compare(m_table, id, m_database.Get(m_table, id), given, cause, m_answer);
    m_answer.remarks.push_back("Tool " + std::to_string(id) + " is named '" + name + "'.");
    return name;
  }

  ToolDatabase& m_database;
  const std::string& m_table;
  Bstr m_wideTable;
  std::vector<LONG> m_ids;
  Answer m_answer{{"Name", "ID"}};
  bool m_keyTold = false;
};

}  // namespace

Answer AddTools(ToolDatabase& database, const std::string& table, std::vector<Assignments> tools) {
  Adding adding(database, table);
  try {
    for (Assignments& tool : tools) adding.Add(std::move(tool));
  } catch (const std::exception& e) {
    throw HostError(e.what() + adding.Undo());
  } catch (const CException&) {
    adding.Undo();
    throw;
  }
  return std::move(adding).Result();
}

Answer ChangeTool(ToolDatabase& database, const std::string& table, LONG id,
                  const Assignments& given) {
  database.Get(table, id);  // there must be one
  ToolProperties arrays = ArraysOf(given);
  if (FAILED(database.Component().SetToolProps(WidenToBstr(table).get(), id, arrays.names.ptr(),
                                               arrays.values.ptr()))) {
    throw HostError(Described(table, id) + " was not changed." + Cause(database));
  }
  const std::string cause = Cause(database);
  const ToolProperties tool = database.Get(table, id);
  Answer answer({}, {});
  for (const Assignment& assignment : given) {
    answer.columns.push_back(assignment.property);
    answer.rows.front().push_back(tool.Value(assignment.property));
  }
  Compare(table, id, tool, given, cause, answer);
  return answer;
}

Answer DeleteTools(ToolDatabase& database, const std::string& table, const std::vector<LONG>& ids) {
  Answer answer({"ID"});
  for (const LONG id : ids) {
    const bool present = static_cast<bool>(database.Find(table, id));
    database.Component().DeleteTool(WidenToBstr(table).get(), id);
    const std::string cause = Cause(database);
    if (!present) {
      answer.Complain("There is no tool " + std::to_string(id) + " in " + table + '.');
    } else if (database.Find(table, id)) {
      answer.Complain(Described(table, id) + " was not deleted." + cause);
    } else {
      answer.rows.push_back({Cell::Number(id)});
    }
  }
  return answer;
}

}  // namespace orxdb
