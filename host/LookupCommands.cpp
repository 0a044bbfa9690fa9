// materials, values, heads, operation, picture: what goes with tools.
#include <CLI/CLI.hpp>
#include <cerrno>
#include <fstream>
#include <memory>

#include "host/CommonArguments.h"
#include "host/NewFile.h"
#include "platform/framework/ExecutablePath.h"
#include "platform/framework/Text.h"

namespace orxdb {
namespace {

HostError Unreadable(const std::string& what) {
  return HostError("The " + what + " cannot be read.");
}

void ListMaterials(const Settings& settings) {
  const ToolDatabase database(settings.database);
  ToolProperties material;
  if (FAILED(database.Component().GetFirstStockMaterial(material.names.put(),
                                                        material.values.put()))) {
    throw Unreadable("stock materials");
  }
  if (!material) throw HostError("The database has no stock materials.");
  const auto writer = MakeRowWriter(settings.format);
  writer->Header(material.Names());
  while (material) {
    writer->Row(material.Cells());
    if (FAILED(database.Component().GetNextStockMaterial(material.values.put()))) {
      throw Unreadable("stock materials");
    }
  }
  writer->End();
}

void ShowMaterial(const Settings& settings, const std::string& name) {
  const ToolDatabase database(settings.database);
  ToolProperties material;
  if (FAILED(database.Component().GetStockMaterialByName(
          WidenToBstr(name).get(), material.names.put(), material.values.put()))) {
    throw HostError("The database cannot look for the stock material " + Cited(name) + '.');
  }
  if (!material) {
    throw HostError("There is no stock material whose display type matches " + Cited(name) +
                    " as a whole (* stands for any text). `orxdb materials` lists them.");
  }
  if (!EqualIgnoringCase(material.Value("DispType").text, name)) {
    Tell("This is the first stock material whose display type matches " + Cited(name) + '.');
  }
  WriteRecord(settings.format, material.Names(), material.Cells());
}

struct ValuesOptions {
  std::string table;
  std::string property;
  bool narrowed = false;  ///< to the tapping heads for taps of a diameter
  double tapDiameter = 0;
};

/// The standard diameters of end mills, for the tables and the property that have them.
bool WriteStandardDiameters(const Settings& settings, const ToolDatabase& database,
                            const ValuesOptions& options) {
  ToolProperties tool;
  Variant values;
  Variant shown;
  if (FAILED(database.Component().GetPermissibleValues2(
          WidenToBstr(options.table).get(), tool.names.ptr(), tool.values.ptr(),
          WidenToBstr(options.property).get(), values.put(), shown.put()))) {
    throw Unreadable("standard diameters of end mills");
  }
  const std::vector<Cell> diameters = CellsOf(values);
  const std::vector<Cell> texts = CellsOf(shown);
  if (diameters.empty() || texts.size() != diameters.size()) return false;
  Tell("These are the standard diameters in inches.");
  const auto writer = MakeRowWriter(settings.format);
  writer->Header({"Value", "Display"});
  for (std::size_t i = 0; i < diameters.size(); ++i) writer->Row({diameters[i], texts[i]});
  writer->End();
  return true;
}

void ShowValues(const Settings& settings, ValuesOptions options) {
  auto [database, table] = OpenTable(settings, options.table);
  options.property = PropertyNamed(table, options.property, database.Properties(table)).name;
  options.table = table;
  if (options.narrowed && (options.property != "TappingHead" ||
                           (options.table != "TAP" && options.table != "PIPE_TAP"))) {
    throw HostError("--tap-diameter is for the property TappingHead of TAP and PIPE_TAP.");
  }
  if (WriteStandardDiameters(settings, database, options)) return;
  const auto values =
      database.PermissibleValues(options.table, options.property, options.tapDiameter);
  if (!values || (options.narrowed && options.tapDiameter <= 0)) {
    throw HostError(
        options.narrowed
            ? "No tapping head takes a tap of " + Cell::Real(options.tapDiameter).text + " mm."
            : "There is no list of values for " + options.property + " of " + options.table + '.');
  }
  if (options.narrowed) Tell("The empty value at the end stands for no tapping head.");
  const auto writer = MakeRowWriter(settings.format);
  writer->Header({"Value"});
  for (const Cell& value : *values) writer->Row({value});
  writer->End();
}

struct HeadsOptions {
  double diameter = 0;
  std::string unit = "mm";
};

void ListHeads(const Settings& settings, const HeadsOptions& options) {
  const ToolDatabase database(settings.database);
  Variant names;
  Variant numbers;
  if (FAILED(database.Component().GetTappingHeadsForTap(
          WidenToBstr(options.unit).get(), options.diameter, names.put(), numbers.put()))) {
    throw Unreadable("tapping heads");
  }
  if (names.empty()) {
    throw HostError("No tapping head takes a tap of " + Cell::Real(options.diameter).text + ' ' +
                    options.unit + '.');
  }
  const ArrayAccess<BSTR> texts(names.get().parray);
  const ArrayAccess<LONG> ids(numbers.get().parray);
  const auto writer = MakeRowWriter(settings.format);
  writer->Header({"ID", "Name"});
  for (std::size_t i = 0; i < texts.size() && i < ids.size(); ++i) {
    writer->Row({Cell::Number(ids[i]), Cell::Text(NarrowBstr(texts[i]))});
  }
  writer->End();
}

void ShowOperation(const Settings& settings, const std::string& name) {
  const auto [database, table] = OpenTable(settings, name);
  Bstr operation;
  if (FAILED(database.Component().GetPrimaryOpByTable(WidenToBstr(table).get(), operation.put()))) {
    throw Unreadable("primary operation of " + table);
  }
  if (SysStringLen(operation.get()) == 0) {
    throw HostError("The tools of " + table + " have no primary operation.");
  }
  WriteRow(settings.format, {"Table", "Operation"},
           {Cell::Text(table), Cell::Text(NarrowBstr(operation.get()))});
}

struct PictureOptions {
  std::string table;
  std::string file;
  bool force = false;
};

void SavePicture(const Settings& settings, const PictureOptions& options) {
  const auto [database, table] = OpenTable(settings, options.table);
  Variant picture;
  if (FAILED(database.Component().GetToolSubtypePreview(WidenToBstr(table).get(), picture.put()))) {
    throw Unreadable("picture of " + table);
  }
  if (picture.type() != (VT_ARRAY | VT_UI1)) {
    throw HostError("There is no picture of the tools of " + table + '.');
  }
  const std::filesystem::path file = NativePath(options.file);
  WriteNewFile(file, options.force, "", [&](const std::filesystem::path& building) {
    const ArrayAccess<BYTE> bytes(picture.get().parray);
    std::ofstream stream(building, std::ios::binary);
    stream.write(reinterpret_cast<const char*>(bytes.elements().data()),
                 static_cast<std::streamsize>(bytes.size()));
    stream.close();
    if (!stream) {
      throw std::filesystem::filesystem_error(
          "write", building, std::error_code(errno ? errno : EIO, std::generic_category()));
    }
  });
  WriteRow(settings.format, {"File"}, {Cell::Text(file.string())});
}

}  // namespace

void AddLookupCommands(CLI::App& app, const Settings& settings) {
  CLI::App* materials = app.add_subcommand("materials", "List the stock materials, or show one");
  const auto name = std::make_shared<std::string>();
  materials
      ->add_option("NAME", *name,
                   "Display type: ? stands for any character, * for any text, any punctuation for "
                   "one character of any kind")
      ->type_name("");
  materials->footer("Example:\n  orxdb materials \"C45 *normalised\"");
  materials->callback([&settings, name, materials] {
    materials->count("NAME") ? ShowMaterial(settings, *name) : ListMaterials(settings);
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
    valued->narrowed = values->count("--tap-diameter") > 0;
    ShowValues(settings, *valued);
  });

  CLI::App* heads = app.add_subcommand("heads", "List the tapping heads that take a tap");
  const auto sought = std::make_shared<HeadsOptions>();
  AddNumber(*heads, "DIAMETER", sought->diameter, "The diameter of the tap")->required();
  heads->add_option("--unit", sought->unit, "The unit of the diameter, mm or in; by default mm")
      ->check(CLI::IsMember({"mm", "in"}))
      ->type_name("UNIT");
  heads->footer("Example:\n  orxdb heads 0.25 --unit in");
  heads->callback([&settings, sought] { ListHeads(settings, *sought); });

  CLI::App* operation =
      app.add_subcommand("operation", "Tell the operation that a kind of tool is first of all for");
  const auto table = std::make_shared<std::string>();
  AddTable(*operation, *table);
  operation->footer("Example:\n  orxdb operation REAMER");
  operation->callback([&settings, table] { ShowOperation(settings, *table); });

  CLI::App* picture = app.add_subcommand("picture", "Save the picture of a kind of tool");
  const auto drawn = std::make_shared<PictureOptions>();
  AddTable(*picture, drawn->table);
  picture->add_option("-o,--output", drawn->file, "The new file")->required()->type_name("FILE");
  picture->add_flag("--force", drawn->force, "Replace the file that is there");
  picture->footer("Example:\n  orxdb picture TAP -o tap.png");
  picture->callback([&settings, drawn] { SavePicture(settings, *drawn); });
}

}  // namespace orxdb
