#include "database/engine/CommitWatch.h"

#include <sqlite3.h>

namespace orxdb {
namespace {

constexpr int kIndexRegion = 32 * 1024;
constexpr sqlite3_int64 kFileHeaderOffset = 16;
constexpr std::size_t kWriteVersion = 18 - kFileHeaderOffset;
constexpr unsigned char kWithLog = 2;

}  // namespace

CommitWatch::CommitWatch(sqlite3* database, bool writeAheadLog, std::int64_t commits) noexcept
    : m_commits(commits) {
  sqlite3_file_control(database, "main", SQLITE_FCNTL_FILE_POINTER, &m_file);
  if (!writeAheadLog || m_file == nullptr || m_file->pMethods == nullptr ||
      m_file->pMethods->iVersion < 2) {
    return;
  }
  void volatile* region = nullptr;
  if (m_file->pMethods->xShmMap(m_file, 0, kIndexRegion, 0, &region) == SQLITE_OK) {
    m_logHeader = static_cast<const volatile std::uint32_t*>(region);
  }
}

std::int64_t CommitWatch::Commits() noexcept {
  if (m_logHeader != nullptr ? LogChanged() : FileChanged()) ++m_commits;
  return m_commits;
}

bool CommitWatch::LogChanged() noexcept {
  bool changed = false;
  for (std::size_t i = 0; i < kIndexHeaderWords; ++i) {
    const std::uint32_t word = m_logHeader[i];
    changed = changed || word != m_seen[i];
    m_seen[i] = word;
  }
  return changed;
}

bool CommitWatch::FileChanged() noexcept {
  std::array<std::uint32_t, kFileHeaderWords> words{};
  if (m_file == nullptr || m_file->pMethods == nullptr ||
      m_file->pMethods->xRead(m_file, words.data(), sizeof words, kFileHeaderOffset) != SQLITE_OK) {
    return true;
  }
  m_logAppeared = reinterpret_cast<const unsigned char*>(words.data())[kWriteVersion] == kWithLog;
  if (m_logAppeared) return true;
  bool changed = false;
  for (std::size_t i = 0; i < kFileHeaderWords; ++i) {
    changed = changed || words[i] != m_seen[i];
    m_seen[i] = words[i];
  }
  return changed;
}

}  // namespace orxdb
