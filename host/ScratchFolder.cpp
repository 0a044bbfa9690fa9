#include "host/ScratchFolder.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "host/HostError.h"

namespace orxdb {

ScratchFolder::ScratchFolder() {
  std::error_code error;
  std::string name = (std::filesystem::temp_directory_path(error) / "orxdb-XXXXXX").string();
  if (!mkdtemp(name.data())) {
    throw HostError("There is no room for temporary files: " + std::string(std::strerror(errno)) +
                    '.');
  }
  m_path = name;
}

ScratchFolder::~ScratchFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(m_path, ignored);
}

}  // namespace orxdb
