#pragma once

#include "component/Module.h"
#include "component/ToolDatabaseFile.h"
#include "platform/automation/TypeInfo.h"
#include "platform/automation/Unknown.h"

namespace orxdb {

/// Makes `OrxDbObj` objects. Describes their class and handles database files without making one: a
/// new object would take the database from those that live. Keeps the module in memory while it is
/// referred to.
class ClassFactory final : public IClassFactory, public IProvideClassInfo {
 public:
  ClassFactory(const ClassFactory&) = delete;
  ClassFactory& operator=(const ClassFactory&) = delete;

  /// A new factory, handed out as the interface asked for.
  static HRESULT Create(REFIID riid, void** ppvObject);

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
  ClassFactory() = default;
  ~ClassFactory() = default;

  ULONG m_references = 0;
  ToolDatabaseFile m_files{static_cast<IClassFactory&>(*this)};
  ModuleLock m_lock;
};

}  // namespace orxdb
