// The module as the system sees it: registration, creation by name, loading and unloading.
#include <csignal>
#include <cstdlib>
#include <dlfcn.h>
#include <fstream>
#include <iterator>
#include <sys/resource.h>
#include <thread>
#include <unistd.h>

#include "platform/automation/ClassObject.h"
#include "platform/automation/ClassRegistration.h"
#include "platform/framework/Library.h"
#include "platform/framework/Text.h"
#include "tests/component/ComponentFixture.h"

namespace orxdb::test {
namespace {

namespace fs = std::filesystem;

std::string ReadAll(const fs::path& path) {
  std::ifstream stream(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

bool IsLoaded(const char* path) {
  void* const handle = dlopen(path, RTLD_NOW | RTLD_NOLOAD);
  if (handle) dlclose(handle);
  return handle != nullptr;
}

/// Works as somebody who may not write everywhere, until its end.
class OrdinaryPerson {
 public:
  OrdinaryPerson() { EXPECT_EQ(seteuid(getuid() == 0 ? 65534 : geteuid()), 0); }
  ~OrdinaryPerson() { EXPECT_EQ(seteuid(getuid()), 0); }
};

class RegistrationTest : public ComponentTest {
 protected:
  HRESULT Register() { return m_library.Find<HRESULT()>("DllRegisterServer")(); }
  HRESULT Unregister() { return m_library.Find<HRESULT()>("DllUnregisterServer")(); }

  std::map<std::string, std::string> Folder() const {
    std::map<std::string, std::string> files;
    for (const auto& entry : fs::directory_iterator(m_classes)) {
      files[entry.path().filename()] = entry.is_directory() ? "folder" : ReadAll(entry.path());
    }
    return files;
  }

  static HRESULT Create(const CLSID& clsid, REFIID iid, ComPtr<IUnknown>& object) {
    return CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, iid, object.putVoid());
  }

  const fs::path m_classes = m_folder / "classes";
  const fs::path m_classFile = m_classes / "ORXDB.OrxDbObj.1.class";
  Library m_library = Library::Load(ORXDB_LIBRARY);
};

TEST_F(RegistrationTest, HostsFindTheClassByBothNames) {
  for (const OLECHAR* name : {kOrxDbProgId, kOrxDbVersionIndependentProgId}) {
    CLSID clsid{};
    ASSERT_EQ(CLSIDFromProgID(name, &clsid), S_OK);
    EXPECT_EQ(clsid, CLSID_OrxDbObj);
  }
  OLECHAR typeLibrary[39] = {};
  StringFromGUID2(LIBID_ORXDBLib, typeLibrary, 39);
  for (const std::string& line :
       {std::string("Description = OrxDbObj Class\n"), std::string("ThreadingModel = Apartment\n"),
        "TypeLibrary = " + Narrow(typeLibrary) + "\nTypeLibraryName = ORXDBLib\n",
        std::string("Library = " ORXDB_LIBRARY "\n")}) {
    EXPECT_THAT(ReadAll(m_classFile), testing::HasSubstr(line));
  }

  m_db.reset();
  ComPtr<IUnknown> object;
  EXPECT_EQ(Create(CLSID_OrxDbObj, IID_IOrxDbObj, object), S_OK);
  object.reset();
  EXPECT_EQ(Create(CLSID_OrxDbObj, IID_IClassFactory, object), E_NOINTERFACE);
  EXPECT_EQ(Create(LIBID_ORXDBLib, IID_IUnknown, object), REGDB_E_CLASSNOTREG);
  EXPECT_FALSE(object);
}

TEST_F(RegistrationTest, RepeatingChangesNothingAndOthersStay) {
  const std::string own = ReadAll(m_classFile);
  const std::string other =
      "[Class]\nClassId = {6F9619FF-8B86-D011-B42D-00C04FC964FF}\n"
      "ProgId = Test.Thing.1\nLibrary = /nowhere\n[End]\n";
  std::ofstream(m_classes / "other.class") << other;
  std::ofstream(m_classes / "notes.txt") << own;
  std::ofstream(m_classes / "earlier.class") << own;
  const std::map<std::string, std::string> without = {{"other.class", other}, {"notes.txt", own}};
  auto with = without;
  with[m_classFile.filename()] = own;
  for (int round = 0; round < 2; ++round) {
    for (int twice = 0; twice < 2; ++twice) {
      EXPECT_EQ(Register(), S_OK);
      EXPECT_EQ(Folder(), with);
    }
    std::ofstream(m_classes / "earlier.class") << own;
    std::ofstream(m_classFile, std::ios::app) << "damaged";
    for (int twice = 0; twice < 2; ++twice) {
      EXPECT_EQ(Unregister(), S_OK);
      EXPECT_EQ(Folder(), without);
    }
  }
  fs::remove_all(m_classes);
  EXPECT_EQ(Unregister(), S_OK);
  EXPECT_FALSE(fs::exists(m_classes));
}

TEST_F(RegistrationTest, FailuresLeaveTheEarlierRegistration) {
  const auto before = Folder();
  std::ofstream(m_folder / "file") << "text";
  for (const std::string& place :
       {std::string(), (m_folder / "file").string(), (m_folder / "file").string() + "/classes"}) {
    setenv("AUTOMATION_CLASS_PATH", place.c_str(), 1);
    EXPECT_EQ(Register(), SELFREG_E_CLASS) << place;
  }
  setenv("AUTOMATION_CLASS_PATH", m_classes.c_str(), 1);

  std::signal(SIGXFSZ, SIG_IGN);
  rlimit limit{};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
  const rlimit tight = {100, limit.rlim_max};
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &tight), 0);
  EXPECT_EQ(Register(), SELFREG_E_CLASS) << "the disk is full";
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
  EXPECT_EQ(Folder(), before);

