#include "platform/framework/Exception.h"

#include <algorithm>
#include <cstring>

// Destructors stand here, not in the header, so that this library alone holds the type
// information.
CException::~CException() = default;
CMemoryException::~CMemoryException() = default;

std::string CException::Message() const {
  return {};
}

std::string CMemoryException::Message() const {
  return "Out of memory.";
}

bool CException::GetErrorMessage(char* buffer, unsigned maxLength) const {
  if (!buffer || maxLength == 0) return false;
  const std::string message = Message();
  const std::size_t length = std::min<std::size_t>(message.size(), maxLength - 1);
  std::memcpy(buffer, message.data(), length);
  buffer[length] = '\0';
  return !message.empty();
}
