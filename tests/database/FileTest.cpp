// Files that are closed under a recordset, in use, or used by others.
#include <thread>

#include "tests/database/RecordsetFixture.h"

namespace orxdb {
namespace {

class FileTest : public RecordsetFixture {
 protected:
  void Insert(int rows, const std::string& values) {
    Execute("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n LIMIT " +
            std::to_string(rows) + ") INSERT INTO MILL (Name, D, [Rake #]) SELECT " + values +
            " FROM n");
  }
  static constexpr int kFields[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9};
  std::array<Variant, std::size(kFields)> m_values;
};

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
    Insert(300, "0, 0, 0");
    const auto mills = Open("Q_MILL");
    std::jthread writer([&](const std::stop_token& stop) {
      for (int i = 1; !stop.stop_requested(); ++i) {
        const std::string n = std::to_string(i);
        Ask("UPDATE MILL SET Name = " + n + ", D = " + n + ", [Rake #] = " + n +
            " WHERE ID % 7 = 3; INSERT INTO MILL (Name) VALUES ('late')");
        // Without a log nobody reads while somebody writes: leave the readers a moment.
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
      }
    });
    for (int walk = 0; walk < 5; ++walk) {
      int count = 0;
      for (mills->MoveFirst(); !mills->IsEOF(); mills->MoveNext(), ++count) {
        mills->GetFieldValues(kFields, m_values);
        const std::string number = Show(m_values[7]);
        ASSERT_EQ(Show(m_values[1]) + Show(m_values[2]), "'" + number + "'" + number);
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
