// String resources: the texts of a module, by number.
#pragma once

#include <cstddef>
#include <string>

#include "platform/automation/Types.h"

namespace orxdb {

/// One text, narrow and zero-terminated.
struct StringResource {
  unsigned id;
  const char* text;
};

/// The texts of a module or of a language, in any order; the first with an id counts. Plain data,
/// so that it can be handed across library borders; who provides it keeps it alive.
struct ResourceTable {
  const StringResource* strings;
  std::size_t count;
};

/// Null means: no resources.
using ResourceHandle = const ResourceTable*;

/// Loads a text. False, and `text` emptied, when there is none with this id.
AUTOMATION_API bool LoadString(ResourceHandle resources, unsigned id, std::string& text);

}  // namespace orxdb
