// The border between what may throw and flat functions that must not.
#pragma once

#include <new>
#include <utility>

#include "platform/automation/StatusCodes.h"

namespace orxdb {

/// The status of `work`, also when memory, a file name or a library throws.
template <typename Work>
HRESULT Guarded(Work&& work) noexcept {
  try {
    return std::forward<Work>(work)();
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  } catch (...) {
    return E_UNEXPECTED;
  }
}

}  // namespace orxdb
