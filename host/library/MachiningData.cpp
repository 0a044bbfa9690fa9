#include "host/library/MachiningData.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "interface/KnownNames.h"
#include "platform/framework/Text.h"

namespace orxdb {
namespace {

/// The table's exact name for a name in any case.
std::string TableNamed(const std::string& name) {
  std::string known;
  for (const std::string_view table : kMachiningTables) {
    if (EqualNoCase(table, name)) return std::string(table);
    known += (known.empty() ? "" : ", ") + std::string(table);
  }
  throw HostError("There is no machining table " + Cited(name) + ". There are: " + known + '.');
}

double Number(const Cell& cell) {
  double number = 0;
  std::from_chars(cell.text.data(), cell.text.data() + cell.text.size(), number);
  return number;
}

/// The number as it is looked up: with six decimals.
double SixDecimals(double number) {
  std::array<char, 400> text{};
  const auto end =
      std::to_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed, 6);
  return Number(Cell::Text({text.data(), end.ptr}));
}

HostError NoTable(const std::string& table) {
  return HostError("This database has no table " + table + '.');
}

/// The rows around a value; none when there is no such table.
struct Neighbours {
  ToolProperties lower;
  std::vector<Cell> upper;
};

Neighbours FindNeighbours(ToolDatabase& database, const std::string& table, double value) {
  ToolProperties lower;
  Variant upper;
  if (FAILED(database.Component().GetFactorByTable(
          WidenToBstr(table).get(), value, lower.names.put(), lower.values.put(), upper.put()))) {
    throw HostError("The table " + table + " is empty or cannot be read.");
  }
  if (!lower) throw NoTable(table);
  return {.lower = std::move(lower), .upper = CellsOf(upper)};
}

/// Which range was taken for a value, and why. `unit` stands behind numbers.
std::string RangeTaken(const ToolProperties& row, const char* lowest, const char* highest,
                       double value, const std::string& shown, const std::string& unit) {
  const Cell low = row.Value(lowest);
  const Cell high = row.Value(highest);
  const std::string range = low.text + " to " + high.text + unit;
  if (Number(low) > value) {
    return "No range holds " + shown + "; this is the next range above, " + range + '.';
  }
  if (Number(high) < value) {
    return "No range holds " + shown + "; this is the next range below, " + range + '.';
  }
  return range + " is the first range that holds " + shown + '.';
}

HostError NoRow(const std::string& table, const std::string& group) {
  return HostError("The table " + table + " has no row for the material " + Cited(group) +
                   ". `orxdb materials` lists materials and their groups.");
}

HostError NotByNumber(const std::string& table, const std::string& column) {
  return HostError("The table " + table + " is not searched by a number: its second column is " +
                   column + '.');
}

/// The group of materials that tables know a stock material by; other names stay as they are.
std::string MaterialGroup(ToolDatabase& database, const std::string& name,
                          std::vector<std::string>& remarks) {
  ToolProperties material;
  database.Component().GetStockMaterialByName(WidenToBstr(name).get(), material.names.put(),
                                              material.values.put());
  std::string group = material ? material.Value("Material").text : std::string();
  if (group.empty()) return name;
  remarks.push_back(material.Value("DispType").text + " belongs to the group " + group + '.');
  return group;
}

/// A row between two others: numbers on the straight line through them, other values where both
/// agree. Nine digits are more than any table has.
std::vector<Cell> Interpolated(const std::string& table, const std::vector<std::string>& names,
                               const std::vector<Cell>& lower, const std::vector<Cell>& upper,
                               double value) {
  const double part = (value - Number(lower[1])) / (Number(upper[1]) - Number(lower[1]));
  std::vector<Cell> row(names.size());
  for (std::size_t i = 0; i < row.size(); ++i) {
    if (ToolDatabase::IsKey(table, names[i])) continue;
    if (lower[i].kind == Cell::Kind::Number && upper[i].kind == Cell::Kind::Number) {
      std::array<char, 32> text{};
      const double number = std::lerp(Number(lower[i]), Number(upper[i]), part);
      const auto end = std::to_chars(text.data(), text.data() + text.size(), number,
                                     std::chars_format::general, 9);
      row[i] = Cell::Real(Number(Cell::Text({text.data(), end.ptr})));
    } else if (lower[i] == upper[i]) {
      row[i] = lower[i];
    }
  }
  return row;
}

}  // namespace

