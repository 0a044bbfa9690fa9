// Runs a fuzzer's function once for every file of a folder, where there is no libFuzzer.
#include <cstdint>
#include <cstdio>

#include "tests/support/TemporaryFolder.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int count, char** arguments) {
  int replayed = 0;
  for (const auto& file : std::filesystem::directory_iterator(arguments[count - 1])) {
    const std::string input = orxdb::test::Contents(file);
    std::puts(file.path().c_str());
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
    ++replayed;
  }
  return replayed > 0 ? 0 : 1;
}
