// Random arguments for every method. ORXDB_FUZZ_SECONDS makes the run longer, ORXDB_FUZZ_SEED
// repeats one.
#include <chrono>
#include <cstdlib>
#include <random>

#include "tests/dispatch/RandomCalls.h"

namespace orxdb::test {
namespace {

int Setting(const char* name, int otherwise) {
  const char* const text = std::getenv(name);
  return text ? std::atoi(text) : otherwise;
}

using InvokeFuzzTest = ComponentTest;

TEST_F(InvokeFuzzTest, RandomArgumentsGiveStandardStatuses) {
  using Clock = std::chrono::steady_clock;
  const auto seed =
      static_cast<unsigned>(Setting("ORXDB_FUZZ_SEED", static_cast<int>(std::random_device()())));
  std::printf("ORXDB_FUZZ_SEED=%u\n", seed);
  RecordProperty("seed", std::to_string(seed));
  OpenSeeded();
  RandomCalls calls(*m_db, std::mt19937(seed));
  std::map<HRESULT, int> seen;
  const auto end = Clock::now() + std::chrono::seconds(Setting("ORXDB_FUZZ_SECONDS", 1));
  // Files that exports write stay in the test's folder.
  const auto home = std::filesystem::current_path();
  std::filesystem::current_path(m_file.parent_path());
  while (Clock::now() < end) ++seen[calls.Call()];
  std::filesystem::current_path(home);
  EXPECT_GE(seen.size(), 8u);
}

}  // namespace
}  // namespace orxdb::test
