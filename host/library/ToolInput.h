// Tools as people and programs describe them: NAME=VALUE words, and JSON objects on standard input.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "host/library/ToolDatabase.h"

namespace orxdb {

/// A value for a property of a tool.
struct Assignment {
  std::string property;
  Variant value;  ///< as the component takes it; null for none
  Cell shown;     ///< how the property reads once it is written
};
using Assignments = std::vector<Assignment>;

/// The tools that the words describe: one of NAME=VALUE words, or for a word "-" those of the JSON
/// object, or array of objects, on `input`, the other words then holding for each of them.
/// Nothing behind the equals sign, and null in JSON, mean no value. Names of properties and
/// texts of looked-up properties may be in any letter case. Throws HostError for a property that
/// the table does not have or that is named twice, for a value that does not suit its property,
/// looked-up texts among them, and for text that is no such JSON.
std::vector<Assignments> ReadTools(ToolDatabase& database, const std::string& table,
                                   const std::vector<std::string>& words, std::istream& input);

/// The text for where the component sets it between apostrophes, and does not double those in it.
std::string WithApostrophesDoubled(const std::string& text);

/// A text of the list of a looked-up property.
Assignment LookedUp(const std::string& property, const std::string& text);

/// The property arrays of a description.
ToolProperties ArraysOf(const Assignments& tool);

/// What is wrong with a word of a description, nothing when it is right.
std::string CheckInputWord(const std::string& word);

}  // namespace orxdb
