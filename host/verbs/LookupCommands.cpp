// materials, values, heads, operation, picture: what goes with tools.
#include <CLI/CLI.hpp>
#include <memory>

#include "host/library/Lookups.h"
#include "host/verbs/CommonArguments.h"
#include "host/verbs/Show.h"
#include "platform/framework/ExecutablePath.h"

namespace orxdb {
namespace {

struct ValuesOptions {
  std::string table;
  std::string property;
  double tapDiameter = 0;
};

void ShowValues(const Settings& settings, const ValuesOptions& options, bool narrowed) {
  auto [database, table] = OpenTable(settings, options.table);
  const std::vector<Property> properties = database.Properties(table);
  const std::string& property = PropertyNamed(table, options.property, properties).name;
  Show(settings.format, Shape::Rows,
       ValuesOf(database, table, property,
                narrowed ? std::optional(options.tapDiameter) : std::nullopt));
}

struct HeadsOptions {
  double diameter = 0;
  std::string unit = "mm";
};

struct PictureOptions {
  std::string table;
  std::string file;
  bool force = false;
};

}  // namespace

void AddLookupCommands(CLI::App& app, const Settings& settings) {
  CLI::App* materials =
      app.add_subcommand("materials", "List the stock materials, or those like a text");
  const auto name = std::make_shared<std::string>();
  materials
      ->add_option("TEXT", *name,
                   "Words of any of their texts; ? stands for any character, * for any text")
      ->type_name("");
  materials->footer("Example:\n  orxdb materials 1.0503\n  orxdb materials \"alu* cast\"");
  materials->callback([&settings, name, materials] {
    ToolDatabase database(settings.database);
    Show(settings.format, Shape::Rows,
         materials->count("TEXT") > 0 ? StockMaterialsLike(database, *name)
                                      : StockMaterials(database));
  });

  CLI::App* values = app.add_subcommand("values", "List the values that a property may have");
  const auto valued = std::make_shared<ValuesOptions>();
  AddTable(*values, valued->table);
  values->add_option("PROPERTY", valued->property, "A property of the table's tools")
      ->required()
      ->type_name("");
  AddNumber(*values, "--tap-diameter", valued->tapDiameter,
            "Only tapping heads that take a tap of so many millimetres")
      ->type_name("MM");
  values->footer("Example:\n  orxdb values TAP TappingHead --tap-diameter 6");
  values->callback([&settings, valued, values] {
    ShowValues(settings, *valued, values->count("--tap-diameter") > 0);
  });

  CLI::App* heads = app.add_subcommand("heads", "List the tapping heads that take a tap");
  const auto sought = std::make_shared<HeadsOptions>();
  AddNumber(*heads, "DIAMETER", sought->diameter, "The diameter of the tap")->required();
  heads->add_option("--unit", sought->unit, "The unit of the diameter, mm or in; by default mm")
      ->check(CLI::IsMember({"mm", "in"}))
      ->type_name("UNIT");
  heads->footer("Example:\n  orxdb heads 0.25 --unit in");
  heads->callback([&settings, sought] {
    ToolDatabase database(settings.database);
    Show(settings.format, Shape::Rows, TappingHeadsFor(database, sought->diameter, sought->unit));
  });

  CLI::App* operation =
      app.add_subcommand("operation", "Tell the operation that a kind of tool is first of all for");
  const auto table = std::make_shared<std::string>();
  AddTable(*operation, *table);
  operation->footer("Example:\n  orxdb operation REAMER");
  operation->callback([&settings, table] {
    auto [database, exact] = OpenTable(settings, *table);
    Show(settings.format, Shape::Bare, PrimaryOperation(database, exact));
  });

  CLI::App* picture = app.add_subcommand("picture", "Save the picture of a kind of tool");
  const auto drawn = std::make_shared<PictureOptions>();
  AddTable(*picture, drawn->table);
  picture->add_option("-o,--output", drawn->file, "The new file")->required()->type_name("FILE");
  picture->add_flag("--force", drawn->force, "Replace the file that is there");
  picture->footer("Example:\n  orxdb picture TAP -o tap.png");
  picture->callback([&settings, drawn] {
    auto [database, exact] = OpenTable(settings, drawn->table);
    Show(settings.format, Shape::Bare,
         SavePicture(database, exact, NativePath(drawn->file), drawn->force));
  });
}

}  // namespace orxdb
