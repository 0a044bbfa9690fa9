// What the command line understands, as data, and the texts made of it: completions for shells and
// the manual page.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orxdb {

struct CommandArgument {
  std::string name;  ///< as in "orxdb show TABLE ID"
  std::string help;
  std::vector<std::string> choices;  ///< empty when it may be anything
  bool required = false;
  bool repeated = false;
};

struct CommandOption {
  std::vector<std::string> names{};  ///< with their hyphens
  std::string value{};               ///< what it takes, such as "FILE"; empty for a switch
  std::string help;
  std::string environment;  ///< the variable that stands for it; usually empty
  std::vector<std::string> choices;
};

struct Command {
  std::string name;
  std::string help;
  std::vector<CommandArgument> arguments{};
  std::vector<CommandOption> options{};
  std::string more;  ///< lines for the end of the help, examples last
};

/// The program, whose options also follow every verb.
struct CommandLine : Command {
  std::vector<Command> verbs;
};

struct CommandText {
  std::string_view name;
  std::string (*write)(const CommandLine&);
};

std::string BashCompletion(const CommandLine& program);
std::string ZshCompletion(const CommandLine& program);
std::string FishCompletion(const CommandLine& program);
std::string ManualPage(const CommandLine& program);

/// All of these by the names that the build asks for them with.
std::span<const CommandText> CommandTexts();

}  // namespace orxdb
