// Text values at the database boundary: the database holds text as narrow bytes, the interface as
// wide text.
#pragma once

#include "platform/automation/Types.h"

namespace orxdb {

/// Replaces wide text by a byte-length string of its narrow bytes. False, with the value
/// unchanged, for null pointers, null strings and other types.
bool NarrowStringVariant(VARIANT* value);

/// Replaces a byte-length string of narrow bytes by their wide text. False as above.
bool WidenStringVariant(VARIANT* value);

}  // namespace orxdb
