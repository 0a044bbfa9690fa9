#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <random>

#include "platform/framework/ExecutablePath.h"
#include "platform/framework/TextFile.h"

namespace orxdb {
namespace {

using testing::ElementsAreArray;

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
  /// Reads as long as the end has not been met; each piece is followed by whether it is now.
  std::vector<std::string> Pieces(std::size_t limit) const {
    TextFile file = TextFile::OpenForReading(File());
    std::vector<std::string> pieces;
    while (!file.AtEnd()) {
      std::string piece = "(nothing)";
      file.ReadLine(piece, limit);
      pieces.push_back(piece + (file.AtEnd() ? "|end" : "|"));
    }
    return pieces;
  }

  std::filesystem::path m_folder;
};

TEST_F(TextFileTest, ReadsLinesInPieces) {
  const struct {
    std::string content;
    std::size_t limit;
    std::vector<std::string> pieces;
  } cases[] = {
      {"", 9, {"(nothing)|end"}},
      {"a\n", 9, {"a\n|", "(nothing)|end"}},
      {"a\r\nb", 9, {"a\n|", "b|end"}},
      {"\r\n\n", 9, {"\n|", "\n|", "(nothing)|end"}},
      {"a\rb\r\r\n\r", 9, {"a\rb\r\n|", "\r|end"}},
      {"abc\r\nd\n", 4, {"abc\n|", "d\n|", "(nothing)|end"}},
      {"abcd\r\nd\n", 4, {"abcd|", "\n|", "d\n|", "(nothing)|end"}},
      {"abcd", 4, {"abcd|", "(nothing)|end"}},
      {std::string("a\0b\n", 4), 9, {std::string("a\0b\n|", 5), "(nothing)|end"}},
  };
  for (const auto& test : cases) {
    std::ofstream(File(), std::ios::binary) << test.content;
    EXPECT_THAT(Pieces(test.limit), ElementsAreArray(test.pieces)) << test.content;
  }
}

TEST_F(TextFileTest, WrittenLinesComeBack) {
  std::mt19937 random(3);
  for (int round = 0; round < 50; ++round) {
    std::string text;
    for (auto count = random() % 200; count > 0; --count) text += "ab\xE9\t\n\n"[random() % 6];
    {
      TextFile file = TextFile::OpenForWriting(File());
      const std::size_t cut = text.empty() ? 0 : random() % text.size();
      ASSERT_TRUE(file.Write(std::string_view(text).substr(0, cut)));
      ASSERT_TRUE(file.Write(std::string_view(text).substr(cut)));
      ASSERT_TRUE(file.Close());
      EXPECT_FALSE(file.Write("late"));
    }
    std::string bytes;
    for (const char c : text) bytes += c == '\n' ? std::string("\r\n") : std::string(1, c);
    EXPECT_EQ(Bytes(), bytes);

    std::string read;
    std::string piece;
    TextFile file = TextFile::OpenForReading(File());
    for (const std::size_t limit = 1 + random() % 9; file.ReadLine(piece, limit);) {
      EXPECT_LE(piece.size(), limit);
      read += piece;
    }
    EXPECT_TRUE(file.AtEnd());
    EXPECT_EQ(read, text);
  }
}

TEST_F(TextFileTest, UnusableFilesAreEmpty) {
  std::string piece = "kept";
  EXPECT_FALSE(TextFile::OpenForReading((m_folder / "missing").string()));
  EXPECT_FALSE(TextFile::OpenForWriting(m_folder.string()));
  EXPECT_TRUE(TextFile().AtEnd());

  TextFile folder = TextFile::OpenForReading(m_folder.string());
  EXPECT_FALSE(folder.ReadLine(piece, 9));
  EXPECT_TRUE(folder.AtEnd());
  EXPECT_EQ(piece, "kept");

  TextFile full = TextFile::OpenForWriting("/dev/full");
  ASSERT_TRUE(full);
  full.Write("held back, then refused\n");
  EXPECT_FALSE(full.Close());
}

TEST_F(TextFileTest, TakesEitherSeparator) {
  std::string path = File();
  std::replace(path.begin(), path.end(), '/', '\\');
  EXPECT_TRUE(TextFile::OpenForWriting(path).Write("x"));
  EXPECT_EQ(Bytes(), "x");
  EXPECT_TRUE(TextFile::OpenForReading(path));
}

TEST(ExecutablePath, NamesThisProgramWithBackslashes) {
  const std::string path = ExecutablePath();
  EXPECT_EQ(path.find('/'), std::string::npos);
  EXPECT_TRUE(std::filesystem::equivalent(NativePath(path), "/proc/self/exe")) << path;
  EXPECT_EQ(NativePath("C:CAM\\TOOLS/tools.mdb"), "C:CAM/TOOLS/tools.mdb");
}

}  // namespace
}  // namespace orxdb
