#include "platform/automation/ErrorInfo.h"

#include <atomic>
#include <new>

#include "platform/automation/Bstr.h"
#include "platform/automation/ComPtr.h"

namespace orxdb {
namespace {

/// One error report: written through ICreateErrorInfo, read through IErrorInfo.
class CErrorInfo final : public ICreateErrorInfo, public IErrorInfo {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppvObject) override {
    if (!ppvObject) return E_POINTER;
    *ppvObject = nullptr;
    if (riid == IID_IUnknown || riid == IID_ICreateErrorInfo) {
      *ppvObject = static_cast<ICreateErrorInfo*>(this);
    } else if (riid == IID_IErrorInfo) {
      *ppvObject = static_cast<IErrorInfo*>(this);
    } else {
      return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --m_references;
    if (left == 0) delete this;
    return left;
  }

  HRESULT STDMETHODCALLTYPE SetGUID(REFGUID rguid) override {
    m_guid = rguid;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE SetSource(LPOLESTR szSource) override {
    return Store(m_source, szSource);
  }
  HRESULT STDMETHODCALLTYPE SetDescription(LPOLESTR szDescription) override {
    return Store(m_description, szDescription);
  }
  HRESULT STDMETHODCALLTYPE SetHelpFile(LPOLESTR szHelpFile) override {
    return Store(m_helpFile, szHelpFile);
  }
  HRESULT STDMETHODCALLTYPE SetHelpContext(DWORD dwHelpContext) override {
    m_helpContext = dwHelpContext;
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE GetGUID(GUID* pGUID) override { return Hand(m_guid, pGUID); }
  HRESULT STDMETHODCALLTYPE GetSource(BSTR* pBstrSource) override {
    return Hand(m_source, pBstrSource);
  }
  HRESULT STDMETHODCALLTYPE GetDescription(BSTR* pBstrDescription) override {
    return Hand(m_description, pBstrDescription);
  }
  HRESULT STDMETHODCALLTYPE GetHelpFile(BSTR* pBstrHelpFile) override {
    return Hand(m_helpFile, pBstrHelpFile);
  }
  HRESULT STDMETHODCALLTYPE GetHelpContext(DWORD* pdwHelpContext) override {
    return Hand(m_helpContext, pdwHelpContext);
  }

 private:
  virtual ~CErrorInfo() = default;

  static HRESULT Store(Bstr& place, const OLECHAR* text) {
    BSTR copy = SysAllocString(text);
    if (text && !copy) return E_OUTOFMEMORY;
    place.attach(copy);
    return S_OK;
  }
  /// A text never set reads as null.
  static HRESULT Hand(const Bstr& text, BSTR* out) {
    if (!out) return E_INVALIDARG;
    *out = text ? SysAllocStringLen(text.get(), SysStringLen(text.get())) : nullptr;
    return text && !*out ? E_OUTOFMEMORY : S_OK;
  }
  template <typename T>
  static HRESULT Hand(const T& value, T* out) {
    if (!out) return E_INVALIDARG;
    *out = value;
    return S_OK;
  }

  std::atomic<ULONG> m_references{1};
  GUID m_guid{};
  Bstr m_source;
  Bstr m_description;
  Bstr m_helpFile;
  DWORD m_helpContext = 0;
};

thread_local ComPtr<IErrorInfo> t_report;

}  // namespace
}  // namespace orxdb

HRESULT CreateErrorInfo(ICreateErrorInfo** created) {
  if (!created) return E_INVALIDARG;
  *created = new (std::nothrow) orxdb::CErrorInfo;
  return *created ? S_OK : E_OUTOFMEMORY;
}

HRESULT SetErrorInfo(ULONG reserved, IErrorInfo* info) {
  if (reserved != 0) return E_INVALIDARG;
  orxdb::t_report.copyFrom(info);
  return S_OK;
}

HRESULT GetErrorInfo(ULONG reserved, IErrorInfo** info) {
  if (reserved != 0 || !info) return E_INVALIDARG;
  *info = orxdb::t_report.detach();
  return *info ? S_OK : S_FALSE;
}
