#include "component/ClassFactory.h"

#include <algorithm>
#include <iterator>
#include <new>

#include "component/OrxDbLibrary.h"
#include "component/OrxDbObj.h"
#include "component/TypeDescription.h"
#include "platform/automation/ComPtr.h"

namespace orxdb {
namespace {

constexpr ComponentClass kClasses[] = {{kOrxDbObj, &OrxDbObj::Create},
                                       {kOrxDbLibrary, &OrxDbLibrary::Create}};

}  // namespace

HRESULT ClassFactory::Create(REFCLSID rclsid, REFIID riid, void** ppvObject) {
  const auto* const made = std::ranges::find(
      kClasses, rclsid, [](const ComponentClass& each) { return each.described.type.guid; });
  if (made == std::end(kClasses)) return CLASS_E_CLASSNOTAVAILABLE;
  ComPtr<IClassFactory> factory;
  factory.copyFrom(new (std::nothrow) ClassFactory(*made));
  return factory ? factory->QueryInterface(riid, ppvObject) : E_OUTOFMEMORY;
}

HRESULT ClassFactory::QueryInterface(REFIID riid, void** ppvObject) {
  if (!ppvObject) return E_POINTER;
  *ppvObject = nullptr;
  if (riid == IID_IUnknown || riid == IID_IClassFactory) {
    *ppvObject = static_cast<IClassFactory*>(this);
  } else if (riid == IID_IProvideClassInfo) {
    *ppvObject = static_cast<IProvideClassInfo*>(this);
  } else if (riid == IID_IToolDatabaseFile) {
    *ppvObject = static_cast<IToolDatabaseFile*>(&m_files);
  } else {
    return E_NOINTERFACE;
  }
  AddRef();
  return S_OK;
}

ULONG ClassFactory::AddRef() {
  return ++m_references;
}

ULONG ClassFactory::Release() {
  const ULONG references = --m_references;
  if (references == 0) delete this;
  return references;
}

HRESULT ClassFactory::CreateInstance(IUnknown* pUnkOuter, REFIID riid, void** ppvObject) {
  if (!ppvObject) return E_POINTER;
  *ppvObject = nullptr;
  if (pUnkOuter && riid != IID_IUnknown) return CLASS_E_NOAGGREGATION;
  return m_made.create(pUnkOuter, riid, ppvObject);
}

HRESULT ClassFactory::LockServer(BOOL fLock) {
  if (fLock) {
    ModuleLock::Lock();
  } else {
    ModuleLock::Unlock();
  }
  return S_OK;
}

HRESULT ClassFactory::GetClassInfo(ITypeInfo** ppTI) {
  if (!ppTI) return E_POINTER;
  *ppTI = DescribeClass(m_made.described);
  return S_OK;
}

}  // namespace orxdb
