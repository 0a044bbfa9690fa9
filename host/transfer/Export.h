// Tools written as exchange files. The component does not tell whether a file could be written;
// that is found out here.
#pragma once

#include <filesystem>
#include <string>

#include "host/library/Answer.h"
#include "host/library/ToolDatabase.h"

namespace orxdb {

/// Writes the tools of a table as a file, whole or not at all; a file that is there is replaced. A
/// device or pipe gets the finished file. The answer tells how many tools, and remarks on what an
/// import will not take. Throws HostError.
Answer ExportTable(ToolDatabase& database, const std::string& table,
                   const std::filesystem::path& target, const Progress& progress);

/// Writes every table to FOLDER/TABLE.txt; the folder is made. A table that cannot be written ends
/// it with a complaint.
Answer ExportAll(ToolDatabase& database, const std::filesystem::path& folder,
                 const Progress& progress);

}  // namespace orxdb
