// The module as the system sees it: registration, creation by name, loading and unloading.
#include <cstdlib>
#include <fstream>
#include <thread>
#include <unistd.h>

#include "platform/automation/ClassObject.h"
#include "platform/automation/ClassRegistration.h"
#include "platform/framework/Library.h"
#include "tests/component/ComponentFixture.h"

namespace orxdb::test {
namespace {

namespace fs = std::filesystem;

/// Works as somebody who may not write everywhere, until its end.
struct OrdinaryPerson {
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
      files[entry.path().filename()] = Contents(entry.path());
    }
    return files;
  }

  const fs::path m_classes = m_folder / "classes";
  const fs::path m_classFile = m_classes / "ORXDB.OrxDbObj.1.class";
  Library m_library = Library::Load(ORXDB_LIBRARY);
};

TEST_F(RegistrationTest, HostsFindTheSecondClassByBothNames) {
  for (const OLECHAR* name : {kOrxDbLibraryProgId, kOrxDbLibraryVersionIndependentProgId}) {
    ComPtr<IOrxDbLibrary> object;
    CLSID clsid{};
    EXPECT_EQ(CLSIDFromProgID(name, &clsid), S_OK);
    EXPECT_EQ(CoCreateInstance(clsid, nullptr, CLSCTX_ALL, IID_IOrxDbLibrary, object.putVoid()),
              S_OK);
  }
}

// What others put there stays, another file of the class goes, readers see whole files only.
TEST_F(RegistrationTest, RepeatingChangesNothingAndOthersStay) {
  const std::string own = Contents(m_classFile);
  EXPECT_THAT(own, testing::HasSubstr("\nThreadingModel = Apartment\n"));
  const std::string other =
      "[Class]\nClassId = {6F9619FF-8B86-D011-B42D-00C04FC964FF}\nLibrary = /nowhere\n[End]\n";
  const std::map<std::string, std::string> without = {{"other.class", other}, {"notes.txt", own}};
  for (const auto& [name, text] : without) std::ofstream(m_classes / name) << text;
  auto with = without;
  for (const fs::path& path : {m_classFile, m_classes / "ORXDB.OrxDbLibrary.1.class"}) {
    with[path.filename()] = Contents(path);
  }
  std::thread writer([this] {
    for (int i = 0; i < 20; ++i) EXPECT_EQ(Register(), S_OK);
  });
  for (int i = 0; i < 500; ++i) EXPECT_EQ(Contents(m_classFile), own);
  writer.join();
  for (const bool registers : {true, false, true}) {
    std::ofstream(m_classes / "earlier.class") << own;
    EXPECT_EQ(registers ? Register() : Unregister(), S_OK);
    EXPECT_EQ(Folder(), registers ? with : without);
  }
  fs::remove_all(m_classes);
  EXPECT_EQ(Unregister(), S_OK);
  EXPECT_FALSE(fs::exists(m_classes));
}

TEST_F(RegistrationTest, FailuresLeaveTheEarlierRegistration) {
  const auto before = Folder();
  for (const fs::path& place : {fs::path(), m_classFile}) {
    setenv("AUTOMATION_CLASS_PATH", place.c_str(), 1);
    EXPECT_EQ(Register(), SELFREG_E_CLASS) << place;
  }
  setenv("AUTOMATION_CLASS_PATH", m_classes.c_str(), 1);
  fs::permissions(m_classes, fs::perms::owner_read | fs::perms::owner_exec);
  {
    const OrdinaryPerson person;
    EXPECT_EQ(Register(), E_ACCESSDENIED);
    EXPECT_EQ(Unregister(), E_ACCESSDENIED);
  }
  fs::permissions(m_classes, fs::perms::owner_all);
  EXPECT_EQ(Folder(), before);
}

TEST_F(RegistrationTest, PlacesFollowTheEnvironment) {
  const std::string usual = "/usr/local/share/automation/classes.d";
  const std::string cases[][5] = {
      // HOME, XDG_DATA_HOME, XDG_DATA_DIRS, own folder, shared one
      {"/h", "", "", "/h/.local/share/automation/classes.d", usual},
      {"/h", "/d/", "/a:/usr/local/share/:/b", "/d/automation/classes.d", usual},
      {"", "", "relative:/a:/b", "", "/a/automation/classes.d"},
      {"/h", "relative", "relative", "", ""}};
  setenv("AUTOMATION_CLASS_PATH", "/first:/second", 1);
  EXPECT_EQ(RegistrationFolder(), "/first");
  unsetenv("AUTOMATION_CLASS_PATH");
  for (const auto& [home, dataHome, dataDirs, own, shared] : cases) {
    setenv("HOME", home.c_str(), 1);
    setenv("XDG_DATA_HOME", dataHome.c_str(), 1);
    setenv("XDG_DATA_DIRS", dataDirs.c_str(), 1);
    EXPECT_EQ(RegistrationFolder(), geteuid() == 0 ? shared : own);
  }
}

TEST_F(RegistrationTest, LibraryGoesWithItsLastObjectAndComesAgain) {
  m_library = {};
  const auto isLoaded = [] {
    CoFreeUnusedLibraries();
    return IsLoaded(ORXDB_LIBRARY);
  };
  EXPECT_TRUE(isLoaded()) << "an object lives";
  auto factory = Factory();
  m_db.reset();
  EXPECT_TRUE(isLoaded()) << "a factory lives";
  ASSERT_EQ(factory->LockServer(1), S_OK);
  factory.reset();
  EXPECT_TRUE(isLoaded()) << "a lock is held";
  auto library = NewObject<IOrxDbLibrary>(CLSID_OrxDbLibrary);
  ASSERT_EQ(Factory()->LockServer(0), S_OK);
  EXPECT_TRUE(isLoaded()) << "an object of the other class lives";
  library.reset();
  for (int round = 0; round < 3; ++round) {
    ASSERT_FALSE(isLoaded());
    OpenSeeded();
    EXPECT_EQ(Walk("TAP").size(), 3u);
    m_db.reset();
  }
}

}  // namespace
}  // namespace orxdb::test
