#pragma once

#include "component/MethodTable.h"

namespace orxdb {

/// Sets the calling thread's error information: the same description for every failure, the
/// interface of the class, and as the source the ProgID that the class is registered under, else
/// its own. Without memory nothing is set.
void ReportError(const DescribedClass& type) noexcept;

}  // namespace orxdb
