#include "host/library/Versions.h"

#include <algorithm>

#include "host/library/Component.h"
#include "platform/framework/Library.h"
#include "platform/framework/VersionRecord.h"

namespace orxdb {

std::vector<LibraryVersion> LoadedVersions() {
  const ComPtr<IOrxDbObj> component = CreateComponent();
  std::vector<LibraryVersion> versions;
  for (const std::string& path : Library::LoadedPaths()) {
    const std::optional<VersionRecord> record = ReadVersionRecord(path);
    if (!record) continue;
    const auto place = record->internalName == "ORXDB" ? versions.begin() : versions.end();
    versions.insert(place, {record->fileDescription, record->fileVersion, path});
  }
  return versions;
}

}  // namespace orxdb
