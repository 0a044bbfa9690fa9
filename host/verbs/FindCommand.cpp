// find: tools of all kinds by what people call them.
#include <CLI/CLI.hpp>
#include <memory>

#include "host/library/ToolSearch.h"
#include "host/verbs/Commands.h"
#include "host/verbs/Show.h"

namespace orxdb {

void AddFindCommand(CLI::App& app, const Settings& settings) {
  CLI::App* find = app.add_subcommand("find", "Find tools of all kinds by words and sizes");
  struct FindOptions : SearchOptions {
    std::vector<std::string> words;
  };
  const auto options = std::make_shared<FindOptions>();
  find->add_option("TEXT", options->words, "Words, sizes, thread sizes")->required()->type_name("");
  find->add_option("--type", options->type, "Only a table, or kinds with such words in their names")
      ->type_name("TYPE");
  find->add_option("--limit", options->limit, "How many of the best; by default 100")
      ->type_name("N");
  find->footer(
      "A tool is found when its kind, its texts or its numbers have all that is looked for; the\n"
      "best come first. Sizes are in millimetres or inches, without a unit in either.\n\n"
      "Example:\n  orxdb find 6 mm carbide\n  orxdb find 1/4 end mill\n"
      "  orxdb find M5 tap --type threading");
  find->callback([&settings, options] {
    std::string text;
    for (const std::string& word : options->words) text += (text.empty() ? "" : " ") + word;
    ToolDatabase database(settings.database);
    Show(settings.format, Shape::Rows, FindTools(database, text, *options));
  });
}

}  // namespace orxdb
