// feeds, drill-feed, factor: the machining-data tables.
#include <CLI/CLI.hpp>
#include <memory>

#include "host/library/MachiningData.h"
#include "host/verbs/CommonArguments.h"
#include "host/verbs/Show.h"

namespace orxdb {
namespace {

struct FeedsOptions {
  std::string table;
  std::string material;
  double hardness = 0;
};

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
  feeds->callback([&settings, sought] {
    ToolDatabase database(settings.database);
    Show(settings.format, Shape::Record,
         FeedsFor(database, sought->table, sought->material, sought->hardness));
  });

  CLI::App* drill = app.add_subcommand("drill-feed", "Find the feed for a drill");
  const auto diameter = std::make_shared<double>();
  AddNumber(*drill, "DIAMETER", *diameter, "The diameter, in the unit of the table")->required();
  drill->footer("Example:\n  orxdb drill-feed 8.5");
  drill->callback([&settings, diameter] {
    ToolDatabase database(settings.database);
    Show(settings.format, Shape::Record, DrillFeedFor(database, *diameter));
  });

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
  factor->callback([&settings, table, value] {
    ToolDatabase database(settings.database);
    Show(settings.format, Shape::Rows, FactorsFor(database, *table, *value));
  });
}

}  // namespace orxdb
