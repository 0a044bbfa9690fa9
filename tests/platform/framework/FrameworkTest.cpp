#include <algorithm>
#include <clocale>
#include <cwctype>
#include <fstream>
#include <gtest/gtest.h>
#include <random>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <thread>

#include "platform/framework/Exception.h"
#include "platform/framework/ExecutablePath.h"
#include "platform/framework/FileSystem.h"
#include "platform/framework/LetterCase.h"
#include "platform/framework/Library.h"
#include "platform/framework/MessageBox.h"
#include "platform/framework/ModuleState.h"
#include "platform/framework/Text.h"
#include "platform/framework/TextFile.h"
#include "platform/framework/VersionRecord.h"
#include "tests/support/TemporaryFolder.h"

namespace orxdb::test {
namespace {

TEST(Library, SharesExceptionsAndTheActiveState) {
  std::string path = TEST_LIBRARY;
  std::ranges::replace(path, '/', '\\');
  Library first = Library::Load(path);
  ASSERT_TRUE(first) << first.Message();
  const Library library = std::move(first);
  EXPECT_EQ(library.FindSymbol("NoSuchFunction"), nullptr);
  try {
    library.Find<HRESULT(REFCLSID, REFIID, void**)>("DllGetClassObject")(CLSID_NULL, IID_NULL, {});
    FAIL() << "nothing thrown";
  } catch (const CException& e) {
    for (const unsigned length : {256U, 14U, 1U}) {
      std::string buffer(300, '#');
      EXPECT_TRUE(e.GetErrorMessage(buffer.data(), length));
      EXPECT_EQ(std::string(buffer.c_str()), e.Message().substr(0, length - 1));
      EXPECT_EQ(buffer[length], '#') << "wrote behind the buffer";
    }
    EXPECT_FALSE(e.GetErrorMessage(nullptr, 256));
  }
  CModuleState state;
  const ModuleStateSwitch active(state);
  EXPECT_EQ(library.Find<const void*()>("ActiveStateSeenByLibrary")(), &state);
}

TEST(VersionRecord, IsReadFromLibraryFiles) {
  EXPECT_FALSE(ReadVersionRecord(TEST_LIBRARY));
  EXPECT_FALSE(ReadVersionRecord("/dev/zero")) << "which never ends";
  const std::string record =
      "[Version]\nFileDescription = A\nFileVersion = 1\nProductVersion = 2\nInternalName = B\n"
      "OriginalFilename = C\nOLESelfRegister\n[End]\n";
  for (std::size_t length = 0; length < record.size(); ++length) {
    EXPECT_FALSE(FindVersionRecord(record.substr(0, length))) << length;
  }
  const auto found = FindVersionRecord("\x7F[Version]\n[Version]\n" + record + "behind");
  ASSERT_TRUE(found && found->selfRegisters);
  EXPECT_EQ(found->fileDescription + found->fileVersion + found->originalFilename, "A1C");
}

TEST(FileSystem, IsToldFromTheSystemsList) {
  const TemporaryFolder folder;
  struct stat status = {};
  ASSERT_EQ(stat((folder / "").c_str(), &status), 0);
  const std::string device =
      std::to_string(major(status.st_dev)) + ':' + std::to_string(minor(status.st_dev));
  for (const auto& [type, network] : {std::pair("ext4", false),
                                      {"tmpfs", false},
                                      {"nfs4", true},
                                      {"cifs", true},
                                      {"fuse.sshfs", true},
                                      {"fuseblk", false},
                                      {"fuse.mergerfs", false},
                                      {"nfsd", false}}) {
    for (const std::string options : {"rw,noatime", "ro,noatime", "ro", "rw"}) {
      std::ofstream(folder / "mounts")
          << "20 1 999:0"
          << " / /a rw - cifs //a rw\n21 1 " << device << "0 / /b rw - nfs b rw\n"
          << "22 1 " << device << " / /c\\040d " << options << " shared:1 master:2 - " << type
          << " /dev/x rw\n";
      for (const char* file : {"mounts", "not-there"}) {
        const FileSystem found = FileSystemOf(folder / file, (folder / "mounts").c_str());
        EXPECT_EQ(found.type, type);
        EXPECT_EQ(found.network, network) << type;
        EXPECT_EQ(found.readOnly, options.starts_with("ro"));
      }
    }
  }
  EXPECT_EQ(FileSystemOf(folder / "x", "/nowhere").type, "");
  EXPECT_EQ(FileSystemOf("/proc/self/maps").type, "proc");
}

TEST(LetterCase, FoldsAsTheSystemKnowsLetters) {
  const locale_t locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  ASSERT_NE(locale, nullptr);
  int folded = 0;
  for (std::uint32_t code = 0; code < 0x110000; ++code) {
    const std::uint32_t fold = FoldLetter(code);
    EXPECT_EQ(std::uint32_t{FoldLetter(fold)}, fold) << code;
    if (fold != code) {
      ++folded;
      const auto alike = LettersLike(code);
      EXPECT_EQ(std::ranges::count(alike, code) + std::ranges::count(alike, fold), 2) << code;
      EXPECT_TRUE(std::ranges::all_of(alike, [&](char32_t c) { return FoldLetter(c) == fold; }));
    }
    for (auto* const other : {towlower_l, towupper_l}) {
      const auto counterpart = static_cast<char32_t>(other(code, locale));
      if ((counterpart < 0x80) != (code < 0x80)) continue;  // Kelvin, long s, Turkish letters
      EXPECT_EQ(std::uint32_t{FoldLetter(counterpart)}, fold) << code;
    }
    if (code < 0xd800 || code > 0xdfff) {
      const std::string text = Utf8Of(code);
      EXPECT_EQ(std::uint32_t{CharacterAt(text, 0).code}, code);
      EXPECT_EQ(FoldLetters(text + "A" + text), Utf8Of(fold) + "a" + Utf8Of(fold));
    }
  }
  EXPECT_GT(folded, 1400);
  freelocale(locale);
  for (const char* stray :
       {"\x80", "\xff", "\xc1\x81", "\xe0\x81\x81", "\xf4\x90\x80\x80", "\xc3"}) {
    EXPECT_EQ(CharacterAt(stray, 0).next, 1u) << "part of no character";
    EXPECT_EQ(FoldLetters(stray), stray);
    EXPECT_GT(CompareLetters(stray, "\U0010ffff"), 0);
  }
}

TEST(ModuleState, GivesTextsAndEndsOnEveryWayOut) {
  constexpr StringResource texts[] = {{101, "Yes"}, {102, "No"}, {102, "never seen"}};
  const ResourceTable english = {texts, std::size(texts)};
  CModuleState& process = ActiveModuleState();
  CModuleState state(&english);
  try {
    const ModuleStateSwitch active(state);
    for (const auto& [id, expected] : {std::pair(102u, "No"), {101, "Yes"}, {103, ""}}) {
      std::string text = "old";
      EXPECT_EQ(LoadString(ActiveModuleState().CurrentResource(), id, text), id != 103);
      EXPECT_EQ(text, expected);
    }
    std::thread([&] { EXPECT_EQ(&ActiveModuleState(), &process); }).join();
    throw CException();
  } catch (const CException&) {
    EXPECT_EQ(&ActiveModuleState(), &process);
  }
}

TEST(MessageBox, HandlerReplacesTheLineOnStandardError) {
  testing::internal::CaptureStderr();
  EXPECT_EQ(ShowMessageBox("Two\nlines", "Title", MB_ICONSTOP), IDOK);
  InstallMessageBoxHandler([](const std::string&, const std::string&, unsigned) { return 7; });
  EXPECT_EQ(ShowMessageBox("Two\nlines", "Title", MB_ICONSTOP), 7);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "Title: Two lines\n");
  EXPECT_TRUE(InstallMessageBoxHandler({}));
}

// A piece ends with its line or at the limit; one that ends for want of bytes shows the end.
TEST(Files, ReadsLinesInPieces) {
  const TemporaryFolder folder;
  std::mt19937 random(4);
  for (int round = 0; round < 300; ++round) {
    std::string content;
    for (auto count = random() % 30; count > 0; --count) {
      content += "ab\xE9\r\r\n\n\0"[random() % 8];
    }
    std::ofstream(folder / "file.txt", std::ios::binary) << content;
    std::string text;
    for (std::size_t i = 0; i < content.size(); ++i) {
      if (content.compare(i, 2, "\r\n") != 0) text += content[i];
    }
    TextFile file = TextFile::OpenForReading((folder / "file.txt").native());
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

TEST(Files, UnusableFilesAreEmpty) {
  const TemporaryFolder folder;
  std::string piece = "kept";
  EXPECT_FALSE(TextFile::OpenForReading((folder / "missing").native()));
  EXPECT_FALSE(TextFile::OpenForWriting((folder / "").native()));
  EXPECT_FALSE(TextFile().ReadLine(piece, 9));
  TextFile opened = TextFile::OpenForReading((folder / "").native());
  EXPECT_FALSE(opened.ReadLine(piece, 9));
  EXPECT_TRUE(opened.AtEnd());
  EXPECT_EQ(piece, "kept");
  TextFile full = TextFile::OpenForWriting("/dev/full");
  ASSERT_TRUE(full);
  full.Write("held back, then refused\n");
  EXPECT_FALSE(full.Close());
}

TEST(Files, PathsTakeBothSeparators) {
  const std::string path = ExecutablePath();
  EXPECT_EQ(path.find('/'), std::string::npos);
  EXPECT_TRUE(std::filesystem::equivalent(NativePath(path), "/proc/self/exe")) << path;
}

TEST(Text, WidensAndNarrowsAndKeepsBytesThatAreNotUtf8) {
  // Pieces that are whole before a blank, so that any row of them is again a pair. The compiler's
  // own encodings are the reference.
  const std::vector<std::pair<std::string, std::u16string>> pieces = {
      {"a", u"a"},
      {std::string(1, '\0'), std::u16string(1, u'\0')},
      {"twelve bytes", u"twelve bytes"},
      {"\u007F\u0080Ø\u07FF\u0800刀具", u"\u007F\u0080Ø\u07FF\u0800刀具"},
      {"\uD7FF\uE000\uFFFF", u"\uD7FF\uE000\uFFFF"},
      {"\U00010000🔩\U0010FFFF", u"\U00010000🔩\U0010FFFF"},
      {"\x80", u"\xDC80"},
      {"caf\xE9!", u"caf\xDCE9!"},                        // one-byte code page
      {"\xC0\xAF", u"\xDCC0\xDCAF"},                      // overlong
      {"\xE0\x9F\xBF", u"\xDCE0\xDC9F\xDCBF"},            // overlong
      {"\xED\xA0\x80", u"\xDCED\xDCA0\xDC80"},            // a surrogate
      {"\xF0\x8F\xBF\xBF", u"\xDCF0\xDC8F\xDCBF\xDCBF"},  // overlong
      {"\xF4\x90\x80\x80", u"\xDCF4\xDC90\xDC80\xDC80"},  // beyond the last character
      {"\xF5\xFF\xFE", u"\xDCF5\xDCFF\xDCFE"},            // never in UTF-8
      {"\xE5\x88", u"\xDCE5\xDC88"},                      // cut short
      {"\xE5\x88\xE5\x88\x80", u"\xDCE5\xDC88\x5200"}};   // cut, then whole
  // Bytes drawn from the interesting borders form cut, overlong and valid sequences alike.
  const std::string bytes = "a\x80\x8F\x90\x9F\xA0\xBF\xC0\xC2\xE0\xED\xEF\xF0\xF4\xF5\xFF";
  std::mt19937 random(1);
  for (int round = 0; round < 5000; ++round) {
    std::string text;
    std::string any;
    std::u16string expected;
    for (auto count = random() % 14; count > 0; --count) {
      const auto& [narrow, wide] = pieces[random() % pieces.size()];
      text += narrow + " ";
      expected += wide + u" ";
      any += bytes[random() % bytes.size()];
    }
    EXPECT_EQ(WidenToBstr(text).view(), expected);
    EXPECT_EQ(Narrow(expected), text);
    EXPECT_EQ(Narrow(Widen(any)), any);
    EXPECT_EQ(WidenedLength(any), Widen(any).size());
  }
  EXPECT_EQ(Narrow(u"x\xDBFFy\xDD00"), "x\xED\xAF\xBFy\xED\xB4\x80") << "halves stay apart";
}

TEST(Text, WidenTextFillsBufferOrLeavesItEmpty) {
  for (int length = 1; length < 9; ++length) {
    OLECHAR buffer[9] = u"########";
    EXPECT_EQ(WidenText(buffer, "ORX🔩", length), buffer);
    EXPECT_EQ(std::u16string(buffer), length > 5 ? u"ORX🔩" : u"") << length;
    EXPECT_EQ(buffer[length > 5 ? 6 : 1], u'#') << "wrote behind the zero";
    EXPECT_EQ(*WidenText(buffer, nullptr, length), u'\0');
  }
  EXPECT_EQ(WidenText(nullptr, "x", 5), nullptr);
}

}  // namespace
}  // namespace orxdb::test
