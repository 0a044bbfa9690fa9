#pragma once

#include <array>
#include <cstdint>
#include <sqlite3.h>

namespace orxdb {

/// Sees commits to a database file, by whichever process, without asking SQLite: that would cost
/// several file locks for every record that is looked at.
///
/// With a write-ahead log every commit rewrites the header of the log's shared index; without one
/// every commit counts on in the file's own header. Places and sizes are part of the published
/// file format. Both are only compared with what they were, so it does no harm to read them half
/// written: the rows themselves are always read under SQLite's locks, after the look.
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
  static constexpr std::size_t kIndexHeaderWords = 12;
  static constexpr std::size_t kFileHeaderWords = 3;

  bool LogChanged() noexcept;
  bool FileChanged() noexcept;

  sqlite3_file* m_file = nullptr;
  const volatile std::uint32_t* m_logHeader = nullptr;  ///< mapped as long as the connection lives
  std::array<std::uint32_t, kIndexHeaderWords> m_seen{};
  std::int64_t m_commits = 0;
  bool m_logAppeared = false;
};

}  // namespace orxdb
