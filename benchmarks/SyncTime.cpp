#include "benchmarks/SyncTime.h"

#include <chrono>
#include <sys/syscall.h>
#include <unistd.h>
#include <utility>

namespace {

std::vector<double> g_times;

int Timed(long call, int file) {
  const auto begin = std::chrono::steady_clock::now();
  const int result = static_cast<int>(syscall(call, file));
  g_times.push_back(
      std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count());
  return result;
}

}  // namespace

std::vector<double> TakeSyncTimes() {
  return std::exchange(g_times, {});
}

// Libraries that the program loads find these before the system's, as long as they are visible.
#pragma GCC visibility push(default)

extern "C" int fsync(int file) {
  return Timed(SYS_fsync, file);
}

extern "C" int fdatasync(int file) {
  return Timed(SYS_fdatasync, file);
}

#pragma GCC visibility pop
