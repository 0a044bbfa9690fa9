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
