#include "host/transfer/Understanding.h"

#include <algorithm>
#include <array>
#include <utility>

#include "host/library/Names.h"
#include "host/transfer/FieldValues.h"
#include "platform/framework/Text.h"

namespace orxdb {
namespace {

constexpr std::string_view kUnit = "Unit";

/// Names under which sources tell the kind of a tool.
constexpr auto kKindNames =
    std::to_array<std::string_view>({"table", "tooltable", "kind", "toolkind", "tooltype", "type",
                                     "typ", "subtype", "werkzeugart", "werkzeugtyp"});

bool IsAbsent(const DraftValue& value) {
  return value.absent || value.text.find_first_not_of(" \t") == std::string::npos;
}

/// Whether the database has the value of its own accord: the number of the tool, what it computes,
/// and what taps show of their heads.
bool IsFilledIn(const std::string& table, const std::string& property) {
  constexpr auto kOfHeads = std::to_array<std::string_view>(
      {"Approach_Height", "Retraction_Height", "Extra_Depth", "Retraction_Ratio"});
  return ToolDatabase::IsKey(table, property) || property.starts_with("AUX_") ||
         ((table == "TAP" || table == "PIPE_TAP") &&
          std::ranges::find(kOfHeads, property) != kOfHeads.end());
}

}  // namespace

/// What there is to know of the tools of one table.
class Understanding::Kind {
 public:
  Kind(ToolDatabase& database, const std::string& table, std::vector<ColumnMapping> mappings)
      : m_columns(database.Properties(table), std::move(mappings)),
        m_values(database, table),
        m_hasUnit(std::ranges::any_of(m_columns.Properties(), [](const Property& property) {
          return property.name == kUnit && property.type == VT_BSTR;
        })) {}

  Columns& ColumnsOf() noexcept { return m_columns; }
  FieldValues& Values() noexcept { return m_values; }
  bool HasUnit() const noexcept { return m_hasUnit; }

 private:
  Columns m_columns;
  FieldValues m_values;
  bool m_hasUnit;
};

/// One draft while it is being understood.
class Understanding::DraftReading {
 public:
  DraftReading(Understanding& all, Kind& kind, UnderstoodTool& tool)
      : m_all(all), m_kind(kind), m_tool(tool) {}

  void Run(const ToolDraft& draft) {
    for (const DraftValue& value : draft.values) Place(value);
    FindUnit(draft);
    for (const auto& [value, column] : m_placed) {
      if (column.property->name != kUnit) Read(*value, column);
    }
    if (m_unitless && m_tool.reasons.empty()) ++m_all.m_unitless[m_tool.table];
  }

 private:
  void Place(const DraftValue& value) {
    const std::optional<Column> column = m_kind.ColumnsOf().Find(value.name);
    if (!column) {
      const bool tellsKind = std::ranges::find(kKindNames, NameKey(value.name)) != kKindNames.end();
      auto& unmapped = m_all.m_unmapped;
      if (!tellsKind && std::ranges::find(unmapped, value.name) == unmapped.end()) {
        unmapped.push_back(value.name);
      }
    } else if (IsFilledIn(m_tool.table, column->property->name)) {
      if (!value.absent) m_all.m_filledIn.insert(column->property->name);
    } else {
      m_placed.emplace_back(&value, *column);
    }
  }

  void FindUnit(const ToolDraft& draft) {
    std::string_view told;
    for (const auto& [value, column] : m_placed) {
      if (column.property->name == kUnit && !IsAbsent(*value)) {
        if (!told.empty() && LengthUnitNamed(told) != LengthUnitNamed(value->text)) {
          m_tool.reasons.push_back("Unit is given twice, as " + Cited(std::string(told)) + " and " +
                                   Cited(value->text) + '.');
        }
        told = value->text;
      }
    }
    if (told.empty()) told = draft.unit;
    if (told.empty()) told = m_all.m_options.unit;
    if (!told.empty()) {
      m_unit.unit = LengthUnitNamed(told);
      if (m_unit.unit == Unit::None) {
        m_tool.reasons.push_back("Unit: " + Cited(std::string(told)) +
                                 " is no unit of tools; mm and in are.");
      }
    } else {
      m_unit.unit = UnitOfLengths();
      m_unit.fromLengths = m_unit.unit != Unit::None;
    }
    if (!m_kind.HasUnit()) {
      m_unit = {};
    } else if (m_unit.unit != Unit::None) {
      const std::string name(NameOf(m_unit.unit));
      m_tool.values.push_back(
          {std::string(kUnit), Variant::FromBstr(WidenToBstr(name)), Cell::Text(name)});
    }
  }

  /// The unit that the first length with one has.
  Unit UnitOfLengths() const {
    for (const auto& [value, column] : m_placed) {
      if (IsAbsent(*value) || !FieldValues::IsLength(*column.property)) continue;
      if (const Unit unit = FieldValues::UnitOf(value->text, column.unit); unit != Unit::None) {
        return unit;
      }
    }
    return Unit::None;
  }

  void Read(const DraftValue& value, const Column& column) {
    const Property& property = *column.property;
    try {
      if (std::optional<Assignment> assignment = Assigned(value, column)) {
        Take(value, *std::move(assignment));
      }
    } catch (const HostError& e) {
      m_tool.reasons.push_back(property.name + ": " + Cited(value.text) + ' ' + e.what() + '.');
    }
  }

