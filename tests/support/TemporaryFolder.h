#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>

namespace orxdb::test {

/// A folder of its own for one test.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string name = std::filesystem::temp_directory_path() / "orxdb-XXXXXX";
    m_path = mkdtemp(name.data());
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder() { std::filesystem::remove_all(m_path); }

  std::filesystem::path operator/(std::string_view name) const { return m_path / name; }

 private:
  std::filesystem::path m_path;
};

/// The bytes of a file; empty when there is none.
inline std::string Contents(const std::filesystem::path& file) {
  return (std::ostringstream() << std::ifstream(file, std::ios::binary).rdbuf()).str();
}

}  // namespace orxdb::test
