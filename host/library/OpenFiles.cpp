#include "host/library/OpenFiles.h"

#include <algorithm>
#include <fstream>
#include <unistd.h>

namespace orxdb {
namespace {

/// Whether the process has the file open, by the links that the system shows of its open files.
bool HasOpen(const std::filesystem::path& process, const std::filesystem::path& file) {
  std::error_code unreadable;
  for (std::filesystem::directory_iterator entry(process / "fd", unreadable), end; entry != end;
       entry.increment(unreadable)) {
    if (std::filesystem::read_symlink(entry->path(), unreadable) == file) return true;
  }
  return false;
}

}  // namespace

std::string ProgramsThatUse(const std::filesystem::path& database) {
  std::error_code unreadable;
  const std::filesystem::path file = std::filesystem::canonical(database, unreadable);
  const std::string self = std::to_string(getpid());
  std::string programs;
  for (std::filesystem::directory_iterator entry("/proc", unreadable), end; entry != end;
       entry.increment(unreadable)) {
    const std::string id = entry->path().filename().string();
    const bool process = std::ranges::all_of(id, [](char c) { return c >= '0' && c <= '9'; });
    if (!process || id == self || !HasOpen(entry->path(), file)) continue;
    std::string name;
    std::ifstream stream(entry->path() / "comm");
    std::getline(stream, name);
    if (!programs.empty()) programs += ", ";
    programs.append(name).append(" (process ").append(id).append(")");
  }
  return programs;
}

}  // namespace orxdb
