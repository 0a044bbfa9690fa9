#pragma once

#include <stdexcept>
#include <string>

#include "platform/automation/StatusCodes.h"

namespace orxdb {

/// What the person at the host is told when a verb fails: a whole sentence. The program then ends
/// with code 1.
class HostError : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// What somebody wrote, in quotes for a message; a long text is cut.
std::string Cited(const std::string& text);

/// A status for a message, "0x80004005".
std::string Hexadecimal(HRESULT status);

}  // namespace orxdb
