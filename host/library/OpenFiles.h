#pragma once

#include <filesystem>
#include <string>

namespace orxdb {

/// The other programs that have the database file open, as far as the system tells this user:
/// "python3 (process 1234)", parted by commas; empty for none.
std::string ProgramsThatUse(const std::filesystem::path& database);

}  // namespace orxdb
