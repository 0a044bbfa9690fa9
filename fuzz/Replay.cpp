// Runs a fuzzer's function once for every file of the folders given, where there is no libFuzzer.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int count, char** arguments) {
  int replayed = 0;
  for (int i = 1; i < count; ++i) {
    if (std::string_view(arguments[i]).starts_with('-')) continue;
    for (const auto& entry : std::filesystem::directory_iterator(arguments[i])) {
      std::printf("%s\n", entry.path().c_str());
      std::ifstream file(entry.path(), std::ios::binary);
      const std::string input{std::istreambuf_iterator<char>(file), {}};
      LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
      ++replayed;
    }
  }
  std::printf("%d inputs replayed\n", replayed);
  return replayed > 0 ? 0 : 1;
}