Answer FeedsFor(ToolDatabase& database, const std::string& table, const std::string& material,
                double hardness) {
  const std::string exact = TableNamed(table);
  std::vector<std::string> remarks;
  const std::string group = MaterialGroup(database, material, remarks);
  if (group.find('\'') != std::string::npos) {
    throw HostError(
        "The database cannot look for a material with an apostrophe in its name: " + group + '.');
  }
  ToolProperties row;
  if (FAILED(database.Component().GetRowByMaterialHardness(WidenToBstr(exact).get(),
                                                           WidenToBstr(group).get(), hardness,
                                                           row.names.put(), row.values.put()))) {
    throw HostError("The table " + exact + " cannot be searched by material and hardness.");
  }
  if (!row) {
    FindNeighbours(database, exact, 0);  // there must be the table
    throw NoRow(exact, group);
  }
  const double whole = std::floor(hardness);
  const std::string shown =
      Cell::Real(whole).text + " HB" + (whole == hardness ? "" : " (rounded down)");
  remarks.push_back(RangeTaken(row, "MinHB", "MaxHB", whole, shown, " HB"));
  Answer answer(row.Names(), row.Cells());
  answer.remarks = std::move(remarks);
  return answer;
}

Answer DrillFeedFor(ToolDatabase& database, double diameter) {
  ToolProperties row;
  if (FAILED(
          database.Component().GetChosenDrillFeed(diameter, row.names.put(), row.values.put()))) {
    throw HostError("The table DRILL_FEED cannot be searched by diameter.");
  }
  if (!row) throw HostError("There is no drill feed for any diameter.");
  const std::string unit = row.Value("Diameter_Unit").text;
  const std::string behind = (unit.empty() ? "" : " ") + unit;
  Answer answer(row.Names(), row.Cells());
  answer.remarks.push_back(RangeTaken(row, "MinDiameter", "MaxDiameter", SixDecimals(diameter),
                                      Cell::Real(diameter).text + behind, behind));
  return answer;
}

Answer FactorsFor(ToolDatabase& database, const std::string& table, double value) {
  const std::string exact = TableNamed(table);
  if (exact == "DRILL_FEED") throw HostError("`orxdb drill-feed` searches the table DRILL_FEED.");
  const Neighbours rows = FindNeighbours(database, exact, value);
  const std::vector<std::string> names = rows.lower.Names();
  const std::vector<Cell> lower = rows.lower.Cells();
  const std::vector<Cell>& upper = rows.upper;
  if (lower[1].kind != Cell::Kind::Number || upper.size() != lower.size()) {
    throw NotByNumber(exact, names[1]);
  }
  const double sought = SixDecimals(value);
  const std::string unit = rows.lower.Value(names[1] + "_Unit").text;
  const std::string shown =
      names[1] + ' ' + Cell::Real(value).text + (unit.empty() ? "" : " ") + unit;

  Answer answer({"Row"});
  answer.columns.insert(answer.columns.end(), names.begin(), names.end());
  const auto add = [&answer](const char* mark, std::vector<Cell> row) {
    row.insert(row.begin(), Cell::Text(mark));
    answer.rows.push_back(std::move(row));
  };
  if (lower[1] != upper[1]) {
    answer.remarks.push_back(
        shown + " is between two rows; the third one is interpolated in a straight line.");
    add("lower", lower);
    add("upper", upper);
    add("interpolated", Interpolated(exact, names, lower, upper, sought));
  } else if (const double key = Number(lower[1]); key == sought) {
    answer.remarks.push_back("There is a row for " + shown + " exactly.");
    add("exact", lower);
  } else {
    answer.remarks.push_back(shown + (sought < key ? " is below the first row, which is taken."
                                                   : " is above the last row, which is taken."));
    add(sought < key ? "first" : "last", lower);
  }
  return answer;
}

}  // namespace orxdb
