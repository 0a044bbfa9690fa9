// Database files that are copied, checked and replaced.
#include <sqlite3.h>
#include <system_error>

#include "database/engine/Connection.h"
#include "database/engine/DatabaseFile.h"
#include "database/engine/NetworkFolder.h"
#include "database/engine/PlainHandle.h"
#include "platform/framework/FileUse.h"
#include "platform/framework/NewFile.h"

namespace orxdb {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void Raise(const std::string& message, DaoError error = DaoError::Engine) {
  throw CDaoException(error, message);
}

/// Runs work on files, whose errors then are the database's.
template <typename Work>
auto OnFiles(Work&& work) {
  try {
    return work();
  } catch (const fs::filesystem_error& error) {
    Raise(error.path1().string() + ": " + error.code().message());
  }
}

/// Gives a database a second name, or where there are no such links another one, and takes what
/// belongs to it there.
void Keep(const fs::path& file, const fs::path& kept) {
  if (fs::exists(kept)) Raise(kept.string() + " is there already");
  std::error_code error;
  fs::create_hard_link(file, kept, error);
  if (error) fs::rename(file, kept);
  for (const char* suffix : {"-wal", "-journal"}) {
    if (fs::exists(file.string() + suffix)) {
      fs::rename(file.string() + suffix, kept.string() + suffix);
    }
  }
}

/// Removes what a database has beside its file: the log of another file of this name must never be
/// taken for one of the file that comes.
void RemoveRemains(const fs::path& file) {
  for (const char* suffix : {"-wal", "-shm", "-journal"}) {
    std::error_code error;
    fs::remove(file.string() + suffix, error);
    if (error) Raise(error.message());
  }
}

}  // namespace

void CopyDatabase(const fs::path& source, const fs::path& target) {
  const auto from = Connection::Open(source, false, true);
  const PlainHandle to = OpenPlain(target, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
  // Nobody sees the copy before it is whole.
  Run(to.get(), "PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF");
  sqlite3_backup* backup = sqlite3_backup_init(to.get(), "main", from->Handle(), "main");
  // A database that is in use is told by the step alone.
  const int copied = backup ? sqlite3_backup_step(backup, -1) : sqlite3_errcode(to.get());
  const int ended = sqlite3_backup_finish(backup);
  if (copied != SQLITE_DONE || ended != SQLITE_OK) {
    const int status = copied != SQLITE_DONE ? copied : ended;
    Raise(PlainWords(status, sqlite3_errstr(status)));
  }
}

void CheckDatabase(const fs::path& file) {
  const PlainHandle database = OpenPlain(file, SQLITE_OPEN_READONLY);
  std::string answer;
  Run(database.get(), "PRAGMA integrity_check(1)", &answer);
  if (answer != "ok") Raise("the database is damaged (" + answer + ")");
}

Journal JournalOf(const fs::path& file) {
  if (!fs::exists(file)) return NetworkOf(file).empty() ? Journal::Log : Journal::Rollback;
  const PlainHandle database = OpenPlain(file, SQLITE_OPEN_READONLY);
  return HeaderSaysLog(database.get()) ? Journal::Log : Journal::Rollback;
}

void SetJournal(const fs::path& file, Journal journal) {
  const bool log = journal == Journal::Log;
  const std::string network = log ? NetworkOf(file) : "";
  if (!network.empty()) {
    Raise("a database cannot have a log in a network folder (" + network + ")");
  }
  const PlainHandle database = OpenPlain(file, SQLITE_OPEN_READWRITE);
  std::string mode;
  // Alone with the file, the engine needs no memory that it shares with others.
  Run(database.get(), "PRAGMA locking_mode = EXCLUSIVE");
  Run(database.get(), log ? "PRAGMA journal_mode = WAL" : "PRAGMA journal_mode = DELETE", &mode);
  if ((mode == "wal") != log) Raise("another program has it open", DaoError::Busy);
}

void BackUpDatabase(const fs::path& source, const fs::path& target, bool replace) {
  OnFiles([&] {
    if (fs::exists(target)) {
      if (!replace) Raise(target.string() + " is there already");
      RequireUnused(target, true);
    }
    NewFile copy(target);
    CopyDatabase(source, copy.Path());
    SetJournal(copy.Path(), Journal::Rollback);
    CheckDatabase(copy.Path());
    copy.Store();
    RemoveRemains(target);
    copy.TakeName(replace);
  });
}

void RequireUnused(const fs::path& file, bool certain) {
  if (IsOpenHere(file)) Raise("this program has it open", DaoError::Busy);
  const FileUse use = NetworkOf(file).empty() ? UseOf(file) : FileUse::Unknown;
  if (use == FileUse::Open) Raise("another program has it open", DaoError::Busy);
  const PlainHandle database = OpenPlain(file, SQLITE_OPEN_READWRITE);
  const bool log = HeaderSaysLog(database.get());
  // A file that is no database, or a damaged one, has no locks to tell anything.
  const int locked =
      TryRun(database.get(), "PRAGMA locking_mode = EXCLUSIVE; BEGIN EXCLUSIVE; COMMIT");
  if ((locked & 0xff) == SQLITE_BUSY) Raise("another program has it open", DaoError::Busy);
  if (use == FileUse::Unknown && !(log && locked == SQLITE_OK) && !certain) {
    Raise("nobody can tell here whether other programs have it open", DaoError::Busy);
  }
}

void ReplaceDatabase(const fs::path& file, const fs::path& fresh, const fs::path& kept,
                     bool certain) {
  OnFiles([&] {
    if (fs::exists(file)) {
      RequireUnused(file, certain);
      if (!kept.empty()) Keep(file, kept);
    }
    RemoveRemains(file);
    fs::rename(fresh, file);
    StoreFolder(file.parent_path());
  });
}

}  // namespace orxdb
