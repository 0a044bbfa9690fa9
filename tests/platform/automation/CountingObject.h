// An object on the stack that counts its references and answers its default property.
#pragma once

#include "platform/automation/Unknown.h"
#include "platform/automation/Variants.h"

class CountingObject final : public IDispatch {
 public:
  /// With null, every late-bound call fails.
  explicit CountingObject(const VARIANT* defaultProperty = nullptr) : m_default(defaultProperty) {}

  ULONG references() const { return m_references; }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppvObject) override {
    const bool known = riid == IID_IUnknown || (riid == IID_IDispatch && m_default);
    *ppvObject = known ? this : nullptr;
    if (known) AddRef();
    return known ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
  ULONG STDMETHODCALLTYPE Release() override { return --m_references; }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID dispIdMember, REFIID, LCID, WORD wFlags, DISPPARAMS*,
                                   VARIANT* pVarResult, EXCEPINFO*, UINT*) override {
    if (!m_default || dispIdMember != DISPID_VALUE || wFlags != DISPATCH_PROPERTYGET) {
      return DISP_E_MEMBERNOTFOUND;
    }
    return VariantCopy(pVarResult, m_default);
  }

 private:
  const VARIANT* m_default;
  ULONG m_references = 1;
};
