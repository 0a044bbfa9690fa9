// export: tools as text files.
#include <CLI/CLI.hpp>
#include <memory>

#include "host/transfer/Export.h"
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
}

}  // namespace orxdb
