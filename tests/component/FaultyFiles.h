// Files under SQLite that fail when a test says so, for every connection of the program.
#pragma once

#include <sqlite3.h>
#include <utility>

namespace orxdb::test {

enum class FileFault {
  Read,
  Write,
  FullDisk,  ///< writes fail for want of room, and go on failing
  Sync,
  Lock,
  SharedMemory,  ///< of the index of a write-ahead log
};

/// The system's files with other operations in their tables.
struct FaultyFiles {
  static inline FileFault fault = FileFault::Read;
  static inline int left = -1;
  static inline int failed = 0;
  static inline sqlite3_io_methods system = {};
  static inline decltype(sqlite3_vfs::xOpen) open = nullptr;

  static bool Fails(FileFault kind) {
    if (left < 0 || kind != fault || left-- > 0) return false;
    ++failed;
    if (kind == FileFault::FullDisk) left = 0;
    return true;
  }
  /// The operation of the system's file, unless it has to fail.
  template <auto operation, FileFault kind, int error, typename... Arguments>
  static int Failing(sqlite3_file* file, Arguments... arguments) {
    if (Fails(kind)) return error;
    if (kind == FileFault::Write && Fails(FileFault::FullDisk)) return SQLITE_FULL;
    // Nothing waits for the disk: no test here cuts the power.
    return kind == FileFault::Sync ? SQLITE_OK : (system.*operation)(file, arguments...);
  }
  static int Open(sqlite3_vfs* vfs, const char* name, sqlite3_file* file, int flags, int* given) {
    using Methods = sqlite3_io_methods;
    static Methods faulty[2];  // journals and temporary files are closed in another way
    const int code = open(vfs, name, file, flags, given);
    if (!file->pMethods) return code;
    const bool database = flags & SQLITE_OPEN_MAIN_DB;
    Methods& methods = faulty[database];
    methods = *file->pMethods;
    if (database) system = methods;
    methods.iVersion = 2;  // nothing is mapped into memory
    methods.xRead = Failing<&Methods::xRead, FileFault::Read, SQLITE_IOERR_READ>;
    methods.xWrite = Failing<&Methods::xWrite, FileFault::Write, SQLITE_IOERR_WRITE>;
    methods.xSync = Failing<&Methods::xSync, FileFault::Sync, SQLITE_IOERR_FSYNC>;
    methods.xLock = Failing<&Methods::xLock, FileFault::Lock, SQLITE_IOERR_LOCK>;
    methods.xShmMap = Failing<&Methods::xShmMap, FileFault::SharedMemory, SQLITE_IOERR_SHMMAP>;
    file->pMethods = &methods;
    return code;
  }
};

/// Lets `count` more operations of that kind succeed and then one fail, or all for a full disk; a
/// negative count ends it. Replaces the files of all connections opened from the first call on.
inline void FailFilesAfter(FileFault fault, int count) {
  if (!FaultyFiles::open) {
    FaultyFiles::open = std::exchange(sqlite3_vfs_find(nullptr)->xOpen, &FaultyFiles::Open);
  }
  FaultyFiles::fault = fault;
  FaultyFiles::left = count;
  if (count >= 0) FaultyFiles::failed = 0;
}

}  // namespace orxdb::test
