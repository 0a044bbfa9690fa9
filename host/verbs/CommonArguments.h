// Arguments that several verbs have.
#pragma once

#include <optional>
#include <string>
#include <utility>

#include "host/library/ToolDatabase.h"
#include "host/verbs/Commands.h"

namespace CLI {
class Option;
}  // namespace CLI

namespace orxdb {

/// The argument TABLE of the verbs for one tool table.
void AddTable(CLI::App& verb, std::string& table);
/// The opened database and the exact name of the table that such an argument names.
std::pair<ToolDatabase, std::string> OpenTable(const Settings& settings, const std::string& name);

/// Has the command line refuse an empty name of a file for wrong usage.
CLI::Option* RequireName(CLI::Option* file);

/// The word as the identifier of a tool, if it is one.
std::optional<LONG> AsIdentifier(const std::string& word);

/// An argument or option that takes a finite number with a full stop.
CLI::Option* AddNumber(CLI::App& verb, const std::string& name, double& number,
                       const std::string& description);

}  // namespace orxdb
