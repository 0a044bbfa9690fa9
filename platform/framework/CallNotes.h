// What the calling thread's last call of a component left undone, and why, in plain words: beside
// what the methods' results and the error information tell.
#pragma once

#include <string>
#include <string_view>

#include "platform/automation/Types.h"

namespace orxdb {

/// A call of a method. The outermost one forgets what the calls before it noted; those that a
/// method makes of others add to its notes.
class AUTOMATION_API NotedCall {
 public:
  NotedCall() noexcept;
  ~NotedCall();
  NotedCall(const NotedCall&) = delete;
  NotedCall& operator=(const NotedCall&) = delete;
};

/// Notes a cause, once: a sentence, of which the capital letter and the full stop may be missing.
/// Outside of calls nothing is noted. Some kilobytes are kept, of further ones their number.
AUTOMATION_API void NoteCause(std::string_view cause) noexcept;

/// Notes the message of the exception that is being handled, or that its cause is unknown.
AUTOMATION_API void NoteCurrentException() noexcept;

/// A sentence to a line; empty when there is nothing to tell.
AUTOMATION_API std::string NotedCauses();

}  // namespace orxdb
