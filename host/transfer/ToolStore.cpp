#include "host/transfer/ToolStore.h"

#include <algorithm>

#include "host/library/MessageCatcher.h"
#include "host/library/Names.h"
#include "host/library/NewToolDefaults.h"
#include "host/library/PropertyText.h"
#include "host/transfer/FieldValues.h"
#include "host/transfer/KnownTools.h"
#include "platform/framework/Text.h"

namespace orxdb {
namespace {

const Assignment* Given(const Assignments& values, std::string_view property) {
  const auto found = std::ranges::find(values, property, &Assignment::property);
  return found == values.end() ? nullptr : &*found;
}

Assignments Copied(const Assignments& values) {
  Assignments copy;
  for (const Assignment& value : values) {
    copy.push_back({value.property, value.value.Copy(), value.shown});
  }
  return copy;
}

HostError NotTaken(const std::string& missed) {
  return HostError("The database does not take " + missed + " as given.");
}

}  // namespace

ToolStore::Stored ToolStore::Add(const UnderstoodTool& tool) {
  Assignments written = Copied(tool.values);
  std::erase_if(written, [](const Assignment& value) { return value.value.isNull(); });
  std::ranges::move(DefaultLengths(tool), std::back_inserter(written));
  const Bstr table = WidenToBstr(tool.table);
  ToolProperties arrays = ArraysOf(written);
  Stored stored;
  {
    const MessageCatcher message;
    if (FAILED(m_database.Component().AddNewRecord(table.get(), arrays.names.ptr(),
                                                   arrays.values.ptr(), &stored.id))) {
      throw HostError(message.Text().empty() ? "The database does not take it."
                                             : message.Text() + '.');
    }
  }
  try {
    stored.tool = m_database.Get(tool.table, stored.id);
    // What is given as none, where new tools start with something, and the name that is shown.
    Assignments changes;
    for (const Assignment& value : tool.values) {
      const bool filled = value.value.isNull() && !stored.tool.Value(value.property).text.empty();
      if (filled) changes.push_back({value.property, Variant::Null(), {}});
    }
    if (stored.tool.Value("Name").text.empty()) {
      const std::string name =
          m_database.DefaultName(tool.table, m_database.Get(tool.table, stored.id));
      if (!name.empty()) {
        changes.push_back({"Name", Variant::FromBstr(WidenToBstr(name)), Cell::Text(name)});
      }
    }
    if (!changes.empty()) {
      Write(tool.table, stored.id, changes);
      stored.tool = m_database.Get(tool.table, stored.id);
    }
    const std::string missed = Missed(stored.tool, tool.values);
    if (!missed.empty()) throw NotTaken(missed);
  } catch (const HostError&) {
    m_database.Component().DeleteTool(table.get(), stored.id);
    throw;
  }
  return stored;
}

ToolStore::Stored ToolStore::Update(LONG id, const UnderstoodTool& tool) {
  const ToolProperties before = m_database.Get(tool.table, id);
  Write(tool.table, id, tool.values);
  Stored stored{id, m_database.Get(tool.table, id)};
  const std::string missed = Missed(stored.tool, tool.values);
  if (!missed.empty()) {
    Assignments old;
    const std::vector<std::string> names = before.Names();
    const ArrayAccess<VARIANT> values(before.values.get().parray);
    for (std::size_t i = 0; i < names.size(); ++i) {
      if (Given(tool.values, names[i])) old.push_back({names[i], Variant::CopyOf(values[i]), {}});
    }
    Write(tool.table, id, old);
    throw NotTaken(missed);
  }
  return stored;
}

void ToolStore::Write(const std::string& table, LONG id, const Assignments& values) {
  ToolProperties arrays = ArraysOf(values);
  if (FAILED(m_database.Component().SetToolProps(WidenToBstr(table).get(), id, arrays.names.ptr(),
                                                 arrays.values.ptr()))) {
    throw HostError("The database does not change the tool " + std::to_string(id) + '.');
  }
}

std::string ToolStore::Missed(const ToolProperties& stored, const Assignments& values) {
  const std::vector<std::string> names = stored.Names();
  const std::vector<Cell> cells = stored.Cells();
  std::vector<std::string> missed;
  for (const Assignment& value : values) {
    const auto name = std::ranges::find(names, value.property);
    const bool same = name != names.end() &&
                      IsSame(cells[static_cast<std::size_t>(name - names.begin())], value.shown);
    if (!same) missed.push_back(value.property);
  }
  return Listed(missed);
}

Assignments ToolStore::DefaultLengths(const UnderstoodTool& tool) {
  const Assignment* unit = Given(tool.values, "Unit");
  if (!unit) return {};
  const Defaults& defaults = DefaultsOf(tool.table);
  const Unit own = LengthUnitNamed(unit->shown.text);
  Assignments lengths;
  if (defaults.unit == Unit::None || defaults.unit == own) return lengths;
  for (const Assignment& length : defaults.lengths) {
    if (Given(tool.values, length.property)) continue;
    const std::string number = Converted(length.shown.text, defaults.unit, own);
    lengths.push_back({length.property,
                       ParseValue({length.property, length.value.type()}, number),
                       {Cell::Kind::Number, number}});
  }
  return lengths;
}

const ToolStore::Defaults& ToolStore::DefaultsOf(const std::string& table) {
  const auto [place, isNew] = m_defaults.try_emplace(table);
  Defaults& defaults = place->second;
  if (!isNew) return defaults;
  try {
    const ToolProperties tool = DefaultsOfNewTool(m_database, table);
    defaults.unit = LengthUnitNamed(tool.Value("Unit").text);
    const ArrayAccess<VARIANT> values(tool.values.get().parray);
    std::size_t position = 0;
    for (const Property& property : m_database.Properties(table)) {
      const VARIANT& value = values[position++];
      const bool isDefault = FieldValues::IsLength(property) && value.vt == property.type &&
                             !property.name.starts_with("AUX_");
      if (isDefault) {
        defaults.lengths.push_back({property.name, Variant::CopyOf(value), Cell::Of(value)});
      }
    }
  } catch (const HostError& e) {
    m_remarks.push_back(
        "Lengths that are not given start as the database fills them in, whatever "
        "the unit of the tool. " +
        std::string(e.what()));
  }
  return defaults;
}

void ToolStore::Requery(const std::string& table) {
  const Bstr name = WidenToBstr(table);
  ToolProperties none = ArraysOf({});
  m_database.Select(table, {}, {});
  ToolProperties first;
  m_database.Component().GetFirstTool(name.get(), first.names.put(), first.values.put());
  LONG id = 0;
  if (first) {
    // Changes nothing.
    for (const std::string& key : {std::string("ID"), table + ".ID"}) {
      const Cell cell = first.Value(key);
      if (!cell.text.empty()) id = static_cast<LONG>(std::stol(cell.text));
    }
    m_database.Component().SetToolProps(name.get(), id, none.names.ptr(), none.values.ptr());
  } else if (SUCCEEDED(m_database.Component().AddNewRecord(name.get(), none.names.ptr(),
                                                           none.values.ptr(), &id))) {
    m_database.Component().DeleteTool(name.get(), id);
  }
}

}  // namespace orxdb
