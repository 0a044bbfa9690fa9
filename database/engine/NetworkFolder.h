#pragma once

#include <filesystem>
#include <string>

struct sqlite3;

namespace orxdb {

/// What a file's folder is served by ("nfs4") if other machines may use it too; empty for one of
/// this machine. Folders that the environment variable ORXDB_NETWORK_FOLDERS lists, parted by
/// colons, count as such ("shared") although they are of this machine, which serves them to others.
std::string NetworkOf(const std::filesystem::path& file);

/// Whether the header of an open file says that changes go to a log. Nothing is locked for it.
bool HeaderSaysLog(sqlite3* database) noexcept;

/// What serves the folder of an open file that has a log, where it must not have one: a log's index
/// is shared memory, which no two machines have. Empty where all is well, also where nothing can be
/// written, since there is no log either.
std::string NetworkOfLog(sqlite3* database, const std::filesystem::path& file);

}  // namespace orxdb
