// Late-bound calls. Every byte of an input is one choice; the calls end with the input.
#include "fuzz/FuzzHost.h"
#include "tests/dispatch/RandomCalls.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  orxdb::test::FuzzHost host;
  const auto home = std::filesystem::current_path();
  std::filesystem::current_path(host.m_folder / "");  // for exports
  std::size_t used = 0;
  orxdb::test::RandomCalls calls(*host.m_db,
                                 [&]() -> unsigned { return used < size ? data[used++] : 0; });
  while (used < size) calls.Call();
  EXPECT_EQ(orxdb::test::QueryRows(host.m_file, "PRAGMA integrity_check"), "ok");
  std::filesystem::current_path(home);
  return 0;
}
