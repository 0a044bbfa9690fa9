#pragma once

#include <memory>
#include <string>

namespace orxdb {
class Connection;
}

/// One database file, closed by the destructor.
///
/// Every failing operation raises `CDaoException`.
class CDaoDatabase {
 public:
  CDaoDatabase() = default;
  ~CDaoDatabase();
  CDaoDatabase(const CDaoDatabase&) = delete;
  CDaoDatabase& operator=(const CDaoDatabase&) = delete;

  /// Opens an existing file (either path separator) and reads its header and schema, so that an
  /// unusable file counts as not opened. A file that cannot be written opens for reading; writes
  /// then raise. `connect` must be empty.
  void Open(const std::string& path, bool exclusive = false, bool readOnly = false,
            const std::string& connect = {});
  bool IsOpen() const noexcept;
  /// Whether the open database supports transactions.
  bool CanTransact() const;
  /// A number that changes with every commit, by this connection or any other; it may change
  /// without one.
  double ChangeNumber() const;
  /// Begins a group of changes: until its end they are seen here alone, and other writers wait.
  /// Raises `Busy` when others hold the file for too long, and when a group is open already.
  void BeginChanges();
  /// Stores the group in one go. Raises when that fails, or when the database had to take all of it
  /// back before (no space, a failing disk); nothing of it is stored then. The group is over in any
  /// case. Raises without a group.
  void EndChanges();
  /// Takes the group back: the database is as it was before. Keys of records added in it are given
  /// out again by no recordset here as long as the database is open. Raises without a group.
  void CancelChanges();
  /// Whether a group of changes is open. Closing the database cancels it.
  bool IsChanging() const noexcept;
  /// Whether the database had to take the open group back: it can only be cancelled.
  bool HasLostChanges() const noexcept;

  /// Gives a whole copy of the database, checked, the name of a file (either path separator) as it
  /// was at one moment, whoever writes meanwhile; an open group of changes is not in it. Another
  /// file of that name raises, unless it may be replaced and nobody has it open.
  void BackUp(const std::string& file, bool replace) const;

  /// Closes the file; recordsets still open on it raise from then on. Closing twice is harmless.
  void Close() noexcept;

  /// The open connection; raises when the database is closed.
  const std::shared_ptr<orxdb::Connection>& GetConnection() const;

 private:
  std::shared_ptr<orxdb::Connection> m_connection;
};

/// Shuts the database engine down for the whole process: every connection is closed, also those
/// of abandoned objects; operations on them raise afterwards.
void AfxDaoTerm() noexcept;
