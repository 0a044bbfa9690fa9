#pragma once

#include <new>

#include "component/Dispatch.h"
#include "component/MethodTable.h"
#include "component/Module.h"
#include "component/TypeDescription.h"
#include "platform/automation/ComPtr.h"

namespace orxdb {

/// What the objects of all classes of the component have in common: references, the interfaces
/// IUnknown, IDispatch and `Interface`, late-bound calls by the table of the class, and that they
/// may be part of an aggregate. Keeps the module in memory.
template <typename Interface, const DescribedClass& described>
class DualObject : public Interface {
 public:
  DualObject(const DualObject&) = delete;
  DualObject& operator=(const DualObject&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppvObject) override {
    return m_outer->QueryInterface(riid, ppvObject);
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return m_outer->AddRef(); }
  ULONG STDMETHODCALLTYPE Release() override { return m_outer->Release(); }

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* pctinfo) override {
    if (!pctinfo) return E_POINTER;
    *pctinfo = 1;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT iTInfo, LCID, ITypeInfo** ppTInfo) override {
    if (!ppTInfo) return E_POINTER;
    *ppTInfo = iTInfo == 0 ? DescribeInterface(described) : nullptr;
    return *ppTInfo ? S_OK : DISP_E_BADINDEX;
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID riid, LPOLESTR* rgszNames, UINT cNames, LCID,
                                          DISPID* rgDispId) override {
    return riid == IID_NULL ? described.FindIdsOfNames(rgszNames, cNames, rgDispId)
                            : DISP_E_UNKNOWNINTERFACE;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID dispIdMember, REFIID riid, LCID, WORD wFlags,
                                   DISPPARAMS* pDispParams, VARIANT* pVarResult,
                                   EXCEPINFO* pExcepInfo, UINT* puArgErr) override {
    return riid == IID_NULL ? InvokeMethod(described, *this, dispIdMember, wFlags, pDispParams,
                                           pVarResult, pExcepInfo, puArgErr)
                            : DISP_E_UNKNOWNINTERFACE;
  }

 protected:
  /// `outer` is the aggregate's controlling object or null.
  explicit DualObject(IUnknown* outer) : m_outer(outer ? outer : &m_inner) {}
  virtual ~DualObject() = default;

  /// Hands a new object out as the interface asked for; E_OUTOFMEMORY for none.
  static HRESULT HandOut(DualObject* object, REFIID riid, void** ppvObject) {
    if (!object) return E_OUTOFMEMORY;
    ComPtr<IUnknown> inner;
    inner.copyFrom(&object->m_inner);
    return inner->QueryInterface(riid, ppvObject);
  }

 private:
  /// The object's own references and interfaces, as the aggregate sees them.
  class InnerUnknown final : public IUnknown {
   public:
    explicit InnerUnknown(DualObject& object) : m_object(object) {}
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppvObject) override {
      if (!ppvObject) return E_POINTER;
      *ppvObject = nullptr;
      if (riid == IID_IUnknown) {
        *ppvObject = static_cast<IUnknown*>(this);
        AddRef();
        return S_OK;
      }
      if (riid != IID_IDispatch && riid != Interface::iid) return E_NOINTERFACE;
      *ppvObject = static_cast<Interface*>(&m_object);
      m_object.AddRef();
      return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
    ULONG STDMETHODCALLTYPE Release() override {
      const ULONG references = --m_references;
      if (references == 0) delete &m_object;
      return references;
    }

   private:
    DualObject& m_object;
    ULONG m_references = 0;
  };

  ModuleLock m_lock;
  InnerUnknown m_inner{*this};
  IUnknown* m_outer;  ///< not counted: the aggregate outlives its parts; `m_inner` without one
};

}  // namespace orxdb
