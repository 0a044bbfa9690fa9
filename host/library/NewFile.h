// A file that is there whole or not at all.
#pragma once

#include <filesystem>
#include <functional>

namespace orxdb {

/// Has `write` fill a new file, given its path, which then gets the name `target`, by `name` if
/// that is given. Throws HostError, also when there is a file of that name already, unless it may
/// be replaced; the message for that is completed by `loss`, what replacing it costs.
void WriteNewFile(const std::filesystem::path& target, bool replace, const char* loss,
                  const std::function<void(const std::filesystem::path&)>& write,
                  const std::function<void(const std::filesystem::path&)>& name = {});

}  // namespace orxdb
