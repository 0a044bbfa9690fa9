// Exchange files added to the tools that are there. The component does not tell what became of
// their lines; that is found out here.
#pragma once

#include <string>

#include "host/library/Answer.h"

namespace orxdb {

/// Imports a file into the database of that name (the default one for none), and tells the numbers
/// of its lines by what became of them; complains unless all its tools are then in the table.
/// Throws HostError.
Answer ImportFile(const std::string& database, const std::string& file, const Progress& progress);

/// The same on a copy of the database, which stays as it is.
Answer TryImport(const std::string& database, const std::string& file, const Progress& progress);

}  // namespace orxdb
