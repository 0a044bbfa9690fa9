// An object that counts its references, outside the heap, and may have a number.
#pragma once

#include "platform/automation/Unknown.h"
#include "platform/automation/Variant.h"

namespace orxdb::test {

struct CountingObject final : public IDispatch {
  /// The number is its default property. Without one it takes no late-bound calls.
  explicit CountingObject(LONG number = 0) : m_number(number) {}

  /// The object in a variant, which holds a reference.
  Variant Value(VARTYPE type) {
    VARIANT value{};
    value.vt = type;
    value.pdispVal = this;
    return Variant::CopyOf(value);
  }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppvObject) override {
    const bool known = riid == IID_IUnknown || (riid == IID_IDispatch && m_number);
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
    if (dispIdMember != DISPID_VALUE || wFlags != DISPATCH_PROPERTYGET) return E_UNEXPECTED;
    *pVarResult = Variant::FromI4(m_number).detach();
    return S_OK;
  }

  const LONG m_number;
  ULONG m_references = 1;
};

}  // namespace orxdb::test
