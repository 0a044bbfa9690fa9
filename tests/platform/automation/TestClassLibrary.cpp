// A class library for tests: one class whose objects are plain IUnknowns.
#include <atomic>

#include "platform/automation/ClassObject.h"
#include "tests/platform/automation/TestClass.h"

namespace {

std::atomic<int> g_objects{0};

class TestObject final : public IUnknown {
 public:
  TestObject() { ++g_objects; }
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppvObject) override {
    *ppvObject = riid == IID_IUnknown ? this : nullptr;
    if (*ppvObject) AddRef();
    return *ppvObject ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --m_references;
    if (left == 0) delete this;
    return left;
  }

 private:
  virtual ~TestObject() { --g_objects; }
  ULONG m_references = 1;
};

/// Lives as long as the library.
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
    if (pUnkOuter) return CLASS_E_NOAGGREGATION;
    auto* object = new TestObject;
    const HRESULT status = object->QueryInterface(riid, ppvObject);
    object->Release();
    return status;
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }
};

TestFactory g_factory;

}  // namespace

extern "C" AUTOMATION_API HRESULT DllGetClassObject(REFCLSID clsid, REFIID iid, void** object) {
  if (clsid == kFaultyClass) throw 1;
  return clsid == kTestClass ? g_factory.QueryInterface(iid, object) : CLASS_E_CLASSNOTAVAILABLE;
}

extern "C" AUTOMATION_API HRESULT DllCanUnloadNow() {
  return g_objects == 0 ? S_OK : S_FALSE;
}
