#include "tests/support/FailingAllocations.h"

#include <cstdlib>
#include <new>

namespace {

int g_left = -1;
int g_failures = 0;
int g_failed = 0;

bool Fails() noexcept {
  if (g_left < 0 || g_failed == g_failures) return false;
  const bool fails = g_left == 0;
  fails ? ++g_failed : --g_left;
  return fails;
}

}  // namespace

void orxdb::test::FailAllocationsAfter(int count, int failures) noexcept {
  g_left = count;
  g_failures = failures;
  if (count >= 0) g_failed = 0;
}

int orxdb::test::FailedAllocations() noexcept {
  return g_failed;
}

// What the C library or the sanitizer call these functions besides.
extern "C" void* RealMalloc(std::size_t) noexcept __asm__(ORXDB_ALLOCATOR "malloc");
extern "C" void* RealCalloc(std::size_t, std::size_t) noexcept __asm__(ORXDB_ALLOCATOR "calloc");
extern "C" void* RealRealloc(void*, std::size_t) noexcept __asm__(ORXDB_ALLOCATOR "realloc");

extern "C" __attribute__((visibility("default"))) void* malloc(std::size_t size) noexcept {
  return Fails() ? nullptr : RealMalloc(size);
}
extern "C" __attribute__((visibility("default"))) void* calloc(std::size_t count,
                                                               std::size_t size) noexcept {
  return Fails() ? nullptr : RealCalloc(count, size);
}
extern "C" __attribute__((visibility("default"))) void* realloc(void* memory,
                                                                std::size_t size) noexcept {
  return Fails() ? nullptr : RealRealloc(memory, size);
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return std::malloc(size ? size : 1);
}
void* operator new(std::size_t size) {
  if (void* memory = operator new(size, std::nothrow)) return memory;
  throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}
