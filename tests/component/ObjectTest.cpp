// The object: creation, interfaces, lifetimes, the method frame and its error report.
#include <array>
#include <cstdio>

#include "platform/automation/ErrorInfo.h"
#include "platform/framework/Library.h"
#include "platform/framework/Text.h"
#include "tests/component/ComponentFixture.h"

namespace orxdb::test {
namespace {

/// The controlling object of an aggregate.
class Outer final : public IUnknown {
 public:
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
  EXPECT_EQ(m_db->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
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

TEST_F(ObjectTest, KeepsTheModuleLoadedWhileObjectsOrLocksLive) {
  const Library library = Library::Load(ORXDB_LIBRARY);
  const auto canUnload = library.Find<HRESULT()>("DllCanUnloadNow");
  ASSERT_NE(canUnload, nullptr);
  EXPECT_EQ(canUnload(), S_FALSE);
  m_db.reset();
  EXPECT_EQ(canUnload(), S_OK);
  const auto factory = Factory();
  EXPECT_EQ(canUnload(), S_FALSE);
  ASSERT_EQ(factory->LockServer(1), S_OK);
  ASSERT_EQ(factory->LockServer(0), S_OK);
  const auto getClassObject = library.Find<HRESULT(REFCLSID, REFIID, void**)>("DllGetClassObject");
  ASSERT_NE(getClassObject, nullptr);
  void* object = this;
  EXPECT_EQ(getClassObject(LIBID_ORXDBLib, IID_IUnknown, &object), CLASS_E_CLASSNOTAVAILABLE);
  EXPECT_EQ(object, nullptr);
}

TEST_F(ObjectTest, LibraryExportsItsEntryPointsOnly) {
  std::FILE* symbols = popen("nm -D --defined-only -j " ORXDB_LIBRARY, "r");
  ASSERT_NE(symbols, nullptr);
  std::array<char, 300> line{};
  std::vector<std::string> exported;
  while (std::fgets(line.data(), line.size(), symbols)) exported.emplace_back(line.data());
  EXPECT_EQ(pclose(symbols), 0);
  EXPECT_THAT(exported, testing::ElementsAre("DllCanUnloadNow\n", "DllGetClassObject\n",
                                             "DllRegisterServer\n", "DllUnregisterServer\n"));
}

TEST_F(ObjectTest, NewestObjectTakesTheDatabaseAndAnyReleaseEndsIt) {
  OpenSeeded();
  ComPtr<IOrxDbObj> second = NewObject();
  EXPECT_THAT(ToolTypes(), testing::IsEmpty()) << "both work on the new, closed data";
  EXPECT_EQ(SetMdbFile(*second, m_file), S_OK);
  EXPECT_EQ(Walk("TAP").size(), 3u);

  second.reset();
  TakeError();
  EXPECT_EQ(FirstStatus("TAP"), E_FAIL);
  EXPECT_EQ(TakeError(), kReportedError);
  EXPECT_EQ(SetMdbFile(*m_db, m_file), S_OK);
  EXPECT_EQ(FirstStatus("TAP"), E_FAIL) << "nothing was opened";
  EXPECT_EQ(Count("TAP"), -1);
  Variant types;
  EXPECT_EQ(m_db->GetToolTypes(types.put()), E_FAIL);

  m_db.reset();
  m_db = NewObject();
  EXPECT_EQ(SetMdbFile(*m_db, m_file), S_OK);
  EXPECT_EQ(Walk("TAP").size(), 3u) << "the engine starts again";
}

TEST_F(ObjectTest, FailureIsReportedAndSuccessLeavesTheReportAlone) {
  EXPECT_EQ(FirstStatus("TAP"), E_FAIL);
  ComPtr<IErrorInfo> first;
  ASSERT_EQ(GetErrorInfo(0, first.put()), S_OK);
  SetErrorInfo(0, first.get());
  EXPECT_THAT(ToolTypes(), testing::IsEmpty());
  ComPtr<IErrorInfo> kept;
  ASSERT_EQ(GetErrorInfo(0, kept.put()), S_OK);
  EXPECT_EQ(kept.get(), first.get());
  EXPECT_THAT(ToolTypes(), testing::IsEmpty());
  EXPECT_EQ(TakeError(), "") << "success does not report";

  setenv("AUTOMATION_CLASS_PATH", (m_folder / "nothing").c_str(), 1);
  EXPECT_EQ(FirstStatus("TAP"), E_FAIL);
  EXPECT_EQ(TakeError(), "ORXDB.OrxDbObj.1: ORX DB Error") << "also when it is not registered";
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
  const Bstr tap(u"TAP");
  VARIANT full = Variant::Null().detach();
  Variant empty;
  LONG count = 7;
  const std::vector<HRESULT> results = {
      m_db->GetToolTypes(nullptr),
      m_db->GetToolTypes(&full),
      m_db->GetFirstTool(tap.get(), nullptr, empty.ptr()),
      m_db->GetFirstTool(tap.get(), empty.ptr(), nullptr),
      m_db->GetFirstTool(tap.get(), &full, empty.ptr()),
      m_db->GetFirstTool(tap.get(), empty.ptr(), &full),
      m_db->GetFirstTool(nullptr, empty.ptr(), Variant().ptr()),
      m_db->GetNextTool(tap.get(), nullptr),
      m_db->GetNextTool(tap.get(), &full),
      m_db->GetNextTool(Bstr(u"tap").get(), empty.ptr()),
      m_db->SetTabFilter(Bstr(u"tap").get(), nullptr, nullptr),
      m_db->GetSelectedRecordCount(tap.get(), nullptr),
      m_db->GetToolTableBookmark(nullptr, empty.ptr()),
      m_db->GetToolTableBookmark(tap.get(), nullptr),
      m_db->SetToolTableBookmark(nullptr, VARIANT{}),
      m_db->GetToolTypesByStoredQuery(nullptr, empty.ptr()),
      m_db->VariantToSQLString(nullptr, nullptr),
      m_db->VariantToUIString(nullptr, nullptr, -1),
  };
  EXPECT_THAT(results, testing::Each(E_FAIL));
  EXPECT_TRUE(empty.empty());
  EXPECT_EQ(full.vt, VT_NULL);
  EXPECT_EQ(m_db->GetSelectedRecordCount(nullptr, &count), S_OK);
  EXPECT_EQ(count, -1);
  TakeError();
  EXPECT_EQ(m_db->GenFirstTool(nullptr, nullptr, nullptr, nullptr, nullptr), S_OK);
  EXPECT_EQ(m_db->GenNextTool(nullptr, &full), S_OK);
  EXPECT_EQ(full.vt, VT_NULL);
  EXPECT_EQ(TakeError(), "");
}

}  // namespace
}  // namespace orxdb::test
