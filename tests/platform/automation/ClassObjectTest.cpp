#include <algorithm>
#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>
#include <fstream>
#include <string>
#include <sys/stat.h>

#include "platform/automation/ClassObject.h"
#include "platform/automation/ComPtr.h"
#include "tests/platform/automation/LeakBalance.h"
#include "tests/platform/automation/TestClass.h"

namespace orxdb {
namespace {

namespace fs = std::filesystem;

class ClassObjectTest : public LeakBalance {
 protected:
  ClassObjectTest() {
    std::string form = (fs::temp_directory_path() / "classes.XXXXXX").string();
    m_folder = mkdtemp(form.data());
    Set("AUTOMATION_CLASS_PATH", m_folder.string());
  }
  ~ClassObjectTest() override { fs::remove_all(m_folder); }

  static void Set(const char* name, const std::string& value) { setenv(name, value.c_str(), 1); }
  static std::string Whole(const std::string& progId, const std::string& library) {
    return "# a class\r\n\r\n[Class]\r\n  classid={6F9619FF-8B86-D011-B42D-00C04FC964FF}" +
           ("\r\nProgId = " + progId + "\nVersionIndependentProgId = Test.Thing\nLibrary = ") +
           library + "\nThreadingModel = Apartment\nColour = green\n; done\n[End]\n";
  }
  void Write(const fs::path& path, const std::string& text) const {
    fs::create_directories((m_folder / path).parent_path());
    std::ofstream(m_folder / path, std::ios::binary) << text;
  }
  static HRESULT Find(const OLECHAR* progId) {
    CLSID found = kFaultyClass;
    const HRESULT status = CLSIDFromProgID(progId, &found);
    EXPECT_EQ(found, SUCCEEDED(status) ? kTestClass : CLSID_NULL);
    return status;
  }
  /// The name of the class; empty when it is not registered.
  static std::u16string ProgId() {
    LPOLESTR progId = nullptr;
    if (FAILED(ProgIDFromCLSID(kTestClass, &progId))) return {};
    std::u16string text(progId);
    CoTaskMemFree(progId);
    return text;
  }
  static HRESULT Create(ComPtr<IUnknown>& object, IUnknown* outer = nullptr,
                        REFIID iid = IID_IUnknown, DWORD context = CLSCTX_INPROC_SERVER) {
    return CoCreateInstance(kTestClass, outer, context, iid, object.putVoid());
  }

