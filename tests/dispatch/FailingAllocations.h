// Memory that runs out when a test says so.
#pragma once

namespace orxdb::test {

/// `count` more allocations by operator new succeed, in the component too; negative for all.
void FailAllocationsAfter(int count) noexcept;

}  // namespace orxdb::test
