// help: what --help tells, and for the build the same as completions and as a manual page.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>

#include "host/library/HostError.h"
#include "host/output/CommandLine.h"
#include "host/verbs/Commands.h"
#include "host/verbs/Show.h"

namespace orxdb {
namespace {

constexpr const char* kVerb = "VERB";

/// Cuts "{a,b}", by which a check tells what it lets through, off a type name such as "UNIT:{a,b}".
std::vector<std::string> TakeChoices(std::string& type) {
  std::vector<std::string> choices;
  const std::size_t open = type.find(":{");
  if (open != type.npos && type.ends_with('}')) {
    choices = CLI::detail::split(type.substr(open + 2, type.size() - open - 3), ',');
  }
  type.erase(std::min(type.find(':'), type.size()));
  return choices;
}

Command Described(const CLI::App& app) {
  Command command{.name = app.get_name(), .help = app.get_description(), .more = app.get_footer()};
  for (const CLI::Option* option : app.get_options()) {
    std::string type = option->get_type_name();
    std::vector<std::string> choices = TakeChoices(type);
    if (option->get_positional()) {
      command.arguments.push_back({.name = option->get_single_name(),
                                   .help = option->get_description(),
                                   .choices = std::move(choices),
                                   .required = option->get_required(),
                                   .repeated = option->get_items_expected_max() > 1});
      continue;
    }
    CommandOption described{.help = option->get_description(),
                            .environment = option->get_envname(),
                            .choices = std::move(choices)};
    for (const std::string& name : option->get_snames()) described.names.push_back('-' + name);
    for (const std::string& name : option->get_lnames()) described.names.push_back("--" + name);
    if (option->get_items_expected_max() > 0) described.value = type;
    command.options.push_back(std::move(described));
  }
  return command;
}

CommandLine DescribedProgram(const CLI::App& app) {
  CommandLine program{Described(app), {}};
  for (const CLI::App* verb : app.get_subcommands({})) {
    if (!verb->get_group().empty()) program.verbs.push_back(Described(*verb));
  }
  std::vector<std::string> names;
  for (const Command& verb : program.verbs) names.push_back(verb.name);
  for (Command& verb : program.verbs) {
    for (CommandArgument& argument : verb.arguments) {
      if (argument.name == kVerb) argument.choices = names;
    }
  }
  return program;
}

std::string HelpOn(const CLI::App& app, const std::string& verb) {
  const auto formatter = app.get_formatter();
  if (verb.empty()) return formatter->make_help(&app, app.get_name(), CLI::AppFormatMode::Normal);
  for (const CLI::App* each : app.get_subcommands({})) {
    if (each->get_name() != verb) continue;
    return formatter->make_help(each, app.get_name() + ' ' + verb, CLI::AppFormatMode::Normal);
  }
  throw CLI::ValidationError(kVerb, "there is no verb " + Cited(verb));
}

}  // namespace

void AddHelpCommands(CLI::App& app) {
  CLI::App* help = app.add_subcommand("help", "Tell about a verb, or about all");
  const auto verb = std::make_shared<std::string>();
  help->add_option(kVerb, *verb, "The verb")->type_name("");
  help->footer("Example:\n  orxdb help list");
  help->callback([&app, verb] {
    Put(HelpOn(app, *verb));
    EndOutput();
  });

  CLI::App* describe = app.add_subcommand("describe", "Write a completion or the manual page");
  describe->group("");
  const auto kind = std::make_shared<std::string>();
  std::vector<std::string> kinds;
  for (const CommandText& text : CommandTexts()) kinds.emplace_back(text.name);
  describe->add_option("KIND", *kind)->required()->check(CLI::IsMember(kinds));
  describe->callback([&app, kind] {
    Put(std::ranges::find(CommandTexts(), *kind, &CommandText::name)->write(DescribedProgram(app)));
    EndOutput();
  });
}

}  // namespace orxdb
