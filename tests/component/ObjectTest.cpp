// The object: creation, interfaces, lifetimes, the method frame and its error report.
#include <array>
#include <cstdio>
#include <thread>

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
  EXPECT_EQ(m_db->QueryInterface(IID_ISupportErrorInfo, &other), E_NOINTERFACE);
  EXPECT_EQ(other, nullptr);
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
  std::FILE* symbols = popen("nm -D --defined-only -j " ORXDB_LIBRARY, "r");
  ASSERT_NE(symbols, nullptr);
  std::array<char, 300> text{};
  std::fread(text.data(), 1, text.size() - 1, symbols);
  EXPECT_EQ(pclose(symbols), 0);
  EXPECT_STREQ(text.data(),
               "DllCanUnloadNow\nDllGetClassObject\nDllRegisterServer\nDllUnregisterServer\n");
}

TEST_F(ObjectTest, NewestObjectTakesTheDatabaseAndAnyReleaseEndsIt) {
  OpenSeeded();
  ComPtr<IOrxDbObj> second = NewObject();
  EXPECT_THAT(ToolTypes(), testing::IsEmpty()) << "both work on the new, closed data";
  EXPECT_EQ(SetMdbFile(*second, m_file), S_OK);
  EXPECT_EQ(Walk("TAP").size(), 3u);
  second.reset();
  EXPECT_EQ(FirstStatus("TAP"), E_FAIL);
  EXPECT_EQ(SetMdbFile(*m_db, m_file), S_OK);
  EXPECT_EQ(FirstStatus("TAP"), E_FAIL) << "nothing was opened";
  EXPECT_EQ(Count("TAP"), -1);
  EXPECT_EQ(m_db->GetToolTypes(Variant().ptr()), E_FAIL);
  m_db.reset();
  m_db = NewObject();
  EXPECT_EQ(SetMdbFile(*m_db, m_file), S_OK);
  EXPECT_EQ(Walk("TAP").size(), 3u) << "the engine starts again";
}

TEST_F(ObjectTest, FailureIsReportedAndSuccessLeavesTheReportAlone) {
  EXPECT_THAT(ToolTypes(), testing::IsEmpty());
  EXPECT_EQ(TakeError(), "") << "success does not report";
  for (const char* classes : {"classes", "nothing"}) {  // registered and not
    setenv("AUTOMATION_CLASS_PATH", (m_folder / classes).c_str(), 1);
    EXPECT_EQ(FirstStatus("TAP"), E_FAIL);
    EXPECT_THAT(ToolTypes(), testing::IsEmpty());
    std::thread([] { EXPECT_EQ(TakeError(), ""); }).join();
    EXPECT_EQ(TakeError(), kReportedError);
  }
}

TEST_F(ObjectTest, HidesPropertiesByPartsOfTheirNames) {
  const std::pair<const OLECHAR*, VARIANT_BOOL> cases[] = {
      {u"ToolID", VARIANT_TRUE}, {u"Overall_Len", VARIANT_TRUE}, {u"FeedRate", VARIANT_TRUE},
      {u"Width", VARIANT_FALSE}, {u"Id", VARIANT_FALSE},         {u"Name", VARIANT_FALSE}};
  for (const auto& [name, hidden] : cases) {
    VARIANT_BOOL answer = 7;
    EXPECT_EQ(m_db->IsHiddenProperty(Bstr(name).get(), &answer), S_OK);
    EXPECT_EQ(answer, hidden) << Narrow(name);
  }
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
  LONG count = 7;
  const auto results = [](auto... each) { return std::vector<HRESULT>{each...}; };
  EXPECT_THAT(
      results(db.GetToolTypes(nullptr), db.GetToolTypes(&full), db.GetFirstTool(tap, nullptr, none),
              db.GetFirstTool(tap, none, nullptr), db.GetFirstTool(tap, &full, none),
              db.GetFirstTool(tap, none, &full), db.GetFirstTool(nullptr, none, Variant().ptr()),
              db.GetNextTool(tap, nullptr), db.GetNextTool(tap, &full),
              db.GetNextTool(lower.get(), none), db.SetTabFilter(lower.get(), nullptr, nullptr),
              db.GetSelectedRecordCount(tap, nullptr), db.GetToolTableBookmark(nullptr, none),
              db.GetToolTableBookmark(tap, nullptr), db.SetToolTableBookmark(nullptr, VARIANT{}),
              db.GetToolTypesByStoredQuery(nullptr, none), db.VariantToSQLString(nullptr, nullptr),
              db.VariantToUIString(nullptr, nullptr, -1)),
      testing::Each(E_FAIL));
  EXPECT_EQ(db.GetSelectedRecordCount(nullptr, &count), S_OK);
  EXPECT_EQ(count, -1);
  TakeError();
  EXPECT_EQ(db.GenFirstTool(nullptr, nullptr, nullptr, nullptr, nullptr), S_OK);
  EXPECT_EQ(db.GenNextTool(nullptr, &full), S_OK);
  EXPECT_EQ(TakeError(), "");
  EXPECT_TRUE(empty.empty());
  EXPECT_EQ(full.vt, VT_NULL);
}

}  // namespace
}  // namespace orxdb::test
