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
/// databases have: full synchronisation and, but for network folders, a write-ahead log. Raises
/// CDaoException.
void BuildDatabase(const std::filesystem::path& file, std::span<const BuildScript> scripts,
                   PictureSource pictures);

/// Copies a database as it is at one moment, whoever uses it meanwhile, to a file that nobody else
/// uses. Raises CDaoException.
void CopyDatabase(const std::filesystem::path& source, const std::filesystem::path& target);

/// Reads all of a database and raises CDaoException for the first thing that is not in order.
void CheckDatabase(const std::filesystem::path& file);

/// How a database takes unfinished changes back: by a journal of what was there before, which is
/// beside the file while somebody changes it, or by a log of what is to come.
enum class Journal { Rollback, Log };

/// The journal of a database; of one that is not there, what a new one would have.
Journal JournalOf(const std::filesystem::path& file);

/// Gives a database that nobody else uses just now another journal. Raises CDaoException, also for
/// a log in a network folder.
void SetJournal(const std::filesystem::path& file, Journal journal);

/// Gives a copy of a database, checked, its name only when it is whole. A file of that name is
/// replaced if `replace` says so and nobody is seen to have it open, and raises CDaoException else.
void BackUpDatabase(const std::filesystem::path& source, const std::filesystem::path& target,
                    bool replace);

/// Raises CDaoException (`Busy`) when anybody has the database open, in this process or another,
/// and, unless `certain`, when nobody can tell. What is only in its log comes into the file.
///
/// A program that has a file with a log open holds a lock on it; one without a log shows in nothing
/// but that the file is open, which systems tell of local files to their owners.
void RequireUnused(const std::filesystem::path& file, bool certain);

/// Gives a finished new database the name of one that nobody has open, as RequireUnused tells. What
/// was there, if anything, is kept under the name `kept` with all that belongs to it, or, when that
/// is empty, lost. Raises CDaoException; the old one is then still in its place.
void ReplaceDatabase(const std::filesystem::path& file, const std::filesystem::path& fresh,
                     const std::filesystem::path& kept, bool certain);

/// What a file is, without waiting for others.
DatabaseFileState StateOfFile(const std::filesystem::path& file);

}  // namespace orxdb
