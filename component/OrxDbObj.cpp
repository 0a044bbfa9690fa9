// The object itself: interfaces, references, lifetimes.
#include "component/OrxDbObj.h"

#include <memory>
#include <new>
#include <utility>
#include <vector>

#include "component/Dispatch.h"
#include "component/LanguageResources.h"
#include "component/MethodFrame.h"
#include "component/MethodTable.h"
#include "component/TypeDescription.h"
#include "platform/automation/ComPtr.h"
#include "platform/framework/Text.h"
#include "resources/StringTable.h"

using orxdb::ComponentString;
using orxdb::ComPtr;
using orxdb::Guard;
using orxdb::ModuleStateSwitch;
using orxdb::RunMethod;

namespace {

/// Takes the data object out of its slot and leaves it to itself, its open database included. It
/// is not destroyed, for another object may be in the middle of a call on it; being listed here it
/// does not count as lost memory either.
void AbandonToolDbData() {
  if (!g_pToolDbData) return;
  static auto& abandoned = *new std::vector<CToolDbData*>;
  abandoned.push_back(g_pToolDbData);
  g_pToolDbData = nullptr;
}

/// Destroys the data object in the slot, and with it every use of the engine in this process.
void EndToolDbData() {
  if (std::unique_ptr<CToolDbData> data{std::exchange(g_pToolDbData, nullptr)}) {
    data.reset();
    AfxDaoTerm();
  }
}

}  // namespace

HRESULT OrxDbObj::Create(IUnknown* outer, REFIID riid, void** ppvObject) {
  ComPtr<IUnknown> inner;
  {
    auto* object = new (std::nothrow) OrxDbObj(outer);
    if (!object) return E_OUTOFMEMORY;
    inner.copyFrom(&object->m_inner);
  }
  return inner->QueryInterface(riid, ppvObject);
}

OrxDbObj::OrxDbObj(IUnknown* outer) : m_inner(*this), m_outer(outer ? outer : &m_inner) {
  orxdb::UseLanguageOfUser();
  const ModuleStateSwitch active(orxdb::ComponentModuleState());
  m_strYes = ComponentString(orxdb::IDS_YES);
  m_strNo = ComponentString(orxdb::IDS_NO);
  AbandonToolDbData();
  g_pToolDbData = std::make_unique<CToolDbData>().release();
}

OrxDbObj::~OrxDbObj() {
  EndToolDbData();
}

HRESULT OrxDbObj::InnerUnknown::QueryInterface(REFIID riid, void** ppvObject) {
  if (!ppvObject) return E_POINTER;
  *ppvObject = nullptr;
  if (riid == IID_IUnknown) {
    *ppvObject = static_cast<IUnknown*>(this);
    AddRef();
    return S_OK;
  }
  if (riid != IID_IDispatch && riid != IID_IOrxDbObj) return E_NOINTERFACE;
  *ppvObject = static_cast<IOrxDbObj*>(&m_object);
  m_object.AddRef();
  return S_OK;
}

ULONG OrxDbObj::InnerUnknown::AddRef() {
  return ++m_references;
}

ULONG OrxDbObj::InnerUnknown::Release() {
  const ULONG references = --m_references;
  if (references == 0) delete &m_object;
  return references;
}

HRESULT OrxDbObj::QueryInterface(REFIID riid, void** ppvObject) {
  return m_outer->QueryInterface(riid, ppvObject);
}
ULONG OrxDbObj::AddRef() {
  return m_outer->AddRef();
}
ULONG OrxDbObj::Release() {
  return m_outer->Release();
}

HRESULT OrxDbObj::GetTypeInfoCount(UINT* pctinfo) {
  if (!pctinfo) return E_POINTER;
  *pctinfo = 1;
  return S_OK;
}
HRESULT OrxDbObj::GetTypeInfo(UINT iTInfo, LCID, ITypeInfo** ppTInfo) {
  if (!ppTInfo) return E_POINTER;
  *ppTInfo = iTInfo == 0 ? orxdb::DescribeInterface() : nullptr;
  return *ppTInfo ? S_OK : DISP_E_BADINDEX;
}
HRESULT OrxDbObj::GetIDsOfNames(REFIID riid, LPOLESTR* rgszNames, UINT cNames, LCID,
                                DISPID* rgDispId) {
  return riid == IID_NULL ? orxdb::FindIdsOfNames(rgszNames, cNames, rgDispId)
                          : DISP_E_UNKNOWNINTERFACE;
}
HRESULT OrxDbObj::Invoke(DISPID dispIdMember, REFIID riid, LCID, WORD wFlags,
                         DISPPARAMS* pDispParams, VARIANT* pVarResult, EXCEPINFO* pExcepInfo,
                         UINT* puArgErr) {
  return riid == IID_NULL ? orxdb::InvokeMethod(*this, dispIdMember, wFlags, pDispParams,
                                                pVarResult, pExcepInfo, puArgErr)
                          : DISP_E_UNKNOWNINTERFACE;
}
