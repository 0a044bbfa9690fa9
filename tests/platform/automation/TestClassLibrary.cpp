// A class library for tests: one class, whose one object counts its references and stays.
#include "platform/automation/Unknown.h"
#include "tests/platform/automation/TestClass.h"

namespace {

ULONG g_references = 0;

class TestObject final : public IUnknown {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppvObject) override {
    *ppvObject = riid == IID_IUnknown ? this : nullptr;
    if (*ppvObject) AddRef();
    return *ppvObject ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++g_references; }
  ULONG STDMETHODCALLTYPE Release() override { return --g_references; }
} g_object;

class TestFactory final : public IClassFactory {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppvObject) override {
    const bool known = riid == IID_IUnknown || riid == IID_IClassFactory;
    *ppvObject = known ? this : nullptr;
    return known ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* pUnkOuter, REFIID riid,
                                           void** ppvObject) override {
    return pUnkOuter ? CLASS_E_NOAGGREGATION : g_object.QueryInterface(riid, ppvObject);
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }
} g_factory;

}  // namespace

extern "C" AUTOMATION_API HRESULT DllGetClassObject(REFCLSID clsid, REFIID iid, void** object) {
  if (clsid == kFaultyClass) throw 1;
  return clsid == kTestClass ? g_factory.QueryInterface(iid, object) : CLASS_E_CLASSNOTAVAILABLE;
}

extern "C" AUTOMATION_API HRESULT DllCanUnloadNow() {
  return g_references == 0 ? S_OK : S_FALSE;
}
