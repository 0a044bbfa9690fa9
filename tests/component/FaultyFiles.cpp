#include "tests/component/FaultyFiles.h"

#include <sqlite3.h>

namespace orxdb::test {
namespace {

FileFault g_fault = FileFault::Read;
int g_left = -1;
int g_failed = 0;

bool Fails(FileFault fault) {
  if (g_left < 0 || fault != g_fault || g_left-- > 0) return false;
  ++g_failed;
  if (fault == FileFault::FullDisk) g_left = 0;
  return true;
}

/// The file that SQLite sees; the system's follows it in memory.
struct FaultyFile : sqlite3_file {
  sqlite3_file* Real() { return reinterpret_cast<sqlite3_file*>(this + 1); }
};

sqlite3_file* Real(sqlite3_file* file) {
  return static_cast<FaultyFile*>(file)->Real();
}

/// The operation of the system's file, unless it has to fail.
template <auto operation, FileFault fault, int error, typename... Arguments>
int Failing(sqlite3_file* file, Arguments... arguments) {
  if (Fails(fault)) return error;
  if (fault == FileFault::Write && Fails(FileFault::FullDisk)) return SQLITE_FULL;
  return (Real(file)->pMethods->*operation)(Real(file), arguments...);
}

template <auto operation, typename Result, typename... Arguments>
Result Passing(sqlite3_file* file, Arguments... arguments) {
  return (Real(file)->pMethods->*operation)(Real(file), arguments...);
}

/// Nothing waits for the disk: no test here cuts the power.
int Sync(sqlite3_file*, int) {
  return Fails(FileFault::Sync) ? SQLITE_IOERR_FSYNC : SQLITE_OK;
}

using Methods = sqlite3_io_methods;
constexpr Methods kMethods = {
    2,
    Passing<&Methods::xClose, int>,
    Failing<&Methods::xRead, FileFault::Read, SQLITE_IOERR_READ>,
    Failing<&Methods::xWrite, FileFault::Write, SQLITE_IOERR_WRITE>,
    Failing<&Methods::xTruncate, FileFault::Truncate, SQLITE_IOERR_TRUNCATE>,
    Sync,
    Passing<&Methods::xFileSize, int>,
    Failing<&Methods::xLock, FileFault::Lock, SQLITE_IOERR_LOCK>,
    Passing<&Methods::xUnlock, int>,
    Passing<&Methods::xCheckReservedLock, int>,
    Passing<&Methods::xFileControl, int>,
    Passing<&Methods::xSectorSize, int>,
    Passing<&Methods::xDeviceCharacteristics, int>,
    Failing<&Methods::xShmMap, FileFault::SharedMemory, SQLITE_IOERR_SHMMAP>,
    Passing<&Methods::xShmLock, int>,
    Passing<&Methods::xShmBarrier, void>,
    Passing<&Methods::xShmUnmap, int>,
    nullptr,
    nullptr};

sqlite3_vfs* g_system = nullptr;

int OpenFile(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* given) {
  file->pMethods = nullptr;
  const int code = g_system->xOpen(g_system, name, Real(file), flags, given);
  if (Real(file)->pMethods) file->pMethods = &kMethods;
  return code;
}

}  // namespace

void FailFilesAfter(FileFault fault, int count) {
  if (!g_system) {
    g_system = sqlite3_vfs_find(nullptr);
    static sqlite3_vfs faulty = *g_system;
    faulty.zName = "faulty";
    faulty.szOsFile += static_cast<int>(sizeof(FaultyFile));
    faulty.xOpen = &OpenFile;
    sqlite3_vfs_register(&faulty, 1);
  }
  g_fault = fault;
  g_left = count;
  g_failed = 0;
}

int StopFailingFiles() noexcept {
  g_left = -1;
  return g_failed;
}

}  // namespace orxdb::test