  std::optional<Assignment> Assigned(const DraftValue& value, const Column& column) {
    const Property& property = *column.property;
    FieldValues& values = m_kind.Values();
    const bool looked = values.HasList(property);
    const bool isText = property.type == VT_BSTR && !looked;
    if (value.absent || (IsAbsent(value) && !isText)) {
      // Tools without a name show their default one.
      if (property.name == "Name") return std::nullopt;
      if (values.IsRequired(property)) throw HostError("is no value, and one is needed");
      return Assignment{property.name, Variant::Null(), {}};
    }
    if (property.name == "Name" && IsAbsent(value)) return std::nullopt;
    if (looked) return FromList(property, value.text);
    m_unitless |= FieldValues::IsLength(property) && m_unit.unit == Unit::None && m_kind.HasUnit();
    return values.Read(property, value.text, column.unit, m_unit);
  }

  Assignment FromList(const Property& property, const std::string& text) {
    FieldValues& values = m_kind.Values();
    if (std::optional<Assignment> entry = values.Choose(property, text)) return *std::move(entry);
    if (!m_all.m_options.addValues) {
      throw HostError("is not in the list; nearest are " + values.NearestIn(property, text) +
                      " (--add-values adds it)");
    }
    values.CheckLength(property, text);
    m_tool.entries.push_back({property.name, text});
    return LookedUp(property.name, text);
  }

  void Take(const DraftValue& value, Assignment assignment) {
    const auto same = std::ranges::find(m_tool.values, assignment.property, &Assignment::property);
    if (same == m_tool.values.end()) {
      m_tool.values.push_back(std::move(assignment));
    } else if (same->value.isNull()) {
      *same = std::move(assignment);
    } else if (!assignment.value.isNull() && same->shown != assignment.shown) {
      throw HostError("in the column " + Cited(value.name) + " is not the " +
                      Cited(same->shown.text) + " of another column");
    }
  }

  Understanding& m_all;
  Kind& m_kind;
  UnderstoodTool& m_tool;
  std::vector<std::pair<const DraftValue*, Column>> m_placed;
  ToolUnit m_unit;
  bool m_unitless = false;
};

Understanding::Understanding(ToolDatabase& database, UnderstandingOptions options)
    : m_database(database), m_options(std::move(options)) {}

Understanding::~Understanding() = default;

UnderstoodTool Understanding::Read(const ToolDraft& draft) {
  UnderstoodTool tool;
  if (!draft.problem.empty()) {
    tool.reasons.push_back(draft.problem);
    return tool;
  }
  tool.table = TableOf(draft, tool);
  if (tool.table.empty()) return tool;
  DraftReading(*this, KindOf(tool.table), tool).Run(draft);
  if (tool.values.empty() && tool.reasons.empty()) {
    tool.reasons.push_back("None of its columns is a property of the tools of " + tool.table + '.');
  }
  return tool;
}

std::string Understanding::TableOf(const ToolDraft& draft, UnderstoodTool& tool) const {
  const auto named = [this](const std::string& text) -> const ToolKind* {
    const std::string key = NameKey(text);
    for (const ToolKind& kind : m_database.Types()) {
      if (NameKey(kind.table) == key || NameKey(kind.subtype) == key) return &kind;
    }
    return nullptr;
  };
  std::string told = draft.table;
  for (const DraftValue& value : draft.values) {
    if (!told.empty()) break;
    const bool tells = std::ranges::find(kKindNames, NameKey(value.name)) != kKindNames.end();
    if (tells && !value.absent && named(value.text)) told = value.text;
  }
  if (told.empty()) told = m_options.table;
  if (told.empty()) {
    tool.reasons.emplace_back("Its kind of tool is not told; --table tells it.");
    return {};
  }
  const ToolKind* kind = named(told);
  if (!kind) tool.reasons.push_back("There is no tool table " + Cited(told) + '.');
  return kind ? kind->table : "";
}

Understanding::Kind& Understanding::KindOf(const std::string& table) {
  std::unique_ptr<Kind>& kind = m_kinds[table];
  if (!kind) kind = std::make_unique<Kind>(m_database, table, m_options.mappings);
  return *kind;
}

void Understanding::ForgetLists() {
  for (const auto& [table, kind] : m_kinds) {
    if (kind) kind->Values().ForgetLists();
  }
}

std::vector<std::string> Understanding::Remarks() const {
  std::vector<std::string> remarks;
  if (!m_unmapped.empty()) {
    constexpr std::size_t kShown = 50;
    const std::vector<std::string> shown(
        m_unmapped.begin(),
        m_unmapped.begin() + static_cast<std::ptrdiff_t>(std::min(kShown, m_unmapped.size())));
    const std::size_t more = m_unmapped.size() - shown.size();
    remarks.push_back("Columns that are no property, not taken: " + Listed(shown) +
                      (more > 0 ? " and " + std::to_string(more) + " more" : "") +
                      ". --map COLUMN=PROPERTY maps one.");
  }
  if (!m_filledIn.empty()) {
    remarks.push_back("Not taken, since the database fills them in: " +
                      Listed({m_filledIn.begin(), m_filledIn.end()}) + '.');
  }
  for (const auto& [table, count] : m_unitless) {
    remarks.push_back(std::to_string(count) + " records of " + table +
                      " tell no unit; their lengths are in the unit that new tools have. --unit "
                      "tells another.");
  }
  return remarks;
}

}  // namespace orxdb
