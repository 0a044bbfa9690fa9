// What is read, by the published file format. The log's shared index begins with this header; its
// numbers are in the machine's byte order:
//
//   offset  bytes  meaning
//        0      4  version of the format
//        4      4  unused
//        8      4  counts the commits
//       12      1  1 when the header is filled in
//       13      1  byte order of the checksums
//       14      2  page size
//       16      4  number of the last valid frame of the log
//       20      4  size of the database in pages
//       24      8  checksum of the last valid frame
//       32      8  salts of the log
//       40      8  checksum of this header
//
// The database file begins with a header of which this is read; its numbers are big-endian:
//
//       16      2  page size
//       18      1  write version: 1 for a rollback journal, 2 for a write-ahead log
//       19      1  read version, the same
//       20      4  bytes kept free on a page, and how full pages are
//       24      4  counts the commits made without a log
#pragma once

#include <array>
#include <cstdint>

struct sqlite3;
struct sqlite3_file;

namespace orxdb {

/// Sees commits to a database file, by whichever process, without asking SQLite: that would cost
/// several file locks for every record that is looked at.
///
/// With a write-ahead log every commit rewrites the header of the log's shared index; without one
/// every commit counts on in the file's own header. Both are only compared with what they were, so
/// it does no harm to read them half written: the rows themselves are always read under SQLite's
/// locks, after the look.
class CommitWatch {
 public:
  CommitWatch() = default;
  /// Watches the main file of a connection. With `writeAheadLog`, the connection must have read
  /// from the file already, so that SQLite keeps the log's index mapped. Counts on from `commits`.
  CommitWatch(sqlite3* database, bool writeAheadLog, std::int64_t commits) noexcept;

  /// A number that changes with every commit; it may change without one.
  std::int64_t Commits() noexcept;
  /// Another process gave the file a log; it takes another watch to follow it.
  bool LogAppeared() const noexcept { return m_logAppeared; }

 private:
  static constexpr std::size_t kIndexHeaderWords = 48 / sizeof(std::uint32_t);
  static constexpr std::size_t kFileHeaderWords = 12 / sizeof(std::uint32_t);

  bool LogChanged() noexcept;
  bool FileChanged() noexcept;

  sqlite3_file* m_file = nullptr;
  const volatile std::uint32_t* m_logHeader = nullptr;  ///< mapped as long as the connection lives
  std::array<std::uint32_t, kIndexHeaderWords> m_seen{};
  std::int64_t m_commits = 0;
  bool m_logAppeared = false;
};

}  // namespace orxdb
