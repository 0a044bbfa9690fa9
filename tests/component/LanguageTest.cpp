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
constexpr const char* kGerman = "libORXDB-de.so";

/// Words for true and false, as a copy of the component in a folder of its own shows them.
class LanguageTest : public testing::Test {
 protected:
  LanguageTest() {
    fs::copy_file(ORXDB_LIBRARY, m_folder / "libORXDB.so");
    SeedDatabase(m_folder / "tools.mdb", "UPDATE TYPES_DATA SET DEF_NAME_FORMAT = 'a_%Kind%%On%'");
  }

  std::string Words() {
    std::string words;
    {
      ComPtr<IClassFactory> factory;
      ComPtr<IOrxDbObj> object;
      EXPECT_EQ(CoGetClassObjectFromFile((m_folder / "libORXDB.so").c_str(), CLSID_OrxDbObj,
                                         IClassFactory::iid, factory.putVoid()),
                S_OK);
      EXPECT_EQ(factory->CreateInstance(nullptr, IOrxDbObj::iid, object.putVoid()), S_OK);
      for (const bool value : {true, false}) {
        Variant flag = Variant::FromBool(value);
        Bstr word;
        EXPECT_EQ(object->VariantToUIString(flag.ptr(), word.put(), -1), S_OK);
        words += NarrowBstr(word.get()) + (value ? "/" : "");
      }
      Properties tool;
      tool.Add("Kind", "Fehlt").Add("On", Variant::FromBool(true));
      object->SetMdbFile(WidenToBstr((m_folder / "tools.mdb").string()).get());
      Bstr name;
      object->GenerateDefToolName2(Bstr(u"TAP").get(), tool.Names(), tool.Values(), name.put());
      m_name = NarrowBstr(name.get());
      EXPECT_FALSE(IsLoaded(m_folder / "libLangExt.so")) << "no longer needed";
    }
    CoFreeUnusedLibraries();
    EXPECT_FALSE(IsLoaded(m_folder / "libORXDB.so"));
    EXPECT_FALSE(IsLoaded(m_folder / kGerman)) << "freed with the component";
    return words;
  }
  void Put(const fs::path& library, const char* name) const {
    fs::copy_file(library, m_folder / name, fs::copy_options::overwrite_existing);
  }

  TemporaryFolder m_folder;
  std::string m_name;  ///< the default name that the copy gave a tool without a "Kind" in German
};

TEST_F(LanguageTest, FollowsThePersonsLanguage) {
  setenv("LC_ALL", "de_DE.UTF-8", 1);
  EXPECT_EQ(Words(), "Yes/No") << "no language library";
  Put(kExample / "libLangExt.so", "libLangExt.so");
  EXPECT_EQ(Words(), "Yes/No") << "no German texts";
  Put(kExample / kGerman, kGerman);
  EXPECT_EQ(Words(), "Ja/Nein");
  EXPECT_EQ(m_name, "aYes") << "flags in names are of no language";
  setenv("LC_ALL", "C", 1);
  EXPECT_EQ(Words(), "Yes/No");
  EXPECT_EQ(m_name, "a_FehltYes");
  setenv("LC_ALL", "", 1);
  setenv("LC_MESSAGES", "de", 1);
  EXPECT_EQ(Words(), "Ja/Nein");
}

TEST_F(LanguageTest, BrokenLanguageLibrariesAreNoError) {
  std::ofstream(m_folder / "libLangExt.so") << "not a library";
  EXPECT_EQ(Words(), "Yes/No");
  Put(kExample / kGerman, "libLangExt.so");
  EXPECT_EQ(Words(), "Yes/No") << "no export";
  Put(ORXDB_TEST_LANGUAGE, "libLangExt.so");
  Put(ORXDB_TEST_LANGUAGE, "libOneText.so");
  const struct {
    const char* wish;
    const char* words;
  } cases[] = {{"nothing", "Yes/No"},
               {"throws", "Yes/No"},
               {"component itself", "Yes/No"},
               {"no texts", "Yes/No"},
               {"one text", "Oui/"}};
  for (const auto& [wish, words] : cases) {
    setenv("TEST_LANGUAGE", wish, 1);
    EXPECT_EQ(Words(), words) << wish;
  }
}

TEST_F(LanguageTest, IsFoundByItsNameAloneAsWell) {
  setenv("LC_ALL", "de_DE.UTF-8", 1);
  const Library loaded = Library::Load(kExample / "libLangExt.so");
  EXPECT_EQ(Words(), "Ja/Nein");
}

TEST(LanguageResources, MessagesFollowTheLanguageForAsLongAsItLives) {
  setenv("LC_ALL", "de_DE.UTF-8", 1);
  const Library loaded = Library::Load(kExample / "libLangExt.so");
  std::string shown;
  InstallMessageBoxHandler([&](const std::string& text, const std::string& caption, unsigned) {
    shown = caption + ": " + text;
    return IDOK;
  });
  {
    const LanguageResources german;
    ShowComponentMessage(IDS_HEAD_NAME_IN_USE, MB_ICONSTOP);
    EXPECT_EQ(shown,
              "Kestrix-Datenbank: Jeder Gewindeschneidkopf braucht eine eigene 'Description'");
  }
  ShowComponentMessage(IDS_HEAD_NAME_IN_USE, MB_ICONSTOP);
  EXPECT_EQ(shown, "Kestrix Data Base: You should use unique 'Description' for each Tapping Head");
  InstallMessageBoxHandler({});
}

}  // namespace
}  // namespace orxdb::test
