// The verbs. Every group of verbs has a file of its own, which adds them to the command line.
#pragma once

#include <string>

#include "host/output/RowWriter.h"

namespace CLI {
class App;
}  // namespace CLI

namespace orxdb {

/// What the options before the verb say.
struct Settings {
  std::string database;
  Layout format;
};

/// Writes the versions of the libraries that the program uses.
void ShowVersions(const Settings& settings);

/// Adds `help` and what the build makes completions and the manual page by.
void AddHelpCommands(CLI::App& app);

/// `settings` is filled when the verb runs; it and the app outlive every verb.
void AddCreateCommand(CLI::App& app, const Settings& settings);
void AddBackUpCommands(CLI::App& app, const Settings& settings);
void AddBrowseCommands(CLI::App& app, const Settings& settings);

void AddFindCommand(CLI::App& app, const Settings& settings);
void AddPropertyCommands(CLI::App& app, const Settings& settings);
void AddEditCommands(CLI::App& app, const Settings& settings);
void AddExchangeCommands(CLI::App& app, const Settings& settings);
void AddImportCommand(CLI::App& app, const Settings& settings);
void AddLookupCommands(CLI::App& app, const Settings& settings);
void AddMachiningCommands(CLI::App& app, const Settings& settings);

}  // namespace orxdb
