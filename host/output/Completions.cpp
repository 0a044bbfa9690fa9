#include <algorithm>

#include "host/output/CommandLine.h"

namespace orxdb {
namespace {

std::string Joined(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : " ") + word;
  return text;
}

std::string OptionNames(const Command& command) {
  std::string names;
  for (const CommandOption& option : command.options) names += Joined(option.names) + ' ';
  return names;
}

/// The text between single quotes of a shell, with a backslash before these characters.
std::string InQuotes(std::string_view text, std::string_view special, std::string_view quote) {
  std::string quoted = "'";
  for (const char c : text) {
    if (c == '\'') {
      quoted += quote;
      continue;
    }
    if (special.find(c) != std::string_view::npos) quoted += '\\';
    quoted += c;
  }
  return quoted + '\'';
}

std::string ShellQuoted(std::string_view text, std::string_view special = "") {
  return InQuotes(text, special, "'\\''");
}

std::string FishQuoted(std::string_view text) {
  return InQuotes(text, "\\", "\\'");
}

bool IsTable(const CommandArgument& argument) {
  return argument.name == "TABLE";
}

constexpr std::string_view kAboutTables =
    "# The tables are those of the database that the command line names, or of the default one.\n";

}  // namespace

// --- bash

std::string BashCompletion(const CommandLine& program) {
  const std::string all = OptionNames(program);
  std::string values;
  std::string verbs;
  std::string names;
  for (const Command& verb : program.verbs) {
    names += verb.name + ' ';
    for (const CommandOption& option : verb.options) {
      if (option.value.empty()) continue;
      for (const std::string& name : option.names) {
        values += "    " + verb.name + ":" + name +
                  ") offer=" + ShellQuoted(Joined(option.choices)) + "; taken=1 ;;\n";
      }
    }
    verbs += "    " + verb.name + ")\n      options=" + ShellQuoted(OptionNames(verb) + all) + '\n';
    for (std::size_t i = 0; i < verb.arguments.size(); ++i) {
      const CommandArgument& argument = verb.arguments[i];
      if (!IsTable(argument) && argument.choices.empty()) continue;
      verbs += "      [ \"$place\" = " + std::to_string(i) + " ] && offer=" +
               (IsTable(argument) ? "$(_orxdb_tables)" : ShellQuoted(Joined(argument.choices))) +
               '\n';
    }
    verbs += "      ;;\n";
  }
  std::string taking;
  for (const CommandOption& option : program.options) {
    if (option.value.empty()) continue;
    for (const std::string& name : option.names) taking += (taking.empty() ? "" : "|") + name;
  }
  return "# Completion of orxdb for bash, made from the program's own descriptions.\n" +
         std::string(kAboutTables) +
         "_orxdb_tables() {\n"
         "  orxdb \"${database[@]}\" types --tsv 2>/dev/null | tail -n +2 | cut -f3\n"
         "}\n"
         "_orxdb() {\n"
         "  local word=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}\n"
         "  local verb='' place=0 offer='' options='' taken='' i\n"
         "  local database=()\n"
         "  COMPREPLY=()\n"
         "  for ((i = 1; i < COMP_CWORD; i++)); do\n"
         "    case ${COMP_WORDS[i]} in\n"
         "    " +
         taking +
         ") ((i++)); database=(--db \"${COMP_WORDS[i]}\") ;;\n"
         "    -*) ;;\n"
         "    *) if [ -z \"$verb\" ]; then verb=${COMP_WORDS[i]}; else ((place++)); fi ;;\n"
         "    esac\n"
         "  done\n"
         "  case $previous in\n"
         "    " +
         taking +
         ") return ;;\n"
         "  esac\n"
         "  case $verb:$previous in\n" +
         values +
         "  esac\n"
         "  if [ -z \"$taken\" ]; then\n"
         "    case $verb in\n"
         "    '') offer=" +
         ShellQuoted(names) + "; options=" + ShellQuoted(all) + " ;;\n" + verbs +
         "    esac\n"
         "    case $word in -*) offer=$options ;; esac\n"
         "  fi\n"
         "  COMPREPLY=($(compgen -W \"$offer\" -- \"$word\"))\n"
         "}\n"
         "complete -o default -F _orxdb orxdb\n";
}

// --- zsh

