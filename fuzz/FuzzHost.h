// What the fuzzers of the component share.
#pragma once

#include <cstdint>
#include <dlfcn.h>
#include <fstream>

#include "platform/framework/Text.h"
#include "tests/component/ComponentFixture.h"

namespace orxdb::test {

/// The component with a database of its own for one input. Any expectation that fails, a leak
/// included, ends the program.
class FuzzHost : public ComponentTest {
 public:
  explicit FuzzHost(const std::string& image = SeededImage()) {
    GTEST_FLAG_SET(break_on_failure, true);
    // Fuzzing watches the library's code where it was loaded first: it has to stay there.
    static void* const kept = dlopen(ORXDB_LIBRARY, RTLD_NOW | RTLD_NODELETE);
    EXPECT_TRUE(kept);
    SetUp();
    std::ofstream(m_file, std::ios::binary) << image;
    EXPECT_EQ(SetMdbFile(*m_db, m_file), S_OK);
  }
  ~FuzzHost() override { TearDown(); }

  /// The seeded database as a file of small pages.
  static const std::string& SeededImage() {
    static const std::string image = [] {
      const TemporaryFolder folder;
      SeedDatabase(folder / "seed.mdb");
      QueryRows(folder / "seed.mdb", "PRAGMA page_size = 512; VACUUM");
      return Contents(folder / "seed.mdb");
    }();
    return image;
  }

  using ComponentTest::Gives;
  using ComponentTest::m_db;
  using ComponentTest::m_file;
  using ComponentTest::m_folder;
  using ComponentTest::NewObject;

 private:
  void TestBody() override {}
};

}  // namespace orxdb::test
