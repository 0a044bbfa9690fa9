// orxdb: tool databases from the command line. Results go to standard output, messages to standard
// error; the exit code is 0 for done, 1 for failed or not found, 2 for wrong usage.
#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdio>

#include "host/library/DatabaseFile.h"
#include "host/library/HostError.h"
#include "host/verbs/CommonArguments.h"
#include "host/verbs/Show.h"
#include "platform/framework/Exception.h"

namespace orxdb {
namespace {

void AddSettings(CLI::App& app, Settings& settings) {
  settings.database = DefaultDatabase().string();
  RequireName(app.add_option("--db", settings.database,
                             "The database; by default orxdb/tools.mdb in your data folder, or "
                             "CAM/TOOLS/tools.mdb beside the folder of a program that is not "
                             "installed"))
      ->envname("ORXDB_DATABASE")
      ->type_name("FILE");
  CLI::Option* json = app.add_flag_callback(
      "--json", [&] { settings.format.format = Format::Json; }, "Results as JSON");
  CLI::Option* csv = app.add_flag_callback(
      "--csv", [&] { settings.format.format = Format::Csv; }, "Results as CSV");
  CLI::Option* tsv = app.add_flag_callback(
      "--tsv", [&] { settings.format.format = Format::Tsv; }, "Results as lines with tabs");
  settings.format.width = TerminalWidth();
  app.add_flag_callback(
      "--wide", [&] { settings.format.width = 0; },
      "Tables with all of long texts, on lines as long as they come");
  json->excludes(csv)->excludes(tsv);
  csv->excludes(tsv);
}

/// Runs the verb; false for wrong usage, which has been told then.
bool Run(int argc, char** argv) {
  Settings settings;
  bool version = false;
  CLI::App app("Tool databases from the command line.", "orxdb");
  app.require_subcommand(0, 1);
  app.fallthrough();  // the options of `orxdb` may also follow the verb
  AddSettings(app, settings);
  app.add_flag("--version", version, "The versions of the libraries in use");
  AddCreateCommand(app, settings);
  AddBrowseCommands(app, settings);
  AddFindCommand(app, settings);
  AddPropertyCommands(app, settings);
  AddEditCommands(app, settings);
  AddLookupCommands(app, settings);
  AddMachiningCommands(app, settings);
  AddExchangeCommands(app, settings);
  AddBackUpCommands(app, settings);
  AddHelpCommands(app);
  AddImportCommand(app, settings);
  app.get_formatter()->label("SUBCOMMAND", "VERB");
  for (CLI::App* verb : app.get_subcommands({})) {
    if (!verb->get_group().empty()) verb->group("Verbs");
  }
  app.footer("Example:\n  orxdb create && orxdb types && orxdb list TAP --limit 10");
  try {
    app.parse(argc, argv);
    if (version) {
      ShowVersions(settings);
    } else if (app.get_subcommands().empty()) {
      throw CLI::RequiredError("A verb");
    }
    return true;
  } catch (const CLI::ParseError& e) {
    return app.exit(e) == 0;
  }
}

int Fail(const char* message) {
  Tell(std::string("orxdb: ") + message);
  return 1;
}

}  // namespace
}  // namespace orxdb

int main(int argc, char** argv) {
  // A reader that goes away is met as a failing write.
  std::signal(SIGPIPE, SIG_IGN);
  try {
    return orxdb::Run(argc, argv) ? 0 : 2;
  } catch (const orxdb::OutputClosed&) {
    return 0;
  } catch (const CException& e) {
    char message[256];
    return orxdb::Fail(e.GetErrorMessage(message, sizeof message) ? message : "Unknown error.");
  } catch (const std::exception& e) {
    return orxdb::Fail(e.what());
  }
}
