// A file that is there whole or not at all.
#pragma once

#include <filesystem>
#include <functional>

namespace orxdb {

/// Has `write` fill a new file, given its path, which then gets the name `target`. Throws
/// HostError, also when there is a file of that name already, unless it may be replaced; the
/// message for that is completed by `loss`, what replacing it costs. `beforeNaming` runs when all
/// of the new file is on the disk, just before it takes the place of the old one.
void WriteNewFile(
    const std::filesystem::path& target, bool replace, const char* loss,
    const std::function<void(const std::filesystem::path&)>& write,
    const std::function<void()>& beforeNaming = [] {});

}  // namespace orxdb
