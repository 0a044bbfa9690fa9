#pragma once

#include "component/MethodTable.h"
#include "component/Module.h"
#include "component/ToolDatabaseFile.h"
#include "platform/automation/TypeInfo.h"
#include "platform/automation/Unknown.h"

namespace orxdb {

/// A class of the component and how its objects are made, `outer` being the aggregate's controlling
/// object or null.
struct ComponentClass {
  const DescribedClass& described;
  HRESULT (*create)(IUnknown* outer, REFIID riid, void** ppvObject);
};

/// Makes objects of one class. Describes the class and handles database files without making one: a
/// new `OrxDbObj` would take the database from those that live. Keeps the module in memory while it
/// is referred to.
class ClassFactory final : public IClassFactory, public IProvideClassInfo {
 public:
  ClassFactory(const ClassFactory&) = delete;
  ClassFactory& operator=(const ClassFactory&) = delete;

  /// A new factory of a class, handed out as the interface asked for; CLASS_E_CLASSNOTAVAILABLE for
  /// a class that is none of the component's.
  static HRESULT Create(REFCLSID rclsid, REFIID riid, void** ppvObject);

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppvObject) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;
  /// Aggregated objects are handed out as IUnknown only, else CLASS_E_NOAGGREGATION. An
  /// out-of-memory exception while the database state is set up leaves the call.
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* pUnkOuter, REFIID riid,
                                           void** ppvObject) override;
  HRESULT STDMETHODCALLTYPE LockServer(BOOL fLock) override;
  HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** ppTI) override;

 private:
  explicit ClassFactory(const ComponentClass& made) : m_made(made) {}
  ~ClassFactory() = default;

  const ComponentClass& m_made;
  ULONG m_references = 0;
  ToolDatabaseFile m_files{static_cast<IClassFactory&>(*this)};
  ModuleLock m_lock;
};

}  // namespace orxdb
