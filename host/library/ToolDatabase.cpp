#include "host/library/ToolDatabase.h"

#include <algorithm>

#include "host/library/Cause.h"
#include "host/library/Component.h"
#include "host/library/DatabaseFile.h"
#include "host/library/Names.h"
#include "platform/framework/Text.h"

namespace orxdb {
namespace {

std::vector<std::string> Texts(const Variant& array) {
  std::vector<std::string> texts;
  if (array.type() == (VT_ARRAY | VT_BSTR)) {
    for (BSTR text : ArrayAccess<BSTR>(array.get().parray)) texts.push_back(NarrowBstr(text));
  }
  return texts;
}

std::vector<ToolKind> ReadTypes(IOrxDbObj& component) {
  std::vector<ToolKind> kinds;
  for (const ToolType& type : ToolTypes(component)) {
    kinds.push_back({Narrow(type.type), Narrow(type.subtype), Narrow(type.table)});
  }
  return kinds;
}

/// Names that follow from no property come with blanks behind them.
std::string WithoutBlanks(const Bstr& name) {
  std::string text = NarrowBstr(name.get());
  text.erase(text.find_last_not_of(' ') + 1);
  return text;
}

}  // namespace

std::vector<Cell> CellsOf(const Variant& array) {
  std::vector<Cell> cells;
  if (array.type() == (VT_ARRAY | VT_VARIANT)) {
    for (const VARIANT& value : ArrayAccess<VARIANT>(array.get().parray)) {
      cells.push_back(Cell::Of(value));
    }
  }
  return cells;
}

const Property& PropertyNamed(const std::string& table, const std::string& name,
                              const std::vector<Property>& properties) {
  const auto found = FindNamed(properties, name, &Property::name);
  if (found != properties.end()) return *found;
  std::vector<std::string> names(properties.size());
  std::ranges::transform(properties, names.begin(), &Property::name);
  throw HostError("The tools of " + table + " have no property " + Cited(name) + '.' +
                  Nearest(name, names) + " They have: " + Listed(names) + '.');
}

std::vector<std::string> ToolProperties::Names() const {
  return Texts(names);
}

std::vector<Cell> ToolProperties::Cells() const {
  return CellsOf(values);
}

Cell ToolProperties::Value(std::string_view name) const {
  const std::vector<std::string> all = Names();
  const auto found = std::ranges::find(all, name);
  return found == all.end() ? Cell() : Cells()[static_cast<std::size_t>(found - all.begin())];
}

ToolDatabase::ToolDatabase(const std::string& file)
    : m_component(CreateComponent()), m_library(CreateLibrary()), m_file(DatabaseNamed(file)) {
  m_component->SetMdbFile(WidenToBstr(file).get());
  m_types = ReadTypes(*m_component);
  if (m_types.empty()) {
    throw HostError(WhyUnusable(m_file));
  }
}

std::string ToolDatabase::LastError() const {
  Bstr text;
  m_library->LastError(text.put());
  return NarrowBstr(text.get());
}

std::string ToolDatabase::TableNamed(const std::string& name) const {
  const auto match = FindNamed(m_types, name, &ToolKind::table);
  if (match == m_types.end()) {
    std::vector<std::string> names;
    for (const ToolKind& kind : m_types) names.push_back(kind.table);
    throw HostError("There is no tool table " + Cited(name) + '.' + Nearest(name, names) +
                    " `orxdb types` lists all.");
  }
  return match->table;
}

void ToolDatabase::Select(const std::string& table, const std::string& where,
                          const std::string& order) {
  // Behind a bad order they are no longer told.
  const std::vector<Property> properties =
      order.empty() ? std::vector<Property>() : Properties(table);
  if (FAILED(m_component->SetTabFilter(WidenToBstr(table).get(), WidenToBstr(where).get(),
                                       WidenToBstr(order).get()))) {
    throw HostError("The database does not accept the order " + Cited(order) + '.' +
                    CauseOf(order, Cause(*this), properties));
  }
}

LONG ToolDatabase::Count(const std::string& table) {
  LONG count = -1;
  if (FAILED(m_component->GetSelectedRecordCount(WidenToBstr(table).get(), &count)) || count < 0) {
    throw HostError("The tools of " + table + " cannot be counted." + Cause(*this));
  }
  return count;
}

bool ToolDatabase::IsHidden(const std::string& property) {
  VARIANT_BOOL hidden = VARIANT_FALSE;
  if (FAILED(m_component->IsHiddenProperty(WidenToBstr(property).get(), &hidden))) {
    throw HostError("The component does not tell whether '" + property + "' is hidden.");
  }
  return hidden != VARIANT_FALSE;
}

std::vector<Property> ToolDatabase::Properties(const std::string& table) {
  Variant names;
  Variant types;
  m_component->GetPropsTypes(WidenToBstr(table).get(), names.put(), types.put());
  const std::vector<std::string> texts = Texts(names);
  const ArrayAccess<SHORT> codes(types.type() == (VT_ARRAY | VT_I2) ? types.get().parray : nullptr);
  if (texts.empty() || codes.size() != texts.size()) {
    throw HostError("The properties of " + table + " cannot be read.");
  }
  std::vector<Property> properties;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    properties.push_back({texts[i], static_cast<VARTYPE>(codes[i])});
  }
  return properties;
}

