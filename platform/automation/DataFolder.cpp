#include "platform/automation/DataFolder.h"

#include <cstdlib>
#include <string_view>

namespace orxdb {
namespace {

std::string Environment(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

}  // namespace

std::string OwnDataFolder() {
  std::string data = Environment("XDG_DATA_HOME");
  const std::string home = Environment("HOME");
  if (data.empty() && !home.empty()) data = home + "/.local/share";
  return data.starts_with('/') ? data : "";
}

}  // namespace orxdb
