// export, import: tools as text files.
#include <CLI/CLI.hpp>
#include <memory>

#include "host/transfer/Export.h"
#include "host/transfer/Import.h"
#include "host/verbs/CommonArguments.h"
#include "host/verbs/ProgressBar.h"
#include "host/verbs/Show.h"
#include "platform/framework/ExecutablePath.h"

namespace orxdb {
namespace {

struct ExchangeOptions {
  std::string table;
  std::string file;
  std::string folder;
  bool dryRun = false;
};

Answer Export(const Settings& settings, const ExchangeOptions& options) {
  if (options.folder.empty() == options.file.empty()) {
    throw CLI::RequiredError("Either TABLE and FILE, or --all FOLDER");
  }
  ProgressBar progress;
  ToolDatabase database(settings.database);
  if (!options.folder.empty()) {
    return ExportAll(database, NativePath(options.folder), std::ref(progress));
  }
  return ExportTable(database, database.TableNamed(options.table), NativePath(options.file),
                     std::ref(progress));
}

Answer Import(const Settings& settings, const ExchangeOptions& options) {
  ProgressBar progress;
  return (options.dryRun ? TryImport : ImportFile)(settings.database, options.file,
                                                   std::ref(progress));
}

}  // namespace

void AddExchangeCommands(CLI::App& app, const Settings& settings) {
  CLI::App* out = app.add_subcommand("export", "Write the tools of a table as a text file");
  const auto exported = std::make_shared<ExchangeOptions>();
  CLI::Option* table =
      out->add_option("TABLE", exported->table, "Tool table, as `orxdb types` names it")
          ->type_name("");
  CLI::Option* file =
      out->add_option("FILE", exported->file, "The file, replaced if there is one")->type_name("");
  table->needs(file);
  out->add_option("--all", exported->folder, "Every table, each to FOLDER/TABLE.txt")
      ->excludes(table)
      ->excludes(file)
      ->type_name("FOLDER");
  out->footer(
      "Numbers, feeds and speeds do not travel, and reals keep six decimals. Lines that an\n"
      "import will not take as they were are told.\n\n"
      "Example:\n  orxdb export TAP taps.txt\n  orxdb export --all backup");
  out->callback(
      [&settings, exported] { Show(settings.format, Shape::Rows, Export(settings, *exported)); });

  CLI::App* in = app.add_subcommand("import", "Add the tools of an exported file");
  const auto imported = std::make_shared<ExchangeOptions>();
  in->add_option("FILE", imported->file, "The file; it names the table")->required()->type_name("");
  in->add_flag("--dry-run", imported->dryRun, "Try it on a copy of the database");
  in->footer(
      "Tools that the table holds already are not added again. An import ends at the first\n"
      "line that the database cannot compare with its tools, such as one without a value for a\n"
      "number. The code is 1 unless all tools of the file are then in the table.\n\n"
      "Example:\n  orxdb export TAP taps.txt && orxdb import taps.txt --dry-run");
  in->callback(
      [&settings, imported] { Show(settings.format, Shape::Record, Import(settings, *imported)); });
}

}  // namespace orxdb
