// Names as people write them: the same name comes with other letter case, blanks and umlauts.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orxdb {

/// The key under which spellings of a name meet: small letters, without blanks, underscores,
/// hyphens and full stops; umlauts in two letters, Ø and ⌀ alike.
std::string NameKey(std::string_view name);

/// Whether a text has another one in it.
inline bool HasPart(std::string_view text, std::string_view part) {
  return text.find(part) != text.npos;
}

/// The few names that are most like the one that was looked for, the most alike first.
std::vector<std::string> NearestNames(std::string_view name, const std::vector<std::string>& names);

/// "a, b, c".
std::string Listed(const std::vector<std::string>& names);

}  // namespace orxdb
