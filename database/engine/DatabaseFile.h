// A database file as a whole, apart from the connections that are open.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "interface/IToolDatabaseFile.h"

namespace orxdb {

/// A script that makes a part of a new database; `name` is for messages.
struct BuildScript {
  std::string_view name;
  std::string_view sql;
};

/// Gives the bytes that the SQL function picture(name) stands for in scripts; nothing for a name
/// without any, which ends the script.
using PictureSource = std::optional<std::string_view> (*)(std::string_view name);

/// Makes a new database by scripts, all in one transaction, and leaves it in the mode that new
/// databases have: a write-ahead log and full synchronisation. Raises CDaoException.
void BuildDatabase(const std::filesystem::path& file, std::span<const BuildScript> scripts,
                   PictureSource pictures);

/// Copies a database as it is at one moment, whoever uses it meanwhile. Raises CDaoException.
void CopyDatabase(const std::filesystem::path& source, const std::filesystem::path& target);

/// Removes the log, and what else a database has beside its file. Raises CDaoException.
void RemoveDatabaseRemains(const std::filesystem::path& file);

/// What a file is, without waiting for others.
DatabaseFileState StateOfFile(const std::filesystem::path& file);

}  // namespace orxdb
