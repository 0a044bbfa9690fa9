// The reader of class files. An input is a file's text.
#include <cstdint>
#include <cstdlib>

#include "platform/automation/ClassFiles.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const std::optional<orxdb::ClassFile> file = orxdb::ParseClassFile(text);
  if (file && (file->library.empty() || text.find(file->library) == text.npos)) std::abort();
  return 0;
}
