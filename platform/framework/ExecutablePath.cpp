#include "platform/framework/ExecutablePath.h"

#include <algorithm>
#include <filesystem>

namespace orxdb {

std::string ExecutablePath() {
  std::error_code error;
  std::string path = std::filesystem::read_symlink("/proc/self/exe", error).string();
  std::ranges::replace(path, '/', '\\');
  return path;
}

std::string NativePath(std::string_view path) {
  std::string native(path);
  std::ranges::replace(native, '\\', '/');
  return native;
}

}  // namespace orxdb
