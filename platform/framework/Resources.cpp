#include "platform/framework/Resources.h"

#include <algorithm>
#include <span>

namespace orxdb {

bool LoadString(ResourceHandle resources, unsigned id, std::string& text) {
  text.clear();
  if (!resources) return false;
  const std::span strings(resources->strings, resources->count);
  const auto found = std::ranges::find(strings, id, &StringResource::id);
  if (found == strings.end()) return false;
  text = found->text;
  return true;
}

}  // namespace orxdb
