// --version: what the program runs with.
#include "host/library/Versions.h"
#include "host/verbs/Commands.h"
#include "host/verbs/Show.h"

namespace orxdb {

void ShowVersions(const Settings& settings) {
  Answer answer({"Library", "Version", "File"});
  for (const auto& [description, version, file] : LoadedVersions()) {
    answer.rows.push_back({Cell::Text(description), Cell::Text(version), Cell::Text(file)});
  }
  Show(settings.format, Shape::Rows, std::move(answer));
}

}  // namespace orxdb
