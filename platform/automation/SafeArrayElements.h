// The elements of a safe array as its own operations see them.
#pragma once

#include <cstddef>
#include <span>

#include "platform/automation/Types.h"

namespace orxdb {

/// The bounds, rightmost dimension first.
inline std::span<const SAFEARRAYBOUND> Bounds(const SAFEARRAY& array) noexcept {
  return {array.rgsabound, array.cDims};
}
inline std::span<SAFEARRAYBOUND> Bounds(SAFEARRAY& array) noexcept {
  return {array.rgsabound, array.cDims};
}

/// Number of elements of all dimensions together.
inline std::size_t ElementCount(const SAFEARRAY& array) noexcept {
  std::size_t count = array.cDims ? 1 : 0;
  for (const SAFEARRAYBOUND& bound : Bounds(array)) count *= bound.cElements;
  return count;
}

/// Frees what `count` elements own, leaving their bytes undefined.
void ReleaseElements(const SAFEARRAY& array, void* first, std::size_t count) noexcept;

/// Copies `count` elements into zeroed memory. After a failure the elements behind the failing one
/// are still zero.
HRESULT CopyElements(const SAFEARRAY& array, void* target, const void* source,
                     std::size_t count) noexcept;

}  // namespace orxdb
