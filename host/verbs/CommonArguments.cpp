#include "host/verbs/CommonArguments.h"

#include <CLI/CLI.hpp>
#include <charconv>
#include <cmath>

#include "host/library/Cause.h"

namespace orxdb {

void AddTable(CLI::App& verb, std::string& table) {
  verb.add_option("TABLE", table, "Tool table, as `orxdb types` names it")
      ->required()
      ->type_name("");
}

std::pair<ToolDatabase, std::string> OpenTable(const Settings& settings, const std::string& name) {
  ToolDatabase database(settings.database);
  std::string table = database.TableNamed(name);
  return {std::move(database), std::move(table)};
}

CLI::Option* RequireName(CLI::Option* file) {
  return file->check(CLI::Validator(
      [](const std::string& name) { return name.empty() ? "the name of the file is empty" : ""; },
      ""));
}

std::optional<LONG> AsIdentifier(const std::string& word) {
  LONG id = 0;
  const char* end = word.data() + word.size();
  const auto [stop, error] = std::from_chars(word.data(), end, id);
  return error == std::errc() && stop == end ? std::optional(id) : std::nullopt;
}

CLI::Option* AddNumber(CLI::App& verb, const std::string& name, double& number,
                       const std::string& description) {
  const auto read = [&number, name](const std::string& text) {
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || stop != end || !std::isfinite(number)) {
      throw CLI::ValidationError(name, Cited(text) + " is no number" + CommaHint(text));
    }
  };
  return verb.add_option_function<std::string>(name, read, description)->type_name("");
}

}  // namespace orxdb
