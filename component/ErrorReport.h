#pragma once

namespace orxdb {

/// Sets the calling thread's error information: the same description for every failure, the
/// interface, and the class's ProgID as the source when the class is registered. Without memory
/// nothing is set.
void ReportError() noexcept;

}  // namespace orxdb
