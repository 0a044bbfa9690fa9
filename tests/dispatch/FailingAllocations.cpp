#include "tests/dispatch/FailingAllocations.h"

#include <cstdlib>
#include <new>

namespace {
int g_allocationsLeft = -1;
}  // namespace

void orxdb::test::FailAllocationsAfter(int count) noexcept {
  g_allocationsLeft = count;
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  if (g_allocationsLeft == 0) return nullptr;
  if (g_allocationsLeft > 0) --g_allocationsLeft;
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
