#pragma once

#include <cstdint>
#include <string>
#include <type_traits>

#include "benchmarks/BenchDatabase.h"

/// A query that gives one row, run again and again.
class PlainQuery {
 public:
  PlainQuery(sqlite3* database, const std::string& sql) : m_statement(Prepare(database, sql)) {}

  /// Binds the parameters and steps; `use` sees the row, if there is one.
  template <typename Use, typename... Values>
  std::int64_t operator()(Use&& use, const Values&... values) {
    sqlite3_stmt* statement = m_statement.get();
    int place = 0;
    (Bind(++place, values), ...);
    std::int64_t result = 0;
    if (sqlite3_step(statement) == SQLITE_ROW) result = use(statement);
    sqlite3_reset(statement);
    return result;
  }

 private:
  template <typename Value>
  void Bind(int place, const Value& value) {
    if constexpr (std::is_integral_v<Value>) {
      sqlite3_bind_int64(m_statement.get(), place, value);
    } else if constexpr (std::is_floating_point_v<Value>) {
      sqlite3_bind_double(m_statement.get(), place, value);
    } else {
      sqlite3_bind_text(m_statement.get(), place, value.c_str(), -1, SQLITE_TRANSIENT);
    }
  }

  PlainStatement m_statement;
};
