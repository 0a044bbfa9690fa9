// Classes: their files, identifiers and libraries.
#include <algorithm>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <thread>

#include "platform/automation/Apartment.h"
#include "platform/automation/ClassObject.h"
#include "tests/support/TemporaryFolder.h"

namespace orxdb::test {
namespace {

namespace fs = std::filesystem;

constexpr CLSID kClass = {
    0x6F9619FF, 0x8B86, 0xD011, {0xB4, 0x2D, 0x00, 0xC0, 0x4F, 0xC9, 0x64, 0xFF}};

class ClassObjectTest : public testing::Test {
 protected:
  ClassObjectTest() { Set("AUTOMATION_CLASS_PATH", m_folder / ""); }

  static void Set(const char* name, const std::string& value) { setenv(name, value.c_str(), 1); }
  static std::string Whole(const std::string& progId, const std::string& library = "/nowhere") {
    return "# a class\r\n\r\n[Class]\r\n  classid={6F9619FF-8B86-D011-B42D-00C04FC964FF}" +
           ("\r\nProgId = " + progId + "\nVersionIndependentProgId = Test.Thing\nLibrary = ") +
           library + "\nThreadingModel = Apartment\nColour = green\n; done\n[End]\n";
  }
  void Write(const std::string& path, const std::string& text) const {
    fs::create_directories((m_folder / path).parent_path());
    std::ofstream(m_folder / path, std::ios::binary) << text;
  }
  /// The name of the class; empty when it is not registered.
  static std::u16string ProgId() {
    LPOLESTR progId = nullptr;
    if (FAILED(ProgIDFromCLSID(kClass, &progId))) return {};
    std::u16string text(progId);
    CoTaskMemFree(progId);
    return text;
  }

  const TemporaryFolder m_folder;
};

TEST_F(ClassObjectTest, DamagedClassFilesArePassedOver) {
  const std::string whole = Whole("Test.Thing.1");
  for (std::size_t length = 0; length < whole.find("[End]") + 5; ++length) {
    Write("thing.class", whole.substr(0, length));
    ASSERT_EQ(ProgId(), u"") << length;
  }
  for (const std::string& text : {whole + "x", whole + '\0', Whole("Test.Thing.1", "relative.so"),
                                  whole + "#" + std::string(70000, 'x')}) {
    Write("thing.class", text);
    EXPECT_EQ(ProgId(), u"") << text.substr(0, 60);
  }
  // None of these keeps the good one behind them from being found, nor blocks.
  fs::create_directory(m_folder / "folder.class");
  fs::create_symlink("nowhere", m_folder / "link.class");
  ASSERT_EQ(mkfifo((m_folder / "pipe.class").c_str(), 0600), 0);
  Write("other.txt", whole);
  EXPECT_EQ(ProgId(), u"");
  Write("zz.class", whole);
  EXPECT_EQ(ProgId(), u"Test.Thing.1");
  for (const std::u16string name : {u"TEST.thing", u"test.thing.1", u"Test.Thing.2", u""}) {
    CLSID found = IID_IUnknown;
    const bool known = !name.empty() && !name.ends_with(u'2');
    EXPECT_EQ(CLSIDFromProgID(name.c_str(), &found), known ? S_OK : CO_E_CLASSSTRING);
    EXPECT_EQ(found, known ? kClass : CLSID_NULL);
  }
}

TEST_F(ClassObjectTest, FoldersAreSearchedInOrder) {
  const std::string folder = (m_folder / ".").parent_path();
  const std::string classes = "/automation/classes.d";
  for (const std::string name : {"a", "b", "home/.local/share"}) {
    Write(name + classes + "/x.class", Whole("Test." + name));
  }
  Set("HOME", folder + "/home");
  Set("XDG_DATA_DIRS", folder + "/none:" + folder + "/b");
  for (const auto& [dataHome, expected] : {std::pair(folder + "/a", u"Test.a"),
                                           {"", u"Test.home/.local/share"},
                                           {"relative", u"Test.b"}}) {
    Set("XDG_DATA_HOME", dataHome);
    unsetenv("AUTOMATION_CLASS_PATH");
    EXPECT_EQ(ProgId(), expected);
    Set("AUTOMATION_CLASS_PATH", "/nowhere::" + folder + "/b" + classes);
    EXPECT_EQ(ProgId(), u"Test.b") << "the class path replaces the rest";
  }
}

TEST_F(ClassObjectTest, UnusableLibrariesAreRefused) {
  Write("text.so", "not a library");
  std::string throws = TEST_LIBRARY;
  std::ranges::replace(throws, '/', '\\');
  // The last one is a path, not a name to search for.
  for (const auto& [path, expected] : {std::pair<std::string, HRESULT>(throws, E_UNEXPECTED),
                                       {TEST_OTHER_LIBRARY, CO_E_ERRORINDLL},
                                       {m_folder / "missing", CO_E_DLLNOTFOUND},
                                       {m_folder / "text.so", CO_E_DLLNOTFOUND},
                                       {m_folder / "", CO_E_DLLNOTFOUND},
                                       {"libc.so.6", CO_E_DLLNOTFOUND}}) {
    void* factory = this;
    EXPECT_EQ(CoGetClassObjectFromFile(path.c_str(), kClass, IID_IClassFactory, &factory), expected)
        << path;
    EXPECT_EQ(factory, nullptr);
  }
}

TEST(Identifiers, AreTextsAndDrawnByChance) {
  GUID earlier{};
  for (const auto& [toText, fromText] :
       {std::pair(&StringFromCLSID, &CLSIDFromString), {&StringFromIID, &IIDFromString}}) {
    GUID guid{};
    GUID read{};
    LPOLESTR text = nullptr;
    ASSERT_EQ(CoCreateGuid(&guid), S_OK);
    EXPECT_NE(guid, std::exchange(earlier, guid));
    ASSERT_EQ(toText(guid, &text), S_OK);
    EXPECT_EQ(text[15], u'4') << "the version of such identifiers";
    EXPECT_EQ(fromText(text, &read), S_OK);
    EXPECT_EQ(read, guid);
    CoTaskMemFree(text);
  }
}

TEST(Apartment, CountsTheStartsOfItsThread) {
  for (const DWORD model : {COINIT_MULTITHREADED, COINIT_APARTMENTTHREADED}) {
    EXPECT_EQ(CoInitializeEx(nullptr, model), S_OK);
    EXPECT_EQ(CoInitializeEx(nullptr, model | COINIT_SPEED_OVER_MEMORY), S_FALSE);
    EXPECT_EQ(CoInitializeEx(nullptr, 2 - model), RPC_E_CHANGED_MODE);
    EXPECT_EQ(OleInitialize(nullptr), model ? S_FALSE : RPC_E_CHANGED_MODE);
    std::thread([=] { EXPECT_EQ(CoInitializeEx(nullptr, 2 - model), S_OK); }).join();
    for (int extra = 0; extra < 4; ++extra) CoUninitialize();
  }
  EXPECT_EQ(CoInitializeEx(nullptr, 0x100), E_INVALIDARG);
  EXPECT_EQ(CoInitialize(nullptr), S_OK);
  OleUninitialize();
}

}  // namespace
}  // namespace orxdb::test
