#include "host/library/ScratchFolder.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

#include "host/library/HostError.h"

namespace orxdb {
namespace {

constexpr std::array kInterruptions = {SIGINT, SIGTERM, SIGHUP};

/// The files that the host puts into the folder and those that the database engine adds: a signal
/// handler may remove files, not look which there are.
constexpr std::array kFiles = {"tools.txt", "tools.mdb", "tools.mdb-wal", "tools.mdb-shm",
                               "tools.mdb-journal"};

std::array<char, 4096> g_folder;  ///< for the handler

extern "C" void RemoveAndEnd(int signal) {
  const int folder = open(g_folder.data(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  for (const char* file : kFiles) unlinkat(folder, file, 0);
  rmdir(g_folder.data());
  raise(signal);  // its own way again, once this handler has ended
}

/// Signals that are ignored stay so, as under nohup.
void OnInterruption(void (*from)(int), void (*to)(int)) {
  for (const int signal : kInterruptions) {
    struct sigaction action = {};
    sigaction(signal, nullptr, &action);
    if (action.sa_handler != from) continue;
    action.sa_handler = to;
    action.sa_flags = to == SIG_DFL ? 0 : SA_RESETHAND;
    sigaction(signal, &action, nullptr);
  }
}

}  // namespace

ScratchFolder::ScratchFolder() {
  std::error_code error;
  std::string name = (std::filesystem::temp_directory_path(error) / "orxdb-XXXXXX").string();
  if (error) throw HostError("The folder for temporary files: " + error.message() + '.');
  if (name.size() >= g_folder.size() || !mkdtemp(name.data())) {
    throw HostError("There is no room for temporary files: " + std::string(std::strerror(errno)) +
                    '.');
  }
  m_path = name;
  name.copy(g_folder.data(), name.size());
  g_folder[name.size()] = '\0';
  OnInterruption(SIG_DFL, RemoveAndEnd);
}

ScratchFolder::~ScratchFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(m_path, ignored);
  OnInterruption(RemoveAndEnd, SIG_DFL);
}

}  // namespace orxdb
