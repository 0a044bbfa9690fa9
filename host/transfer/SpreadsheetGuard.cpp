#include "host/transfer/SpreadsheetGuard.h"

#include <algorithm>
#include <charconv>

namespace orxdb {
namespace {

constexpr std::string_view kFormulaSigns = "=+-@\t\r";

/// Whether the text is a formula behind any number of apostrophes.
bool NeedsGuard(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of('\''), text.size()));
  if (text.empty() || kFormulaSigns.find(text.front()) == kFormulaSigns.npos) return false;
  double number = 0;
  const char* end = text.data() + text.size();
  return std::from_chars(text.data(), end, number).ptr != end;
}

}  // namespace

std::string Guarded(std::string_view text) {
  return std::string(NeedsGuard(text) ? "'" : "").append(text);
}

std::string Unguarded(std::string_view text) {
  if (text.starts_with('\'') && NeedsGuard(text)) text.remove_prefix(1);
  return std::string(text);
}

}  // namespace orxdb