namespace {

constexpr std::string_view kZshSpecial = "[]:\\";

std::string ZshValue(const std::string& name, const std::vector<std::string>& choices) {
  const std::string what = name == "TABLE"    ? "_orxdb_tables"
                           : !choices.empty() ? "(" + Joined(choices) + ")"
                                              : "_files";
  return ':' + name + ':' + what;
}

/// The specifications of a command's options for _arguments, each on a line.
std::string ZshOptions(const Command& command) {
  std::string lines;
  for (const CommandOption& option : command.options) {
    const std::string value = option.value.empty() ? "" : ZshValue(option.value, option.choices);
    for (const std::string& name : option.names) {
      std::string help = ShellQuoted(option.help, kZshSpecial);
      help.insert(1, "[").insert(help.size() - 1, "]");
      lines += "    " + ShellQuoted(name) + help + ShellQuoted(value) + " \\\n";
    }
  }
  return lines;
}

}  // namespace

std::string ZshCompletion(const CommandLine& program) {
  std::string names;
  std::string verbs;
  for (const Command& verb : program.verbs) {
    names += "    " + ShellQuoted(verb.name + ':' + verb.help, "\\") + '\n';
    verbs += "    " + verb.name + ")\n    _arguments \\\n" + ZshOptions(verb) + ZshOptions(program);
    for (const CommandArgument& argument : verb.arguments) {
      verbs += "    " +
               ShellQuoted((argument.repeated   ? "*"
                            : argument.required ? ""
                                                : ":") +
                           ZshValue(argument.name, argument.choices)) +
               " \\\n";
    }
    verbs += "    && return ;;\n";
  }
  return "#compdef orxdb\n"
         "# Completion of orxdb for zsh, made from the program's own descriptions.\n" +
         std::string(kAboutTables) +
         "_orxdb_tables() {\n"
         "  local -a tables\n"
         "  [[ -n ${opt_args[--db]} ]] && database=(--db ${(Q)opt_args[--db]})\n"
         "  tables=(${(f)\"$(orxdb $database types --tsv 2>/dev/null | tail -n +2 | cut -f3)\"})\n"
         "  compadd -a tables\n"
         "}\n"
         "_orxdb() {\n"
         "  local curcontext=$curcontext state line\n"
         "  typeset -A opt_args\n"
         "  local -a verbs database\n"
         "  verbs=(\n" +
         names +
         "  )\n"
         "  _arguments -C \\\n" +
         ZshOptions(program) +
         "    '1:verb:->verb' '*::argument:->rest' && return\n"
         "  case $state in\n"
         "  verb) _describe verb verbs ;;\n"
         "  rest)\n"
         "    [[ -n ${opt_args[--db]} ]] && database=(--db ${(Q)opt_args[--db]})\n"
         "    case $words[1] in\n" +
         verbs +
         "    esac ;;\n"
         "  esac\n"
         "}\n"
         "_orxdb \"$@\"\n";
}

// --- fish

namespace {

std::string FishOptions(const Command& command, const std::string& condition) {
  std::string lines;
  for (const CommandOption& option : command.options) {
    lines += "complete -c orxdb" + condition;
    for (const std::string& name : option.names) {
      lines += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
    }
    if (!option.choices.empty()) {
      lines += " -x -a " + FishQuoted(Joined(option.choices));
    } else if (!option.value.empty()) {
      lines += " -r -F";
    }
    lines += " -d " + FishQuoted(option.help) + '\n';
  }
  return lines;
}

}  // namespace

std::string FishCompletion(const CommandLine& program) {
  std::string names;
  for (const Command& verb : program.verbs) names += ' ' + verb.name;
  std::string text = "# Completion of orxdb for fish, made from the program's own descriptions.\n" +
                     std::string(kAboutTables) +
                     "function __orxdb_tables\n"
                     "  set -l words (commandline -opc)\n"
                     "  set -l database\n"
                     "  if set -l place (contains -i -- --db $words)\n"
                     "    set database --db $words[(math $place + 1)]\n"
                     "  end\n"
                     "  orxdb $database types --tsv 2>/dev/null | tail -n +2 | cut -f3\n"
                     "end\n" +
                     FishOptions(program, "");
  for (const Command& verb : program.verbs) {
    text += "complete -c orxdb -n 'not __fish_seen_subcommand_from" + names + "' -f -a " +
            verb.name + " -d " + FishQuoted(verb.help) + '\n';
    const std::string condition = " -n '__fish_seen_subcommand_from " + verb.name + "'";
    text += FishOptions(verb, condition);
    for (const CommandArgument& argument : verb.arguments) {
      if (IsTable(argument)) text += "complete -c orxdb" + condition + " -a '(__orxdb_tables)'\n";
      if (!argument.choices.empty()) {
        text += "complete -c orxdb" + condition + " -f -a " + FishQuoted(Joined(argument.choices)) +
                '\n';
      }
    }
  }
  return text;
}

}  // namespace orxdb
