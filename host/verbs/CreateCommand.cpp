// create: a new tool database.
#include <CLI/CLI.hpp>
#include <memory>

#include "host/library/DatabaseFile.h"
#include "host/verbs/Commands.h"
#include "host/verbs/Show.h"

namespace orxdb {
namespace {

struct CreateOptions {
  std::string file;
  bool force = false;
};

void Create(const Settings& settings, const CreateOptions& options) {
  const std::string& named = options.file.empty() ? settings.database : options.file;
  const std::filesystem::path file = DatabaseNamed(named);
  CreateStarterDatabase(file, options.force);
  Show(settings.format, Shape::Bare, {{"File"}, {Cell::Text(file.string())}});
}

}  // namespace

void AddCreateCommand(CLI::App& app, const Settings& settings) {
  CLI::App* create = app.add_subcommand("create", "Create a tool database to start from");
  const auto options = std::make_shared<CreateOptions>();
  create
      ->add_option("FILE", options->file,
                   "The new file; by default the default database of this program")
      ->type_name("");
  create->add_flag("--force", options->force, "Replace the file that is there");
  create->footer("Example:\n  orxdb create shop.mdb && orxdb --db shop.mdb types");
  create->callback([&settings, options] { Create(settings, *options); });
}

}  // namespace orxdb
