#pragma once

#include <filesystem>

namespace orxdb {

/// Makes the tool database that a shop starts from in a new file. Raises CDaoException; what is
/// then left of the file is the caller's to remove.
void CreateStarterDatabase(const std::filesystem::path& file);

}  // namespace orxdb