  fs::path m_folder;
};

TEST_F(ClassObjectTest, FindsCreatesAndUnloadsARegisteredClass) {
  Write("thing.class", Whole("Test.Thing.1", TEST_CLASS_LIBRARY));
  EXPECT_EQ(Find(u"TEST.thing"), S_OK);
  EXPECT_EQ(Find(u"Test.Thing.2"), CO_E_CLASSSTRING);
  EXPECT_EQ(ProgId(), u"Test.Thing.1");

  ComPtr<IUnknown> object;
  ComPtr<IUnknown> other;
  ASSERT_EQ(Create(object), S_OK);
  EXPECT_EQ(Create(other, nullptr, IID_IDispatch), E_NOINTERFACE);
  EXPECT_EQ(Create(other, object.get()), CLASS_E_NOAGGREGATION);
  EXPECT_EQ(Create(other, nullptr, IID_IUnknown, 0x4), REGDB_E_CLASSNOTREG);
  for (const bool used : {true, false}) {
    if (!used) object.reset();
    CoFreeUnusedLibraries();
    void* handle = dlopen(TEST_CLASS_LIBRARY, RTLD_NOW | RTLD_NOLOAD);
    EXPECT_EQ(handle != nullptr, used);
    if (handle) dlclose(handle);
  }
  EXPECT_EQ(Create(object, nullptr, IID_IUnknown, CLSCTX_ALL), S_OK);
}

TEST_F(ClassObjectTest, DamagedClassFilesArePassedOver) {
  const std::string whole = Whole("Test.Thing.1", TEST_CLASS_LIBRARY);
  for (std::size_t length = 0; length < whole.find("[End]") + 5; ++length) {
    Write("thing.class", whole.substr(0, length));
    ASSERT_EQ(Find(u"Test.Thing.1"), CO_E_CLASSSTRING) << length;
  }
  for (const std::string& text : {whole + "x", whole + '\0', Whole("Test.Thing.1", "relative.so"),
                                  whole + "#" + std::string(70000, 'x')}) {
    Write("thing.class", text);
    EXPECT_EQ(Find(u"Test.Thing.1"), CO_E_CLASSSTRING) << text.substr(0, 60);
  }
  // None of these keeps the good one behind them from being found, nor blocks.
  fs::create_directory(m_folder / "folder.class");
  fs::create_symlink("nowhere", m_folder / "link.class");
  ASSERT_EQ(mkfifo((m_folder / "pipe.class").c_str(), 0600), 0);
  Write("other.txt", whole);
  EXPECT_EQ(Find(u"Test.Thing.1"), CO_E_CLASSSTRING);
  Write("zz.class", whole);
  EXPECT_EQ(Find(u"Test.Thing.1"), S_OK);
}

TEST_F(ClassObjectTest, FoldersAreSearchedInOrder) {
  const std::string folder = m_folder.string();
  const std::string classes = "/automation/classes.d";
  for (const std::string name : {"a", "b", "home/.local/share"}) {
    Write(name + classes + "/x.class", Whole("Test." + name, "/nowhere"));
  }
  Set("HOME", folder + "/home");
  Set("XDG_DATA_DIRS", folder + "/none:" + folder + "/b");
  const auto find = [](const std::string& dataHome) {
    Set("XDG_DATA_HOME", dataHome);
    return ProgId();
  };
  Set("AUTOMATION_CLASS_PATH",
      "/nowhere::" + folder + "/b" + classes + ":" + folder + "/a" + classes);
  EXPECT_EQ(find(folder + "/a"), u"Test.b");  // the class path replaces the rest
  Set("AUTOMATION_CLASS_PATH", "");
  EXPECT_EQ(ProgId(), u"");
  unsetenv("AUTOMATION_CLASS_PATH");
  EXPECT_EQ(ProgId(), u"Test.a");
  EXPECT_EQ(find(""), u"Test.home/.local/share");
  EXPECT_EQ(find("relative"), u"Test.b");
}

TEST_F(ClassObjectTest, LibrariesByPath) {
  Write("text.so", "not a library");
  const std::string folder = m_folder.string();
  std::string backslashes = TEST_CLASS_LIBRARY;
  std::replace(backslashes.begin(), backslashes.end(), '/', '\\');
  const auto load = [](const std::string& path, REFCLSID clsid = kTestClass) {
    ComPtr<IClassFactory> factory;
    const HRESULT status =
        CoGetClassObjectFromFile(path.c_str(), clsid, IClassFactory::iid, factory.putVoid());
    EXPECT_EQ(static_cast<bool>(factory), status == S_OK) << path;
    return status;
  };
  EXPECT_EQ(load(backslashes), S_OK);
  EXPECT_EQ(load(TEST_CLASS_LIBRARY, CLSID_NULL), CLASS_E_CLASSNOTAVAILABLE);
  EXPECT_EQ(load(TEST_CLASS_LIBRARY, kFaultyClass), E_UNEXPECTED);
  EXPECT_EQ(load(TEST_OTHER_LIBRARY), CO_E_ERRORINDLL);
  // The last one is a path, not a name to search for.
  for (const std::string& path :
       {folder + "/missing.so", folder + "/text.so", folder, std::string("libc.so.6")}) {
    EXPECT_EQ(load(path), CO_E_DLLNOTFOUND) << path;
  }
}

}  // namespace
}  // namespace orxdb
