#include "database/StarterDatabase.h"

#include <algorithm>
#include <vector>

#include "database/engine/DatabaseFile.h"
#include "platform/automation/Ascii.h"
#include "resources/StarterFiles.h"

namespace orxdb {
namespace {

std::optional<std::string_view> PictureOf(std::string_view table) {
  const auto pictures = StarterPictures();
  const auto found = std::ranges::find(pictures, Folded(table), &StarterFile::name);
  return found == pictures.end() ? std::nullopt : std::optional(found->content);
}

}  // namespace

void CreateStarterDatabase(const std::filesystem::path& file) {
  std::vector<BuildScript> scripts;
  for (const auto& [name, content] : StarterScripts()) scripts.push_back({name, content});
  BuildDatabase(file, scripts, PictureOf);
}

}  // namespace orxdb
