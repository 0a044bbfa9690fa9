// JSON of tools, read without changing a digit.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orxdb {

/// A value, null, or an empty list or object.
struct JsonLeaf {
  enum class Kind { Null, Text, Number, Flag, Structure };

  std::vector<std::string> path;  ///< names of members and, in lists, positions from 0
  Kind kind = Kind::Null;
  std::string text;  ///< a number as it is written, a flag as "true" or "false"
};
using JsonLeaves = std::vector<JsonLeaf>;

/// Appends the leaves of a JSON text in their order. Returns what is wrong with the text, a
/// sentence, or nothing.
std::string ReadJson(std::string_view text, JsonLeaves& leaves);

}  // namespace orxdb
