#include "database/engine/StatementCache.h"

#include <utility>

namespace orxdb {
namespace {

constexpr std::size_t kMostEntries = 256;

}  // namespace

Statement* StatementCache::Find(const std::string& sql) noexcept {
  const auto found = m_index.find(sql);
  if (found == m_index.end()) return nullptr;
  m_entries.splice(m_entries.begin(), m_entries, found->second);
  return m_entries.front().statement.get();
}

Statement& StatementCache::Keep(const std::string& sql, std::unique_ptr<Statement> statement) {
  if (m_entries.size() >= kMostEntries) {
    m_index.erase(m_entries.back().sql);
    m_entries.pop_back();
  }
  m_entries.push_front({sql, std::move(statement)});
  m_index.emplace(m_entries.front().sql, m_entries.begin());
  return *m_entries.front().statement;
}

void StatementCache::Clear() noexcept {
  m_index.clear();
  m_entries.clear();
}

}  // namespace orxdb
