#pragma once

#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

#include "database/engine/Statement.h"

namespace orxdb {

/// The prepared statements used last, by their text.
class StatementCache {
 public:
  /// The statement of that text, from now on the one used last; null when there is none.
  Statement* Find(const std::string& sql) noexcept;
  /// Keeps a statement, and drops the one not used for longest where there are too many.
  Statement& Keep(const std::string& sql, std::unique_ptr<Statement> statement);
  void Clear() noexcept;

 private:
  struct Entry {
    std::string sql;
    std::unique_ptr<Statement> statement;
  };

  std::list<Entry> m_entries;  ///< last used first
  std::unordered_map<std::string_view, std::list<Entry>::iterator> m_index;
};

}  // namespace orxdb
