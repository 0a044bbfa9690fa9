// The exceptions that travel inside a module and, from methods without a guard, out of it.
#pragma once

#include <string>

#include "platform/automation/Types.h"

/// Root of the framework's exceptions. Throw by value, catch by const reference. The type is
/// exported once for the whole process, so that it is caught across library borders.
class AUTOMATION_API CException {
 public:
  CException() = default;
  CException(const CException&) = default;
  CException& operator=(const CException&) = default;
  virtual ~CException();

  /// What went wrong, for people; empty when there is nothing to say.
  virtual std::string Message() const;

  /// Copies the message, cut to `maxLength` - 1 bytes, and a final zero into `buffer`. False when
  /// there is no message: `buffer` then holds an empty text. Without a buffer (null or no length)
  /// nothing is written and the answer is false.
  bool GetErrorMessage(char* buffer, unsigned maxLength) const;
};

/// Memory ran out.
class AUTOMATION_API CMemoryException : public CException {
 public:
  ~CMemoryException() override;
  std::string Message() const override;
};
