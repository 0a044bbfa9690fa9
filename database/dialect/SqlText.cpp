#include "database/dialect/SqlText.h"

#include "platform/automation/Ascii.h"

namespace orxdb {

std::string Quoted(std::string_view name) {
  std::string quoted = "\"";
  for (const char c : name) {
    quoted += c;
    if (c == '"') quoted += c;
  }
  quoted += '"';
  return quoted;
}

bool SameName(std::string_view a, std::string_view b) noexcept {
  return EqualNoCase(a, b);
}

std::string FoldedName(std::string_view name) {
  return Folded(name);
}

}  // namespace orxdb
