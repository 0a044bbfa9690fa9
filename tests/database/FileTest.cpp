// Files that are missing, damaged, in use or used by others.
#include <fstream>
#include <random>
#include <thread>

#include "tests/database/RecordsetFixture.h"

namespace orxdb {
namespace {

class FileTest : public RecordsetFixture {
 protected:
  void Write(const std::string& name, const std::string& bytes) const {
    std::ofstream(Path(name), std::ios::binary) << bytes;
  }
  /// Opens a file and walks it; true when nothing was raised.
  bool Walk(const std::string& path) {
    try {
      CDaoDatabase database;
      database.Open(path);
      CDaoQueryDef query(&database);
      query.Open("Q_MILL");
      CDaoRecordset mills;
      mills.Open(&query);
      std::vector<VARIANT> values(static_cast<std::size_t>(mills.GetFieldCount()));
      for (; !mills.IsEOF(); mills.MoveNext()) {
        try {
          mills.GetFieldValues(values);
        } catch (const CDaoException&) {
        }
        for (VARIANT& value : values) VariantClear(&value);
      }
      return true;
    } catch (const CDaoException&) {
      return false;
    }
  }
};

TEST_F(FileTest, OnlyDatabasesOpen) {
  std::filesystem::create_directory(Path("folder"));
  Write("empty", "");
  Write("text", std::string(5000, 'x'));
  CDaoDatabase database;
  for (const std::string& path : {std::string(), std::string("/nowhere/tools.mdb"), Path("missing"),
                                  Path("folder"), Path("empty"), Path("text")}) {
    EXPECT_THROW(database.Open(path), CDaoException) << path;
    EXPECT_FALSE(database.IsOpen());
  }
  std::string backslashes = Path();
  std::replace(backslashes.begin(), backslashes.end(), '/', '\\');
  database.Open(backslashes);
  EXPECT_TRUE(database.IsOpen());
}

TEST_F(FileTest, DamagedFilesRaiseOrRead) {
  for (int i = 0; i < 60; ++i) {
    Execute("INSERT INTO MILL (Name, D, Coating) VALUES ('tool with a longer name', 1, 2)");
  }
  Execute("PRAGMA journal_mode = DELETE");
  m_other.reset();
  std::ifstream file(Path(), std::ios::binary);
  const std::string whole{std::istreambuf_iterator<char>(file), {}};
  EXPECT_TRUE(Walk(Path()));
  std::mt19937 random(5);
  int damaged = 0;
  for (int i = 0; i < 150; ++i) {
    std::string bytes = whole;
    for (int flips = 0; flips < 8; ++flips) {
      bytes[random() % bytes.size()] = static_cast<char>(random());
    }
    if (i % 5 == 0) bytes.resize(random() % bytes.size());
    Write("damaged.mdb", bytes);
    if (!Walk(Path("damaged.mdb"))) ++damaged;
  }
  EXPECT_GT(damaged, 20);
}

TEST_F(FileTest, EndOfTheEngineClosesEverything) {
  Execute("INSERT INTO MILL (Name) VALUES ('a')");
  const auto mills = Open("Q_MILL");
  const auto copy = Open("Q_MILL", dbOpenSnapshot);
  EXPECT_TRUE(copy->FindFirst("Name = 'a'"));
  mills->Edit();
  AfxDaoTerm();
  EXPECT_FALSE(m_database.IsOpen());
  for (CDaoRecordset* records : {mills.get(), copy.get()}) {
    EXPECT_EQ(ErrorOf([&] { records->MoveFirst(); }), DaoError::Closed);
    EXPECT_EQ(ErrorOf([&] { records->FindFirst("ID = 1"); }), DaoError::Closed);
    EXPECT_EQ(ErrorOf([&] { records->GetFieldValue(0); }), DaoError::Closed);
    EXPECT_EQ(ErrorOf([&] { records->IsEOF(); }), DaoError::Closed);
    EXPECT_EQ(ErrorOf([&] { records->Requery(); }), DaoError::Closed);
  }
  EXPECT_THROW(mills->Update(), CDaoException);
  mills->Close();
  EXPECT_EQ(Show(Open("Q_MILL")->GetFieldValue("Name")), "'a'");
}

TEST_F(FileTest, BusyFileRaisesAfterAWhileAndLosesNothing) {
  Execute("INSERT INTO MILL (Name) VALUES ('a')");
  const auto mills = Open("SELECT * FROM MILL");
  mills->Edit();
  mills->SetFieldValue("Name", Text("b").get());
  Execute("BEGIN IMMEDIATE");
  EXPECT_EQ(ErrorOf([&] { mills->Update(); }), DaoError::Busy);
  Execute("COMMIT");
  mills->Update();
  EXPECT_EQ(Ask("SELECT Name FROM MILL"), "b");
}

TEST_F(FileTest, ReadersSeeWholeRowsWhileAnotherWrites) {
  for (const char* mode : {"WAL", "DELETE"}) {
    m_database.Close();
    Execute("DELETE FROM MILL; PRAGMA journal_mode = " + std::string(mode));
    Execute(
        "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 300)"
        " INSERT INTO MILL (Name, D, [Rake #]) SELECT 0, 0, 0 FROM n");
    const auto mills = Open("Q_MILL");
    std::jthread writer([&](const std::stop_token& stop) {
      for (int i = 1; !stop.stop_requested(); ++i) {
        std::string sql =
            "UPDATE MILL SET (Name, D, [Rake #]) = (SELECT #, #, #) WHERE ID % 7 = 3;"
            "INSERT INTO MILL (Name) VALUES ('late')";
        for (std::size_t at = sql.find('#', 35); at != std::string::npos; at = sql.find('#', at)) {
          sql.replace(at, 1, std::to_string(i));
        }
        sqlite3_exec(Other(), sql.c_str(), nullptr, nullptr, nullptr);
        // Without a log nobody reads while somebody writes: leave the readers a moment.
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
      }
    });
    std::vector<VARIANT> values(static_cast<std::size_t>(mills->GetFieldCount()));
    for (int walk = 0; walk < 5; ++walk) {
      int count = 0;
      for (mills->MoveFirst(); !mills->IsEOF(); mills->MoveNext(), ++count) {
        mills->GetFieldValues(values);
        ASSERT_EQ(Bytes(values[1].bstrVal), std::to_string(values[7].lVal));
        ASSERT_EQ(values[2].dblVal, values[7].lVal);
        for (VARIANT& value : values) VariantClear(&value);
      }
      ASSERT_EQ(count, 300) << mode;
    }
  }
}

TEST_F(FileTest, ValuesAreFreshAfterCommitsElsewhere) {
  for (const char* mode : {"WAL", "DELETE", "WAL"}) {
    Execute("DELETE FROM MILL; INSERT INTO MILL (Name, D) VALUES ('a', 0), ('b', 0)");
    m_database.Close();
    Execute("PRAGMA journal_mode = " + std::string(mode));
    const auto mills = Open("Q_MILL");
    for (int i = 0; i < 20; ++i) {
      // The log may come while the file is open.
      if (i == 10) Execute("PRAGMA journal_mode = WAL");
      Execute("UPDATE MILL SET D = " + std::to_string(i));
      EXPECT_EQ(Show(mills->GetFieldValue("D")), std::to_string(i)) << mode;
    }
  }
}

}  // namespace
}  // namespace orxdb