  fs::permissions(m_classes, fs::perms::owner_read | fs::perms::owner_exec);
  {
    const OrdinaryPerson person;
    EXPECT_EQ(Register(), E_ACCESSDENIED);
    EXPECT_EQ(Unregister(), E_ACCESSDENIED);
  }
  fs::permissions(m_classes, fs::perms::owner_all);
  EXPECT_EQ(Folder(), before);

  fs::remove(m_classFile);
  fs::create_directories(m_classFile / "full");
  EXPECT_EQ(Register(), SELFREG_E_CLASS);
  EXPECT_EQ(Unregister(), SELFREG_E_CLASS);
  EXPECT_THAT(Folder(), testing::ElementsAre(testing::Pair(m_classFile.filename(), "folder")));
}

TEST_F(RegistrationTest, ReadersSeeWholeFilesOnly) {
  const std::string own = ReadAll(m_classFile);
  std::thread writer([this] {
    for (int i = 0; i < 20; ++i) EXPECT_EQ(Register(), S_OK);
  });
  for (int i = 0; i < 500; ++i) EXPECT_EQ(ReadAll(m_classFile), own);
  writer.join();
}

TEST_F(RegistrationTest, PlacesFollowTheEnvironment) {
  const char* const usual = "/usr/local/share/automation/classes.d";
  const struct {
    const char* home;
    const char* dataHome;
    const char* dataDirs;
    const char* own;
    const char* shared;
  } cases[] = {
      {"/h", "", "", "/h/.local/share/automation/classes.d", usual},
      {"/h", "/d/", "/a:/usr/local/share/:/b", "/d/automation/classes.d", usual},
      {"", "", "relative:/a:/b", "", "/a/automation/classes.d"},
      {"/h", "relative", "relative", "", ""},
  };
  for (const auto& test : cases) {
    setenv("HOME", test.home, 1);
    setenv("XDG_DATA_HOME", test.dataHome, 1);
    setenv("XDG_DATA_DIRS", test.dataDirs, 1);
    setenv("AUTOMATION_CLASS_PATH", "/first:/second", 1);
    EXPECT_EQ(RegistrationFolder(), "/first");
    unsetenv("AUTOMATION_CLASS_PATH");
    if (geteuid() == 0) {
      EXPECT_EQ(RegistrationFolder(), test.shared);
    }
    const OrdinaryPerson person;
    EXPECT_EQ(RegistrationFolder(), test.own);
  }
}

TEST_F(RegistrationTest, ScriptsThatMakeNoClassFileAreRefused) {
  const std::string script =
      "[Class]\nClassId = {6F9619FF-8B86-D011-B42D-00C04FC964FF}\n"
      "ProgId = Test.1\nLibrary = %MODULE%\n[End]\n";
  const std::string noName = std::string(script).replace(script.find("Test.1"), 6, "");
  const std::string path = std::string(script).replace(script.find("Test.1"), 6, "../Test");
  const auto before = Folder();
  for (const auto& [text, library] :
       std::vector<std::pair<std::string, std::string>>{{script, "relative.so"},
                                                        {script, "/a\nProgId = Taken"},
                                                        {script, "/blank "},
                                                        {script, ""},
                                                        {script.substr(0, script.size() - 3), "/a"},
                                                        {noName, "/a"},
                                                        {path, "/a"}}) {
    EXPECT_EQ(RegisterClass(text, library), SELFREG_E_CLASS) << library;
  }
  EXPECT_EQ(Folder(), before);
}

TEST_F(RegistrationTest, LibraryGoesWithItsLastObjectAndComesAgain) {
  m_library = {};
  CoFreeUnusedLibraries();
  EXPECT_TRUE(IsLoaded(ORXDB_LIBRARY)) << "an object lives";
  ASSERT_EQ(Factory()->LockServer(1), S_OK);
  m_db.reset();
  CoFreeUnusedLibraries();
  EXPECT_TRUE(IsLoaded(ORXDB_LIBRARY)) << "a lock is held";
  ASSERT_EQ(Factory()->LockServer(0), S_OK);
  for (int round = 0; round < 3; ++round) {
    CoFreeUnusedLibraries();
    ASSERT_FALSE(IsLoaded(ORXDB_LIBRARY));
    m_db = NewObject();
    OpenSeeded();
    EXPECT_EQ(Walk("TAP").size(), 3u);
    m_db.reset();
    fs::remove(m_file);
  }
}

TEST_F(RegistrationTest, FailuresAreToldToTheirOwnThreadOnly) {
  EXPECT_EQ(FirstStatus("TAP"), E_FAIL);
  std::thread([] { EXPECT_EQ(TakeError(), ""); }).join();
  EXPECT_EQ(TakeError(), kReportedError);
}

}  // namespace
}  // namespace orxdb::test
