#include "platform/automation/BString.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <limits>
#include <string>

namespace {

// Padding and the byte count; keeps the text as aligned as the block itself.
constexpr std::size_t kHeaderSize = 8;
static_assert(kHeaderSize >= sizeof(ULONG) && kHeaderSize % alignof(void*) == 0);
// A zero character, found also by who reads whole characters behind an odd last byte.
constexpr std::size_t kTerminatorSize = 3;

std::atomic<LONGLONG> g_liveStrings{0};

char* BlockOf(BSTR string) {
  return reinterpret_cast<char*>(string) - kHeaderSize;
}

/// A string of `byteCount` unset bytes with its count and terminator; null without memory, and for
/// a string that would not fit into 4 GB with what stands around it.
char* Allocate(UINT byteCount) {
  if (byteCount > std::numeric_limits<UINT>::max() - kHeaderSize - kTerminatorSize) return nullptr;
  auto* block = static_cast<char*>(std::malloc(kHeaderSize + byteCount + kTerminatorSize));
  if (!block) return nullptr;
  char* text = block + kHeaderSize;
  std::memcpy(text - sizeof byteCount, &byteCount, sizeof byteCount);
  std::memset(text + byteCount, 0, kTerminatorSize);
  g_liveStrings.fetch_add(1, std::memory_order_relaxed);
  return text;
}

}  // namespace

BSTR SysAllocStringByteLen(const char* bytes, UINT length) {
  char* text = Allocate(length);
  if (text && bytes) std::memcpy(text, bytes, length);
  return reinterpret_cast<BSTR>(text);
}

BSTR SysAllocStringLen(const OLECHAR* text, UINT length) {
  if (length > std::numeric_limits<UINT>::max() / sizeof(OLECHAR)) return nullptr;
  return SysAllocStringByteLen(reinterpret_cast<const char*>(text),
                               static_cast<UINT>(length * sizeof(OLECHAR)));
}

BSTR SysAllocString(const OLECHAR* text) {
  if (!text) return nullptr;
  const std::size_t length = std::char_traits<OLECHAR>::length(text);
  if (length > std::numeric_limits<UINT>::max()) return nullptr;
  return SysAllocStringLen(text, static_cast<UINT>(length));
}

INT SysReAllocString(BSTR* string, const OLECHAR* text) {
  if (!string) return 0;
  BSTR replacement = SysAllocString(text);
  if (text && !replacement) return 0;
  SysFreeString(*string);
  *string = replacement;
  return 1;
}

INT SysReAllocStringLen(BSTR* string, const OLECHAR* text, UINT length) {
  if (!string) return 0;
  BSTR replacement = SysAllocStringLen(nullptr, length);
  if (!replacement) return 0;
  if (!text) text = *string;
  const OLECHAR* const end = *string + SysStringLen(*string);
  const std::less_equal<> before;
  const bool isOwn = *string && before(*string, text) && before(text, end);
  // The old string ends where it ends, however many characters are asked for.
  const std::size_t known =
      isOwn ? std::min<std::size_t>(length, static_cast<std::size_t>(end - text)) : length;
  if (text) std::copy_n(text, known, replacement);
  SysFreeString(*string);
  *string = replacement;
  return 1;
}

void SysFreeString(BSTR string) {
  if (!string) return;
  g_liveStrings.fetch_sub(1, std::memory_order_relaxed);
  std::free(BlockOf(string));
}

UINT SysStringByteLen(BSTR string) {
  if (!string) return 0;
  UINT byteCount = 0;
  std::memcpy(&byteCount, reinterpret_cast<const char*>(string) - sizeof byteCount,
              sizeof byteCount);
  return byteCount;
}

UINT SysStringLen(BSTR string) {
  return SysStringByteLen(string) / static_cast<UINT>(sizeof(OLECHAR));
}

LONGLONG AutomationLiveStrings() {
  return g_liveStrings.load(std::memory_order_relaxed);
}
