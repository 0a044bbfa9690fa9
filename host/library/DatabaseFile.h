// The database file seen from outside: where it is by default, making and copying it, and why it
// may be of no use.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace orxdb {

/// The file of people who name none. Of an installed program (one with class files beside its
/// folder) it is orxdb/tools.mdb in the person's data folder; where that is not there, but one
/// beside the program, and of any other program, it is CAM/TOOLS/tools.mdb beside the program's
/// folder, the one that hosts open by default.
std::filesystem::path DefaultDatabase();
/// The file of a name, with either path separator.
std::filesystem::path DatabaseNamed(const std::string& name);

/// How a database takes unfinished changes back, and who else may use its folder.
struct JournalState {
  bool log = false;     ///< a write-ahead log; otherwise a journal that is there during changes
  std::string network;  ///< what serves the folder to other machines too, such as "nfs4"
};

/// Of a database, or of a new one of that name. Throws HostError.
JournalState JournalOf(const std::filesystem::path& file);
/// Gives a database that nobody else uses just now a log, or none. Throws HostError.
void SetJournal(const std::filesystem::path& file, bool log);

/// Creates the database `file` to start from, its folders too, or nothing at all, with the journal
/// that is asked for, or else that of the file that it replaces, or that its folder allows. Throws
/// HostError, also when there is a file already, unless it may be replaced; one that somebody has
/// open is never replaced.
void CreateStarterDatabase(const std::filesystem::path& file, bool replace,
                           std::optional<bool> log = {});

/// Copies a database as it is at one moment, whoever uses it meanwhile. Throws HostError.
void CopyDatabase(const std::filesystem::path& source, const std::filesystem::path& target);

/// Puts a copy of another database, checked, in the place of a database that nobody has open, or of
/// none. What was there is kept under the name `kept`, its
/// kind of journal stays. Throws HostError with everything as it was,
/// also when nobody can tell whether others have the database open, unless the person is `certain`.
void RestoreDatabase(const std::filesystem::path& file, const std::filesystem::path& backup,
                     const std::filesystem::path& kept, bool certain);

/// A sentence on why the component found no tools in the file.
std::string WhyUnusable(const std::filesystem::path& file);

}  // namespace orxdb
