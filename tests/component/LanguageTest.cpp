// The texts of the component with and without a language library beside it.
#include <cstdlib>
#include <fstream>

#include "component/LanguageResources.h"
#include "platform/automation/ClassObject.h"
#include "platform/framework/MessageBox.h"
#include "platform/framework/Text.h"
#include "resources/ComponentText.h"
#include "resources/StringTable.h"
#include "tests/component/ComponentFixture.h"

namespace orxdb::test {
namespace {

namespace fs = std::filesystem;

const fs::path kExample = ORXDB_LANGUAGE_FOLDER;
constexpr const char* kEnglish = "Yes No a_FehltYes";
constexpr const char* kGerman = "Ja Nein aYes";

/// Texts of a copy of the component in a folder of its own.
class LanguageTest : public testing::Test {
 protected:
  LanguageTest() {
    fs::copy_file(ORXDB_LIBRARY, m_folder / "libORXDB.so");
    SeedDatabase(m_folder / "tools.mdb", "UPDATE TYPES_DATA SET DEF_NAME_FORMAT = 'a_%Kind%%On%'");
  }

  /// Its words for true and false, and the default name of a tool without a "Kind" in German.
  std::string Words() {
    std::string words;
    {
      ComPtr<IClassFactory> factory;
      ComPtr<IOrxDbObj> object;
      EXPECT_EQ(CoGetClassObjectFromFile((m_folder / "libORXDB.so").c_str(), CLSID_OrxDbObj,
                                         IClassFactory::iid, factory.putVoid()),
                S_OK);
      EXPECT_FALSE(IsLoaded(m_folder / "libORXDB-de.so")) << "not before the first object";
      EXPECT_EQ(factory->CreateInstance(nullptr, IOrxDbObj::iid, object.putVoid()), S_OK);
      Bstr text;
      for (const bool value : {true, false}) {
        EXPECT_EQ(object->VariantToUIString(Variant::FromBool(value).ptr(), text.put(), -1), S_OK);
        words += NarrowBstr(text.get()) + ' ';
      }
      Properties tool;
      VARIANT* names = tool.Add("Kind", "Fehlt").Add("On", Variant::FromBool(true)).Names();
      object->SetMdbFile(WidenToBstr((m_folder / "tools.mdb").string()).get());
      object->GenerateDefToolName2(Bstr(u"TAP").get(), names, tool.Values(), text.put());
      words += NarrowBstr(text.get());
      EXPECT_FALSE(IsLoaded(m_folder / "libLangExt.so")) << "no longer needed";
    }
    CoFreeUnusedLibraries();
    EXPECT_FALSE(IsLoaded(m_folder / "libORXDB.so"));
    EXPECT_FALSE(IsLoaded(m_folder / "libORXDB-de.so")) << "freed with the component";
    return words;
  }
  void Put(const fs::path& library, const char* name) const {
    fs::copy_file(library, m_folder / name, fs::copy_options::overwrite_existing);
  }

  TemporaryFolder m_folder;
};

TEST_F(LanguageTest, FollowsThePersonsLanguage) {
  setenv("LC_ALL", "de_DE.UTF-8", 1);
  EXPECT_EQ(Words(), kEnglish) << "no language library";
  Put(kExample / "libLangExt.so", "libLangExt.so");
  EXPECT_EQ(Words(), kEnglish) << "no German texts";
  Put(kExample / "libORXDB-de.so", "libORXDB-de.so");
  EXPECT_EQ(Words(), kGerman) << "flags in names are of no language";
  setenv("LC_ALL", "C", 1);
  EXPECT_EQ(Words(), kEnglish);
  setenv("LC_ALL", "", 1);
  setenv("LC_MESSAGES", "de", 1);
  EXPECT_EQ(Words(), kGerman);
}

TEST_F(LanguageTest, BrokenLanguageLibrariesAreNoError) {
  std::ofstream(m_folder / "libLangExt.so") << "not a library";
  EXPECT_EQ(Words(), kEnglish);
  Put(kExample / "libORXDB-de.so", "libLangExt.so");
  EXPECT_EQ(Words(), kEnglish) << "no export";
  for (const auto* name : {"libLangExt.so", "libOneText.so"}) Put(ORXDB_TEST_LANGUAGE, name);
  for (const std::string wish : {"nothing", "throws", "component itself", "no texts", "one text"}) {
    setenv("TEST_LANGUAGE", wish.c_str(), 1);
    EXPECT_EQ(Words(), wish == "one text" ? "Oui  a_FehltYes" : kEnglish) << wish;
  }
}

TEST_F(LanguageTest, SpeaksInMessagesWhileItLives) {
  setenv("LC_ALL", "de_DE.UTF-8", 1);
  const Library loaded = Library::Load(kExample / "libLangExt.so");
  testing::internal::CaptureStderr();
  {
    const LanguageResources german;
    ShowComponentMessage(IDS_HEAD_NAME_IN_USE, MB_ICONSTOP);
  }
  ShowComponentMessage(IDS_HEAD_NAME_IN_USE, MB_ICONSTOP);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "Kestrix-Datenbank: Jeder Gewindeschneidkopf braucht eine eigene 'Description'\n"
            "Kestrix Data Base: You should use unique 'Description' for each Tapping Head\n");
}

}  // namespace
}  // namespace orxdb::test
