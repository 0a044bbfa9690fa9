#pragma once

#include <filesystem>
#include <memory>
#include <string>

struct sqlite3;

namespace orxdb {

struct ClosePlainHandle {
  void operator()(sqlite3* database) const;
};

/// A file without what a library's connection has, for work on files that are no libraries yet, or
/// no longer.
using PlainHandle = std::unique_ptr<sqlite3, ClosePlainHandle>;

/// Null memory aside there is a handle to ask why, also when the file could not be opened.
PlainHandle TryOpenPlain(const std::filesystem::path& file, int flags, int& status);
/// Raises CDaoException.
PlainHandle OpenPlain(const std::filesystem::path& file, int flags);

/// Runs statements and gives the engine's status; the last value of the last row goes to `value`.
int TryRun(sqlite3* database, const char* sql, std::string* value = nullptr);
/// The same, but raises CDaoException for a failure.
void Run(sqlite3* database, const char* sql, std::string* value = nullptr);

}  // namespace orxdb
