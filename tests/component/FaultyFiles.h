// Files under SQLite that fail when a test says so, for every connection of the program.
#pragma once

namespace orxdb::test {

enum class FileFault {
  Read,
  Write,
  FullDisk,  ///< writes fail for want of room, and go on failing
  Sync,
  Truncate,
  Lock,
  SharedMemory,  ///< of the index of a write-ahead log
};

/// Lets `count` more operations of that kind succeed and then one fail, or all for a full disk.
/// Replaces the files of all connections opened from the first call on.
void FailFilesAfter(FileFault fault, int count);

/// Ends it; how many operations have failed.
int StopFailingFiles() noexcept;

}  // namespace orxdb::test
