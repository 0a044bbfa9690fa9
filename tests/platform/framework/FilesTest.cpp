#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <random>

#include "platform/framework/ExecutablePath.h"
#include "platform/framework/TextFile.h"

namespace orxdb {
namespace {

class TextFileTest : public testing::Test {
 protected:
  TextFileTest() {
    std::string name = (std::filesystem::temp_directory_path() / "textfile.XXXXXX").string();
    m_folder = mkdtemp(name.data());
  }
  ~TextFileTest() override { std::filesystem::remove_all(m_folder); }

  std::string File() const { return (m_folder / "file.txt").string(); }
  std::string Bytes() const {
    std::ifstream file(File(), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  std::filesystem::path m_folder;
};

// A piece ends with its line or at the limit; one that ends for want of bytes shows the end.
TEST_F(TextFileTest, ReadsLinesInPieces) {
  std::mt19937 random(4);
  for (int round = 0; round < 300; ++round) {
    std::string content;
    for (auto count = random() % 30; count > 0; --count)
      content += "ab\xE9\r\r\n\n\0"[random() % 8];
    std::ofstream(File(), std::ios::binary) << content;
    std::string text;
    for (std::size_t i = 0; i < content.size(); ++i) {
      if (content.compare(i, 2, "\r\n") != 0) text += content[i];
    }
    TextFile file = TextFile::OpenForReading(File());
    const std::size_t limit = 1 + random() % 9;
    for (bool atEnd = false; !atEnd;) {
      const std::string piece = text.substr(0, std::min(text.find('\n'), limit - 1) + 1);
      text.erase(0, piece.size());
      atEnd = piece.size() < limit && !piece.ends_with('\n');
      std::string read = "kept";
      EXPECT_FALSE(file.AtEnd());
      EXPECT_EQ(file.ReadLine(read, limit), !piece.empty());
      ASSERT_EQ(read, piece.empty() ? "kept" : piece) << testing::PrintToString(content) << limit;
      EXPECT_EQ(file.AtEnd(), atEnd);
    }
  }
}

TEST_F(TextFileTest, UnusableFilesAreEmpty) {
  std::string piece = "kept";
  EXPECT_FALSE(TextFile::OpenForReading((m_folder / "missing").string()));
  EXPECT_FALSE(TextFile::OpenForWriting(m_folder.string()));
  EXPECT_TRUE(TextFile().AtEnd());
  EXPECT_FALSE(TextFile().ReadLine(piece, 9));

  TextFile folder = TextFile::OpenForReading(m_folder.string());
  EXPECT_FALSE(folder.ReadLine(piece, 9));
  EXPECT_TRUE(folder.AtEnd());
  EXPECT_EQ(piece, "kept");

  TextFile full = TextFile::OpenForWriting("/dev/full");
  ASSERT_TRUE(full);
  full.Write("held back, then refused\n");
  EXPECT_FALSE(full.Close());
}

TEST(ExecutablePath, NamesThisProgramWithBackslashes) {
  const std::string path = ExecutablePath();
  EXPECT_EQ(path.find('/'), std::string::npos);
  EXPECT_TRUE(std::filesystem::equivalent(NativePath(path), "/proc/self/exe")) << path;
  EXPECT_EQ(NativePath("C:CAM\\TOOLS/tools.mdb"), "C:CAM/TOOLS/tools.mdb");
}

}  // namespace
}  // namespace orxdb
