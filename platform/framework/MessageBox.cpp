#include "platform/framework/MessageBox.h"

#include <algorithm>
#include <cstdio>
#include <mutex>
#include <utility>

namespace orxdb {
namespace {

struct Installed {
  std::mutex mutex;
  MessageBoxHandler handler;
};

Installed& TheInstalled() {
  static Installed installed;
  return installed;
}

int WriteLine(const std::string& text, const std::string& caption) {
  std::string line = caption.empty() ? text : caption + ": " + text;
  std::ranges::replace(line, '\n', ' ');
  line += '\n';
  std::fwrite(line.data(), 1, line.size(), stderr);
  return IDOK;
}

}  // namespace

MessageBoxHandler InstallMessageBoxHandler(MessageBoxHandler handler) {
  Installed& installed = TheInstalled();
  const std::lock_guard lock(installed.mutex);
  return std::exchange(installed.handler, std::move(handler));
}

int ShowMessageBox(const std::string& text, const std::string& caption, unsigned style) {
  Installed& installed = TheInstalled();
  // Called without the lock: a handler may show another message or replace itself.
  const MessageBoxHandler handler = [&] {
    const std::lock_guard lock(installed.mutex);
    return installed.handler;
  }();
  return handler ? handler(text, caption, style) : WriteLine(text, caption);
}

}  // namespace orxdb
