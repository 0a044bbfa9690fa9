#pragma once

#include <string>
#include <vector>

namespace orxdb {

/// What a library says about itself.
struct LibraryVersion {
  std::string description;
  std::string version;
  std::string file;
};

/// The libraries with a version record that this program uses, the component's first, which is
/// loaded for it. Throws HostError without a component.
std::vector<LibraryVersion> LoadedVersions();

}  // namespace orxdb
