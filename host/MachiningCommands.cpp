// feeds, drill-feed, factor: the machining-data tables.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <memory>

#include "host/CommonArguments.h"
#include "interface/KnownNames.h"
#include "platform/framework/Text.h"

namespace orxdb {
namespace {

/// The table's exact name for a name in any case.
std::string TableNamed(const std::string& name) {
  std::string known;
  for (const std::string_view table : kMachiningTables) {
    if (EqualIgnoringCase(table, name)) return std::string(table);
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

Neighbours FindNeighbours(const ToolDatabase& database, const std::string& table, double value) {
  ToolProperties lower;
  Variant upper;
  if (FAILED(database.Component().GetFactorByTable(
          WidenToBstr(table).get(), value, lower.names.put(), lower.values.put(), upper.put()))) {
    throw HostError("The table " + table + " is empty or cannot be read.");
  }
  if (!lower) throw NoTable(table);
  return {.lower = std::move(lower), .upper = CellsOf(upper)};
}

/// Tells which range was taken for a value, and why. `unit` stands behind numbers.
void TellRange(const ToolProperties& row, const char* lowest, const char* highest, double value,
               const std::string& shown, const std::string& unit) {
  const Cell low = row.Value(lowest);
  const Cell high = row.Value(highest);
  const std::string range = low.text + " to " + high.text + unit;
  if (Number(low) > value) {
    Tell("No range holds " + shown + "; this is the next range above, " + range + '.');
  } else if (Number(high) < value) {
    Tell("No range holds " + shown + "; this is the next range below, " + range + '.');
  } else {
    Tell(range + " is the first range that holds " + shown + '.');
  }
}

struct FeedsOptions {
  std::string table;
  std::string material;
  double hardness = 0;
};

/// The group of materials that tables know a stock material by; other names stay as they are.
std::string MaterialGroup(const ToolDatabase& database, const std::string& name) {
  ToolProperties material;
  database.Component().GetStockMaterialByName(WidenToBstr(name).get(), material.names.put(),
                                              material.values.put());
  std::string group = material ? material.Value("Material").text : std::string();
  if (group.empty()) return name;
  Tell(material.Value("DispType").text + " belongs to the group " + group + '.');
  return group;
}

void ShowFeeds(const Settings& settings, const FeedsOptions& options) {
  const ToolDatabase database(settings.database);
  const std::string table = TableNamed(options.table);
  const std::string group = MaterialGroup(database, options.material);
  if (group.find('\'') != std::string::npos) {
    throw HostError(
        "The database cannot look for a material with an apostrophe in its name: " + group + '.');
  }
  ToolProperties row;
  if (FAILED(database.Component().GetRowByMaterialHardness(
          WidenToBstr(table).get(), WidenToBstr(group).get(), options.hardness, row.names.put(),
          row.values.put()))) {
    throw HostError("The table " + table + " cannot be searched by material and hardness.");
  }
  if (!row) {
    FindNeighbours(database, table, 0);  // there must be the table
    throw HostError("The table " + table + " has no row for the material " + Cited(group) +
                    ". `orxdb materials` lists materials and their groups.");
  }
  const double hardness = std::floor(options.hardness);
  TellRange(
      row, "MinHB", "MaxHB", hardness,
      Cell::Real(hardness).text + " HB" + (hardness == options.hardness ? "" : " (rounded down)"),
      " HB");
  WriteRecord(settings.format, row.Names(), row.Cells());
}

void ShowDrillFeed(const Settings& settings, double diameter) {
  const ToolDatabase database(settings.database);
  ToolProperties row;
  if (FAILED(
          database.Component().GetChosenDrillFeed(diameter, row.names.put(), row.values.put()))) {
    throw HostError("The table DRILL_FEED cannot be searched by diameter.");
  }
  if (!row) throw HostError("There is no drill feed for any diameter.");
  const std::string unit = row.Value("Diameter_Unit").text;
  const std::string behind = (unit.empty() ? "" : " ") + unit;
  TellRange(row, "MinDiameter", "MaxDiameter", SixDecimals(diameter),
            Cell::Real(diameter).text + behind, behind);
  WriteRecord(settings.format, row.Names(), row.Cells());
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

void ShowFactor(const Settings& settings, const std::string& name, double asked) {
  const ToolDatabase database(settings.database);
  const std::string table = TableNamed(name);
  if (table == "DRILL_FEED") throw HostError("`orxdb drill-feed` searches the table DRILL_FEED.");
  const Neighbours rows = FindNeighbours(database, table, asked);
  const std::vector<std::string> names = rows.lower.Names();
  const std::vector<Cell> lower = rows.lower.Cells();
  const std::vector<Cell>& upper = rows.upper;
  if (lower[1].kind != Cell::Kind::Number || upper.size() != lower.size()) {
    throw HostError("The table " + table + " is not searched by a number: its second column is " +
                    names[1] + '.');
  }
  const double value = SixDecimals(asked);
  const std::string unit = rows.lower.Value(names[1] + "_Unit").text;
  const std::string shown =
      names[1] + ' ' + Cell::Real(asked).text + (unit.empty() ? "" : " ") + unit;

  std::vector<std::string> header = {"Row"};
  header.insert(header.end(), names.begin(), names.end());
  const auto writer = MakeRowWriter(settings.format);
  writer->Header(header);
  const auto write = [&](const char* mark, std::vector<Cell> row) {
    row.insert(row.begin(), Cell::Text(mark));
    writer->Row(std::move(row));
  };
  if (lower[1] != upper[1]) {
    Tell(shown + " is between two rows; the third one is interpolated in a straight line.");
    write("lower", lower);
    write("upper", upper);
    write("interpolated", Interpolated(table, names, lower, upper, value));
  } else if (const double key = Number(lower[1]); key == value) {
    Tell("There is a row for " + shown + " exactly.");
    write("exact", lower);
  } else {
    Tell(shown + (value < key ? " is below the first row, which is taken."
                              : " is above the last row, which is taken."));
    write(value < key ? "first" : "last", lower);
  }
  writer->End();
}

void AddMachiningTable(CLI::App& verb, std::string& table) {
  verb.add_option("TABLE", table, "Machining table")->required()->type_name("");
}

}  // namespace

void AddMachiningCommands(CLI::App& app, const Settings& settings) {
  CLI::App* feeds =
      app.add_subcommand("feeds", "Find feeds and speeds for a material and its hardness");
  const auto sought = std::make_shared<FeedsOptions>();
  AddMachiningTable(*feeds, sought->table);
  feeds
      ->add_option("--material", sought->material,
                   "Group of materials, or the display type of a stock material")
      ->required()
      ->type_name("NAME");
  AddNumber(*feeds, "--hardness", sought->hardness, "Brinell hardness")
      ->required()
      ->type_name("HB");
  feeds->footer(
      "Tables:\n"
      "  DRILLING_FS, END_MILLING_FS, FACE_MILLING_FS, REAMING_FS, SLIT_MILLING_FS, THREADING_FS\n"
      "  RECOMMENDED_FS  turning\n"
      "  T24_27_30_31    power\n\n"
      "Example:\n  orxdb feeds END_MILLING_FS --material \"Alloy steel\" --hardness 200");
  feeds->callback([&settings, sought] { ShowFeeds(settings, *sought); });

  CLI::App* drill = app.add_subcommand("drill-feed", "Find the feed for a drill");
  const auto diameter = std::make_shared<double>();
  AddNumber(*drill, "DIAMETER", *diameter, "The diameter, in the unit of the table")->required();
  drill->footer("Example:\n  orxdb drill-feed 8.5");
  drill->callback([&settings, diameter] { ShowDrillFeed(settings, *diameter); });

  CLI::App* factor = app.add_subcommand("factor", "Find factors for a number");
  const auto table = std::make_shared<std::string>();
  const auto value = std::make_shared<double>();
  AddMachiningTable(*factor, *table);
  AddNumber(*factor, "VALUE", *value, "A value of the table's second column")->required();
  factor->footer(
      "Tables:\n"
      "  T5_DEPTH, T5_FEED  turning speed by depth of cut, by feed\n"
      "  T15b_15d_22        milling speed by feed ratio\n"
      "  T15c               milling speed and feed by ratio of radial depth to diameter\n"
      "  T25                cutting power by feed\n"
      "  T33, T34           drilling forces by feed, by diameter\n"
      "  HARDNESS_BRC       Brinell to Rockwell C\n"
      "  HARDNESS_RCB       Rockwell C to Brinell\n\n"
      "The last row of the result is the one to use: Row is exact, first or last (for values\n"
      "beyond the table) or, behind its neighbours lower and upper, interpolated.\n\n"
      "Example:\n  orxdb factor T25 0.22");
  factor->callback([&settings, table, value] { ShowFactor(settings, *table, *value); });
}

}  // namespace orxdb
