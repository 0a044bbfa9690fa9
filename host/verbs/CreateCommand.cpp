// create, journal: a new tool database, and how databases keep unfinished changes.
#include <CLI/CLI.hpp>
#include <memory>
#include <optional>

#include "host/library/DatabaseFile.h"
#include "host/library/HostError.h"
#include "host/verbs/CommonArguments.h"
#include "host/verbs/Show.h"

namespace orxdb {
namespace {

constexpr const char* kLog = "wal";
constexpr const char* kNoLog = "delete";

struct CreateOptions {
  std::string file;
  std::string journal;
  bool force = false;
};

/// Whether the word for a journal means a log.
std::optional<bool> IsLog(const std::string& journal) {
  return journal.empty() ? std::nullopt : std::optional(journal == kLog);
}

Answer JournalAnswer(const std::filesystem::path& file) {
  const JournalState state = JournalOf(file);
  return {{"File", "Journal", "Network"},
          {Cell::Text(file.string()), Cell::Text(state.log ? kLog : kNoLog),
           state.network.empty() ? Cell() : Cell::Text(state.network)}};
}

void Create(const Settings& settings, const CreateOptions& options) {
  const std::string& named = options.file.empty() ? settings.database : options.file;
  const std::filesystem::path file = DatabaseNamed(named);
  CreateStarterDatabase(file, options.force, IsLog(options.journal));
  const std::string network = JournalOf(file).network;
  if (!network.empty()) {
    Tell(file.string() + " is in a network folder (" + network +
         "), where databases have no log: who writes waits for those who read.");
  }
  Show(settings.format, Shape::Bare, {{"File"}, {Cell::Text(file.string())}});
}

}  // namespace

void AddCreateCommand(CLI::App& app, const Settings& settings) {
  CLI::App* create = app.add_subcommand("create", "Create a tool database to start from");
  const auto options = std::make_shared<CreateOptions>();
  RequireName(
      create->add_option("FILE", options->file, "The new file; by default the one that --db names"))
      ->type_name("");
  create->add_flag("--force", options->force, "Replace the file that is there");
  create
      ->add_option(
          "--journal", options->journal,
          "wal for a log, delete for none; by default that of the file that is replaced, or "
          "a log except in network folders")
      ->check(CLI::IsMember({kLog, kNoLog}))
      ->type_name("KIND");
  create->footer("Example:\n  orxdb create shop.mdb && orxdb --db shop.mdb types");
  create->callback([&settings, options] { Create(settings, *options); });

  CLI::App* journal =
      app.add_subcommand("journal", "Tell how the database keeps unfinished changes, or change it");
  const auto asked = std::make_shared<std::string>();
  journal->add_option("KIND", *asked, "wal for a log, delete for none")
      ->check(CLI::IsMember({kLog, kNoLog}))
      ->type_name("");
  journal->footer(
      "With a log (wal) nobody waits for those who read. It is safe only where all programs that\n"
      "use the database run on one machine, so in a network folder there can be none; Network\n"
      "tells what such a folder is served by. Without one (delete) every folder whose locks work\n"
      "is safe. Nobody else may use the database during the change. Folders of this machine that\n"
      "it serves to others are listed in ORXDB_NETWORK_FOLDERS, parted by colons.\n\n"
      "Example:\n  orxdb journal delete");
  journal->callback([&settings, asked] {
    const std::filesystem::path file = DatabaseNamed(settings.database);
    if (!std::filesystem::exists(file)) throw HostError(WhyUnusable(file));
    if (!asked->empty()) SetJournal(file, *asked == kLog);
    Show(settings.format, Shape::Record, JournalAnswer(file));
  });
}

}  // namespace orxdb
