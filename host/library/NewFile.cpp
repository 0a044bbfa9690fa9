#include "host/library/NewFile.h"

#include <string>

#include "host/library/HostError.h"
#include "platform/framework/NewFile.h"

namespace orxdb {

void WriteNewFile(const std::filesystem::path& target, bool replace, const char* loss,
                  const std::function<void(const std::filesystem::path&)>& write,
                  const std::function<void(const std::filesystem::path&)>& name) {
  const std::string text = target.string();
  const auto refuseIt = [&] {
    throw HostError(text + " is there already; --force replaces it" + loss + '.');
  };
  std::error_code error;
  if (std::filesystem::is_directory(target, error)) throw HostError(text + " is a folder.");
  if (std::filesystem::exists(target, error)) {
    if (!std::filesystem::is_regular_file(target, error)) throw HostError(text + " is no file.");
    if (!replace) refuseIt();
  }
  try {
    NewFile building(target);
    write(building.Path());
    building.Store();
    name ? name(building.Path()) : building.TakeName(replace);
  } catch (const std::filesystem::filesystem_error& e) {
    if (e.code() == std::errc::file_exists) refuseIt();
    throw HostError(text + " cannot be created: " + e.code().message() + '.');
  }
}

}  // namespace orxdb
