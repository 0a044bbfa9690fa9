#include <array>

#include "host/output/CommandLine.h"

namespace orxdb {
namespace {

constexpr std::string_view kHelp = "--help";  // which every verb has, and is told of once

/// Text as the manual's typesetter takes it literally.
std::string Plain(std::string_view text) {
  std::string plain;
  for (const char c : text) {
    if ((c == '.' || c == '\'') && (plain.empty() || plain.back() == '\n')) plain += "\\&";
    if (c == '-') plain += '\\';
    plain += c == '\\' ? std::string("\\e") : std::string(1, c);
  }
  return plain;
}

std::string Bold(std::string_view text) {
  return "\\fB" + Plain(text) + "\\fR";
}

std::string Italic(std::string_view text) {
  return "\\fI" + Plain(text) + "\\fR";
}

std::string Entry(const std::string& term, std::string_view help) {
  return ".TP\n" + term + '\n' + Plain(help) + ".\n";
}

std::string Options(const Command& command) {
  std::string text;
  for (const CommandOption& option : command.options) {
    if (option.names.back() == kHelp) continue;
    std::string term;
    for (const std::string& name : option.names) term += (term.empty() ? "" : ", ") + Bold(name);
    if (!option.value.empty()) term += ' ' + Italic(option.value);
    std::string help = option.help;
    if (!option.environment.empty()) {
      help += "; the environment variable " + option.environment + " stands for it";
    }
    text += Entry(term, help);
  }
  return text;
}

std::string Synopsis(const Command& verb) {
  std::string text = Bold(verb.name);
  for (const CommandArgument& argument : verb.arguments) {
    std::string word = Italic(argument.name);
    if (argument.repeated) word += " ...";
    text += argument.required ? ' ' + word : " [" + word + ']';
  }
  return text + (verb.options.size() > 1 ? " [options]" : "");  // beside the one for help
}

std::string VerbSection(const Command& verb) {
  std::string text =
      ".SS " + verb.name + "\n.B orxdb\n" + Synopsis(verb) + "\n.PP\n" + Plain(verb.help) + ".\n";
  for (const CommandArgument& argument : verb.arguments) {
    text += Entry(Italic(argument.name), argument.help);
  }
  return text + Options(verb) + ".PP\n.nf\n" + Plain(verb.more) + "\n.fi\n";
}

}  // namespace

std::string ManualPage(const CommandLine& program) {
  std::string verbs;
  for (const Command& verb : program.verbs) verbs += VerbSection(verb);
  return ".\\\" Made from the program's own descriptions.\n"
         ".TH ORXDB 1 \"\" orxdb \"User Commands\"\n"
         ".SH NAME\norxdb \\- tool databases from the command line\n"
         ".SH SYNOPSIS\n.B orxdb\n[\\fIoptions\\fR] \\fIverb\\fR [\\fIarguments\\fR]\n"
         ".SH DESCRIPTION\n" +
         Plain(program.help) +
         "\n.PP\n"
         "Results go to standard output, messages to standard error.\n"
         ".SH OPTIONS\nThey may also follow the verb, and every verb has\n.BR \\-\\-help .\n" +
         Options(program) + ".SH VERBS\n" + verbs +
         ".SH EXIT STATUS\n.TP\n0\nDone; an empty list is a result.\n"
         ".TP\n1\nFailed, or not found.\n.TP\n2\nWrong usage.\n"
         ".SH EXAMPLES\n.nf\n" +
         Plain(program.more) + "\n.fi\n";
}

std::span<const CommandText> CommandTexts() {
  static constexpr std::array kTexts = {
      CommandText{"bash", BashCompletion}, CommandText{"zsh", ZshCompletion},
      CommandText{"fish", FishCompletion}, CommandText{"man", ManualPage}};
  return kTexts;
}

}  // namespace orxdb
