// The object: creation, interfaces, lifetimes, the method frame and its error report.
#include <cstdlib>
#include <thread>

#include "interface/IToolDatabaseFile.h"
#include "platform/automation/ClassObject.h"
#include "platform/framework/Text.h"
#include "tests/component/ComponentFixture.h"

namespace orxdb::test {
namespace {

/// The controlling object of an aggregate.
struct Outer final : IUnknown {
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override {
    if (riid != IID_IUnknown) return inner->QueryInterface(riid, object);
    *object = this;
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
  ULONG STDMETHODCALLTYPE Release() override { return --references; }

  ComPtr<IUnknown> inner;
  ULONG references = 0;
};
using ObjectTest = ComponentTest;

TEST_F(ObjectTest, AnswersItsThreeInterfacesOnly) {
  for (const IID& iid : {IID_IUnknown, IID_IDispatch, IID_IOrxDbObj}) {
    ComPtr<IUnknown> same;
    EXPECT_EQ(m_db.QueryInterface(iid, same.putVoid()), S_OK);
    EXPECT_EQ(same.QueryInterface<IUnknown>().get(), m_db.QueryInterface<IUnknown>().get());
  }
  void* other = this;
  for (const IID& iid : {IID_ISupportErrorInfo, IID_IToolDatabaseFile}) {
    EXPECT_EQ(m_db->QueryInterface(iid, &other), E_NOINTERFACE);
    EXPECT_EQ(other, nullptr);
  }
  EXPECT_EQ(CoGetClassObjectFromFile(ORXDB_LIBRARY, LIBID_ORXDBLib, IID_IUnknown, &other),
            CLASS_E_CLASSNOTAVAILABLE);
}

TEST_F(ObjectTest, IsPartOfAnAggregate) {
  Outer outer;
  void* refused = this;
  EXPECT_EQ(Factory()->CreateInstance(&outer, IID_IOrxDbObj, &refused), CLASS_E_NOAGGREGATION);
  EXPECT_EQ(refused, nullptr);
  ASSERT_EQ(Factory()->CreateInstance(&outer, IID_IUnknown, outer.inner.putVoid()), S_OK);
  EXPECT_EQ(outer.references, 0u);
  {
    const auto part = outer.inner.QueryInterface<IOrxDbObj>();
    EXPECT_EQ(outer.references, 1u);
    EXPECT_EQ(part.QueryInterface<IUnknown>().get(), &outer);
    EXPECT_EQ(part->GenNextTool(nullptr, nullptr), S_OK);
  }
  EXPECT_EQ(outer.references, 0u);
}

TEST_F(ObjectTest, LibraryExportsItsEntryPointsOnly) {
  EXPECT_EQ(std::system("test \"$(echo $(nm -D --defined-only -j '" ORXDB_LIBRARY "'))\" = "
                        "'DllCanUnloadNow DllGetClassObject DllRegisterServer "
                        "DllUnregisterServer'"),
            0);
}

TEST_F(ObjectTest, NewestObjectTakesTheDatabaseAndAnyReleaseEndsIt) {
  OpenSeeded("PRAGMA journal_mode = WAL");
  EXPECT_EQ(Walk("TAP").size(), 3u);
  ComPtr<IOrxDbObj> second = NewObject();
  EXPECT_EQ(Gives(&Db::GetToolTypes), "") << "both work on the new, closed data";
  EXPECT_EQ(SetMdbFile(*second, m_file), S_OK);
  EXPECT_EQ(Walk("TAP").size(), 3u);
  second.reset();
  EXPECT_FALSE(std::filesystem::exists(m_folder / "tools.mdb-wal")) << "nobody has the file open";
  for (int round = 0; round < 2; ++round) {
    EXPECT_EQ(Gives(&Db::GetFirstTool, "TAP"), "fails");
    EXPECT_EQ(SetMdbFile(*m_db, m_file), S_OK) << "which opens nothing";
  }
  EXPECT_EQ(Gives(&Db::GetSelectedRecordCount, "TAP"), "-1");
  EXPECT_EQ(Gives(&Db::GetToolTypes), "fails");
  m_db.reset();
  m_db = NewObject();
  EXPECT_EQ(SetMdbFile(*m_db, m_file), S_OK);
  EXPECT_EQ(Walk("TAP").size(), 3u) << "the engine starts again";
}

TEST_F(ObjectTest, FailureIsReportedAndSuccessLeavesTheReportAlone) {
  EXPECT_EQ(m_db->GetToolTypes(Variant().ptr()), S_OK);
  EXPECT_EQ(TakeError(), "") << "success does not report";
  for (const char* classes : {"classes", "nothing"}) {  // registered and not
    setenv("AUTOMATION_CLASS_PATH", (m_folder / classes).c_str(), 1);
    EXPECT_EQ(m_db->DeleteTool(nullptr, 1), E_FAIL);
    EXPECT_EQ(m_db->GetToolTypes(Variant().ptr()), S_OK);
    std::thread([] { EXPECT_EQ(TakeError(), ""); }).join();
    EXPECT_EQ(TakeError(), kReportedError);
  }
}

TEST_F(ObjectTest, HidesPropertiesByPartsOfTheirNames) {
  const char* const names[] = {"ToolID",     "AUX_1",   "Overall_Len", "Exposed_Len",
                               "IsFavorite", "Fitting", "FeedRate",    "TopSpeed",
                               "Width",      "Id",      "Name"};
  std::string hidden;
  for (const char* name : names) hidden += Gives(&Db::IsHiddenProperty, name) + ' ';
  EXPECT_EQ(hidden, "-1 -1 -1 -1 -1 -1 -1 -1 0 0 0 ");
}

TEST_F(ObjectTest, OutParametersMustBeThereAndEmpty) {
  OpenSeeded();
  IOrxDbObj& db = *m_db;
  const Bstr owner(u"TAP");
  const Bstr lower(u"tap");
  BSTR tap = owner.get();
  VARIANT full = Variant::Null().detach();
  Variant empty;
  VARIANT* none = empty.ptr();
  const auto results = [](auto... each) { return std::vector<HRESULT>{each...}; };
  EXPECT_THAT(
      results(db.GetToolTypes(nullptr), db.GetToolTypes(&full), db.GetFirstTool(tap, nullptr, none),
              db.GetFirstTool(tap, none, nullptr), db.GetFirstTool(tap, &full, none),
              db.GetFirstTool(tap, none, &full), db.GetFirstTool(nullptr, none, Variant().ptr()),
              db.GetNextTool(tap, nullptr), db.GetNextTool(tap, &full),
              db.GetNextTool(lower.get(), none), db.SetTabFilter(lower.get(), nullptr, nullptr),
              db.GetSelectedRecordCount(tap, nullptr), db.GetToolTableBookmark(nullptr, none),
              db.GetToolTableBookmark(tap, nullptr), db.SetToolTableBookmark(nullptr, VARIANT{}),
              db.GetDefPropsValues(tap, &full, none), db.GetToolProps(tap, 1, &full, none),
              db.GetToolProps(tap, 1, none, &full), db.GetToolTypesByStoredQuery(nullptr, none),
              db.VariantToSQLString(nullptr, nullptr), db.VariantToUIString(nullptr, nullptr, -1)),
      testing::Each(E_FAIL));
  EXPECT_EQ(Gives(&Db::GetSelectedRecordCount, nullptr), "-1");
  TakeError();
  EXPECT_EQ(db.GenFirstTool(nullptr, nullptr, nullptr, nullptr, nullptr), S_OK);
  EXPECT_EQ(db.GenNextTool(nullptr, &full), S_OK);
  EXPECT_EQ(TakeError(), "");
  EXPECT_TRUE(empty.empty());
  EXPECT_EQ(full.vt, VT_NULL);
}

}  // namespace
}  // namespace orxdb::test
