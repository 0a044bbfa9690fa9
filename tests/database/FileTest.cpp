// Files that are closed under a recordset, in use, or used by others; queries that take too much.
#include <filesystem>
#include <functional>
#include <thread>

#include "tests/database/RecordsetFixture.h"

namespace orxdb {
namespace {

using FileTest = RecordsetFixture;

/// Adds that many tools of one number each, 0 in all of its fields.
std::string Tools(int count) {
  return "INSERT INTO MILL (Name, D, [Rake #]) WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT"
         " i + 1 FROM n LIMIT " +
         std::to_string(count) + ") SELECT 0, 0, 0 FROM n";
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
    const std::function<void()> works[] = {
        [&] { records->MoveFirst(); }, [&] { records->FindFirst("ID = 1"); },
        [&] { records->GetFieldValue(0); }, [&] { records->IsEOF(); }, [&] { records->Requery(); }};
    for (const auto& work : works) EXPECT_EQ(ErrorOf(work), DaoError::Closed);
  }
  EXPECT_THROW(mills->Update(), CDaoException);
  mills->Close();
  EXPECT_EQ(Values(*Open("Q_MILL"), {"Name"}), "'a'");
}

TEST_F(FileTest, BusyFileIsWaitedForAndThenRaisesAndLosesNothing) {
  Execute("INSERT INTO MILL (Name) VALUES ('a')");
  const auto mills = Open("SELECT * FROM MILL");
  mills->Edit();
  mills->SetFieldValue("Name", Text("b").get());
  Execute("BEGIN IMMEDIATE");
  EXPECT_EQ(ErrorOf([&] { mills->Update(); }), DaoError::Busy);
  {
    const std::jthread other([&] {
      std::this_thread::sleep_for(std::chrono::milliseconds(20));
      Execute("COMMIT");
    });
    mills->Update();
  }
  EXPECT_EQ(Ask("SELECT Name FROM MILL"), "b");
}

TEST_F(FileTest, ReadersSeeWholeRowsWhileAnotherWrites) {
  for (const char* mode : {"WAL", "DELETE"}) {
    m_database.Close();
    Execute("DELETE FROM MILL; PRAGMA journal_mode = " + std::string(mode));
    Execute(Tools(300));
    const auto mills = Open("Q_MILL");
    std::jthread writer([&](const std::stop_token& stop) {
      while (!stop.stop_requested()) {
        Execute(
            "UPDATE MILL SET Name = [Rake #] + 1, D = [Rake #] + 1, [Rake #] = [Rake #] + 1"
            " WHERE ID % 7 = 3; INSERT INTO MILL (Name) VALUES ('late')");
        // Without a log nobody reads while somebody writes: leave the readers a moment.
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
      }
    });
    for (int walk = 0; walk < 5; ++walk) {
      int count = 0;
      for (mills->MoveFirst(); !mills->IsEOF(); mills->MoveNext(), ++count) {
        Variant values[3];
        mills->GetFieldValues(std::array{1, 2, 7}, values);
        const std::string number = Show(values[2]);
        ASSERT_EQ(Show(values[0]) + Show(values[1]), "'" + number + "'" + number);
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

TEST_F(FileTest, FileThatCanHaveNoLogIsReadAsItStands) {
  Execute("INSERT INTO MILL (Name) VALUES ('a'); PRAGMA journal_mode = WAL");
  Execute("PRAGMA wal_checkpoint(TRUNCATE)");
  const std::filesystem::path file = m_folder / "100%41?#.mdb";
  std::filesystem::copy_file(Path(), file);
  std::filesystem::create_directory(file.string() + "-shm");  // in the way of the log's index
  m_database.Close();
  m_database.Open(file.string());
  const auto mills = Open("Q_MILL");
  EXPECT_EQ(Values(*mills, {"Name"}), "'a'");
  EXPECT_EQ(ErrorOf([&] { mills->AddNew(); }), DaoError::ReadOnly);
}

TEST_F(FileTest, StatementsThatTakeTooMuchMemoryRaiseAndLoseNothing) {
  Execute(Tools(330));
  Execute("UPDATE MILL SET Name = replace(hex(zeroblob(250000)), '0', 'a') WHERE ID = 1");
  const auto mills = Open("Q_MILL");
  EXPECT_TRUE(mills->FindFirst("ID = 2"));
  // 330 MB of text, to be kept or to be sorted first.
  const std::string joined =
      "SELECT A.Name & B.Name & C.ID AS X FROM MILL A, MILL B, MILL C WHERE A.ID = 1 AND B.ID = 1";
  for (const char* order : {"", " ORDER BY 1"}) {
    sqlite3_memory_highwater(1);
    EXPECT_EQ(ErrorOf([&] { Open(joined + order); }), DaoError::Engine) << order;
    EXPECT_LT(sqlite3_memory_highwater(0), 300 << 20);
    EXPECT_EQ(Values(*mills, {"ID", "Name"}), "2, '0'");
  }
}

TEST_F(FileTest, FailedUpdateLosesNothingAndCanBeTriedAgain) {
  Execute("CREATE UNIQUE INDEX ONE_NAME ON MILL (Name); INSERT INTO MILL (Name) VALUES ('taken')");
  const auto mills = Open("SELECT * FROM MILL");
  mills->AddNew();
  mills->SetFieldValue("Name", Text("taken").get());
  EXPECT_EQ(ErrorOf([&] { mills->Update(); }), DaoError::Engine);
  mills->SetFieldValue("Name", Text("free").get());
  mills->Update();
  mills->Edit();
  mills->SetFieldValueNull("Flutes");
  EXPECT_EQ(ErrorOf([&] { mills->Update(); }), DaoError::Engine);
  EXPECT_EQ(Ask("SELECT group_concat(Name || Flutes) FROM MILL"), "taken2,free2");
  // A record that went away meanwhile is not brought back.
  mills->Edit();
  mills->SetFieldValue("Name", Text("late").get());
  Execute("DELETE FROM MILL");
  EXPECT_EQ(ErrorOf([&] { mills->Update(); }), DaoError::RecordDeleted);
  EXPECT_EQ(Ask("SELECT count(*) FROM MILL"), "0");
}

}  // namespace
}  // namespace orxdb
