// Copies of a database that others write to.
#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/component/ComponentFixture.h"

namespace orxdb::test {
namespace {

constexpr int kWriters = 4;

/// Two tools for each writer, and a trigger that notes every state that they ever were in.
constexpr const char* kPairs =
    "WITH n(i) AS (VALUES (1), (2), (3), (4), (5), (6), (7), (8))"
    " INSERT INTO TAP (ID, Name, Diameter) SELECT 100 + i, 'pair ' || i, 0 FROM n;"
    "CREATE VIEW NOW AS SELECT group_concat(Diameter) AS Sizes FROM"
    " (SELECT Diameter FROM TAP WHERE ID > 100 ORDER BY ID);"
    "CREATE TABLE STATES (N INTEGER PRIMARY KEY AUTOINCREMENT, Sizes TEXT);"
    "CREATE TRIGGER NOTES AFTER UPDATE ON TAP WHEN NEW.ID > 100 AND NEW.ID % 2 = 0"
    " BEGIN INSERT INTO STATES (Sizes) SELECT Sizes FROM NOW; END;"
    "INSERT INTO STATES (Sizes) SELECT Sizes FROM NOW;";

class BackUpTest : public ComponentTest {
 protected:
  /// A host that changes its pair of tools, in one group each time, until it is ended.
  [[noreturn]] void Write(int writer) {
    const auto object = NewObject();
    SetMdbFile(*object, m_file);
    const auto library = NewObject<Lib>(CLSID_OrxDbLibrary);
    const Bstr table = WidenToBstr("TAP");
    for (double size = 1;; ++size) {
      if (FAILED(library->BeginChanges())) continue;
      Properties sizes;
      sizes.Add("Diameter", size);
      for (const LONG id : {101 + 2 * writer, 102 + 2 * writer}) {
        object->SetToolProps(table.get(), id, sizes.Names(), sizes.Values());
      }
      library->EndChanges();
      usleep(2000);
    }
  }
};

TEST_F(BackUpTest, EveryCopyIsAStateThatExisted) {
  for (const char* mode : {"WAL", "DELETE"}) {
    std::filesystem::remove(m_file);
    SeedDatabase(m_file, kPairs + ("PRAGMA journal_mode = " + std::string(mode)));
    std::vector<pid_t> writers;
    for (int writer = 0; writer < kWriters; ++writer) {
      writers.push_back(fork());
      if (writers.back() == 0) Write(writer);
    }
    Reopen();
    const auto states = [](const std::filesystem::path& file) {
      return std::stoi(QueryRows(file, "SELECT max(N) FROM STATES"));
    };
    std::vector<std::filesystem::path> copies;
    for (int i = 0; i < 12; ++i) {
      copies.push_back(m_folder / (mode + std::to_string(i)));
      const int before = states(m_file);
      ASSERT_EQ(Gives(&Lib::BackUp, copies.back().string(), VARIANT_FALSE), "")
          << Gives(&Lib::LastError);
      EXPECT_GE(states(copies.back()), before) << "what was stored before is in the copy";
      usleep(20'000);
    }
    for (const pid_t writer : writers) {
      kill(writer, SIGKILL);
      waitpid(writer, nullptr, 0);
    }
    EXPECT_GT(states(copies.back()), states(copies.front())) << "nobody wrote meanwhile";
    for (const auto& copy : copies) {
      EXPECT_EQ(QueryRows(copy, "PRAGMA integrity_check"), "ok");
      const std::string last = "SELECT Sizes FROM STATES WHERE N = ";
      const std::string number = std::to_string(states(copy));
      EXPECT_EQ(QueryRows(copy, last + number), QueryRows(copy, "SELECT Sizes FROM NOW"));
      EXPECT_EQ(QueryRows(copy, last + number), Sql(last + number)) << mode;
    }
  }
}

TEST_F(BackUpTest, CopiesReplaceNothingThatIsOpenOrNotMeant) {
  EXPECT_EQ(Gives(&Lib::BackUp, (m_folder / "none").string(), VARIANT_FALSE), "fails");
  OpenSeeded();
  const auto copy = m_folder / "copy.mdb";
  const auto backUp = [&](const std::filesystem::path& file, VARIANT_BOOL replace) {
    return Gives(&Lib::BackUp, file.string(), replace);
  };
  EXPECT_EQ(Gives(&Lib::BeginChanges), "");
  EXPECT_EQ(Add("TAP", Properties().Add("Name", "M99")), S_OK);
  EXPECT_EQ(backUp(copy, VARIANT_FALSE), "");
  EXPECT_EQ(Gives(&Lib::EndChanges), "");
  EXPECT_EQ(QueryRows(copy, "SELECT count(*) FROM TAP"), "3") << "of an open group";
  EXPECT_EQ(backUp(copy, VARIANT_FALSE), "fails");
  EXPECT_THAT(Gives(&Lib::LastError), testing::HasSubstr("is there already"));
  {
    OtherProgram other(copy);
    other.Ask("SELECT count(*) FROM TAP");
    EXPECT_EQ(backUp(copy, VARIANT_TRUE), "fails");
    EXPECT_THAT(Gives(&Lib::LastError), testing::HasSubstr("has it open"));
  }
  EXPECT_EQ(backUp(copy, VARIANT_TRUE), "");
  EXPECT_EQ(QueryRows(copy, "SELECT count(*) FROM TAP"), "4");
  EXPECT_EQ(backUp(m_file, VARIANT_TRUE), "fails") << "the database itself";
  EXPECT_EQ(backUp(m_folder / "no" / "folder", VARIANT_FALSE), "fails");
  EXPECT_EQ(Sql("SELECT count(*) FROM TAP"), "4");
  const auto files = std::filesystem::directory_iterator(copy.parent_path());
  EXPECT_TRUE(std::none_of(begin(files), end(files), [](const auto& entry) {
    return entry.path().string().find(".new") != std::string::npos;
  }));
}

}  // namespace
}  // namespace orxdb::test
