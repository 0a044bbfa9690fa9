// A database file as another program works with it: by SQLite itself.
#pragma once

#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <sqlite3.h>
#include <string>

namespace orxdb::test {

class OtherProgram {
 public:
  explicit OtherProgram(const std::filesystem::path& file) {
    sqlite3* opened = nullptr;
    EXPECT_EQ(sqlite3_open(file.c_str(), &opened), SQLITE_OK);
    m_database.reset(opened);
    sqlite3_busy_timeout(opened, 5000);
    Ask("PRAGMA synchronous = OFF");
  }

  sqlite3* Handle() const { return m_database.get(); }
  void Execute(const std::string& sql) { Ask(sql); }

  /// The first column of all rows, null as "NULL", parted by "|". Errors are test failures.
  std::string Ask(const std::string& sql) {
    std::string rows;
    char* message = nullptr;
    const auto append = [](void* text, int, char** values, char**) {
      auto& all = *static_cast<std::string*>(text);
      if (!all.empty()) all += '|';
      all += values[0] ? values[0] : "NULL";
      return 0;
    };
    EXPECT_EQ(sqlite3_exec(Handle(), sql.c_str(), append, &rows, &message), SQLITE_OK) << message;
    sqlite3_free(message);
    return rows;
  }

 private:
  struct Closer {
    void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
  };
  std::unique_ptr<sqlite3, Closer> m_database;
};

/// The same for one text.
inline std::string QueryRows(const std::filesystem::path& file, const std::string& sql) {
  return OtherProgram(file).Ask(sql);
}

}  // namespace orxdb::test