FieldLimits ToolDatabase::Limits(const std::string& table, const std::string& property) {
  FieldLimits limits;
  VARIANT_BOOL required = VARIANT_FALSE;
  Variant lowest;
  Variant highest;
  if (FAILED(m_library->GetFieldLimits(WidenToBstr(table).get(), WidenToBstr(property).get(),
                                       &limits.longest, &required, lowest.put(), highest.put()))) {
    throw HostError("The limits of " + property + " of " + table + " cannot be read.");
  }
  limits.required = required != VARIANT_FALSE;
  return limits;
}

std::vector<std::string> ToolDatabase::SearchParams(const std::string& table) {
  Variant names;
  m_component->GetSearchParamNames(WidenToBstr(table).get(), names.put());
  return Texts(names);
}

std::optional<std::vector<Cell>> ToolDatabase::PermissibleValues(const std::string& table,
                                                                 const std::string& property,
                                                                 double tapDiameter) {
  Variant values;
  m_component->GetPermissibleValues(WidenToBstr(table).get(), WidenToBstr(property).get(),
                                    tapDiameter, values.put());
  if (values.empty()) return std::nullopt;
  return CellsOf(values);
}

ToolProperties ToolDatabase::Find(const std::string& table, LONG id) {
  ToolProperties tool;
  if (FAILED(m_component->GetToolProps(WidenToBstr(table).get(), id, tool.names.put(),
                                       tool.values.put()))) {
    throw HostError("The tools of " + table + " cannot be read." + Cause(*this));
  }
  return tool;
}

ToolProperties ToolDatabase::Get(const std::string& table, LONG id) {
  ToolProperties tool = Find(table, id);
  if (!tool) throw HostError("There is no tool " + std::to_string(id) + " in " + table + '.');
  return tool;
}

std::string ToolDatabase::DefaultName(const std::string& table, LONG id) {
  Bstr name;
  m_component->GenerateDefToolName(WidenToBstr(table).get(), id, name.put());
  return WithoutBlanks(name);
}

std::string ToolDatabase::DefaultName(const std::string& table, ToolProperties tool) {
  Bstr name;
  m_component->GenerateDefToolName2(WidenToBstr(table).get(), tool.names.ptr(), tool.values.ptr(),
                                    name.put());
  return WithoutBlanks(name);
}

bool ToolDatabase::IsKey(const std::string& table, const std::string& property) {
  // A query over several tables may show the key under its full name.
  return property == "ID" || property == table + ".ID";
}

ToolWalk::ToolWalk(ToolDatabase& database, const std::string& table, const std::string& filter)
    : m_database(database),
      m_table(table),
      m_tools(database.Component(), Widen(table)),
      m_tool(m_tools.begin()) {
  if (FAILED(m_tools.status())) {
    const std::string cause = Cause(database);
    if (filter.empty()) throw HostError("The tools of " + table + " cannot be read." + cause);
    throw HostError("The database does not accept the filter " + Cited(filter) + '.' +
                    CauseOf(filter, cause, database.Properties(table)));
  }
}

void ToolWalk::Next() {
  ++m_tool;
  if (FAILED(m_tools.status())) {
    throw HostError("The walk over " + m_table + " could not go on." + Cause(m_database));
  }
}

std::vector<Cell> ToolWalk::Values(const std::vector<std::size_t>& positions) const {
  const ArrayAccess<VARIANT> values((*m_tool).values().get().parray);
  std::vector<Cell> cells;
  cells.reserve(positions.size());
  for (const std::size_t position : positions) {
    cells.push_back(position < values.size() ? Cell::Of(values[position]) : Cell());
  }
  return cells;
}

}  // namespace orxdb
