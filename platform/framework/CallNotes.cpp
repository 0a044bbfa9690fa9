#include "platform/framework/CallNotes.h"

#include <algorithm>
#include <array>
#include <new>

#include "platform/framework/Exception.h"

namespace orxdb {
namespace {

constexpr std::string_view kOutOfMemory = "memory ran out";

/// Kept without allocations, so that memory running out can be told too.
struct Notes {
  unsigned depth;  ///< of calls
  unsigned leftOut;
  std::size_t size;
  std::array<char, 4000> text;
};

constinit thread_local Notes t_notes{};

std::string_view Kept() noexcept {
  return {t_notes.text.data(), t_notes.size};
}

bool IsKept(std::string_view cause) noexcept {
  std::string_view kept = Kept();
  while (!kept.empty()) {
    const std::string_view line = kept.substr(0, kept.find('\n'));
    if (line.substr(1, cause.size() - 1) == cause.substr(1)) return true;
    kept.remove_prefix(line.size() + 1);
  }
  return false;
}

void Append(char c) noexcept {
  t_notes.text[t_notes.size++] = c;
}

}  // namespace

NotedCall::NotedCall() noexcept {
  if (t_notes.depth++ == 0) t_notes.size = t_notes.leftOut = 0;
}

NotedCall::~NotedCall() {
  --t_notes.depth;
}

void NoteCause(std::string_view cause) noexcept {
  if (t_notes.depth == 0 || cause.empty() || IsKept(cause)) return;
  if (t_notes.size + cause.size() + 2 > t_notes.text.size()) {
    ++t_notes.leftOut;
    return;
  }
  const bool small = cause.front() >= 'a' && cause.front() <= 'z';
  Append(static_cast<char>(small ? cause.front() - 'a' + 'A' : cause.front()));
  // A cause is a line of its own, whatever a text quoted in it holds.
  for (const char c : cause.substr(1)) Append(c == '\n' || c == '\r' ? ' ' : c);
  if (cause.back() != '.') Append('.');
  Append('\n');
}

void NoteCurrentException() noexcept {
  try {
    throw;
  } catch (const CException& exception) {
    try {
      NoteCause(exception.Message());
    } catch (...) {
      NoteCause(kOutOfMemory);
    }
  } catch (const std::bad_alloc&) {
    NoteCause(kOutOfMemory);
  } catch (...) {
    NoteCause("the cause is unknown");
  }
}

std::string NotedCauses() {
  std::string text(Kept());
  if (t_notes.leftOut > 0) text += "And " + std::to_string(t_notes.leftOut) + " more.\n";
  if (!text.empty()) text.pop_back();
  return text;
}

}  // namespace orxdb
