#include "platform/framework/FileUse.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace orxdb {

FileUse UseOf(const std::filesystem::path& file) noexcept {
  const int descriptor = open(file.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) return FileUse::Unknown;
  // A lease for writing is given to the only one who has the file open. Whoever opens it in the
  // short time that the lease is held waits, and a signal tells us of him: one that nobody minds,
  // since the usual one would end the process.
  FileUse use = FileUse::Unknown;
  if (fcntl(descriptor, F_SETSIG, SIGURG) == 0) {
    if (fcntl(descriptor, F_SETLEASE, F_WRLCK) == 0) {
      use = FileUse::Unused;
      fcntl(descriptor, F_SETLEASE, F_UNLCK);
    } else if (errno == EAGAIN) {
      use = FileUse::Open;
    }
  }
  close(descriptor);
  return use;
}

}  // namespace orxdb
