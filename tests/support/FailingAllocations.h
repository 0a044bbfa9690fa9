// Memory that runs out when a test says so.
#pragma once

namespace orxdb::test {

/// Lets `count` more allocations of this program succeed, in the component and in SQLite too, and
/// then `failures` fail, all that follow if negative. A negative `count` ends it.
void FailAllocationsAfter(int count, int failures = -1) noexcept;

/// How many allocations have failed since the last call of FailAllocationsAfter.
int FailedAllocations() noexcept;

}  // namespace orxdb::test
