// The interfaces of automation: objects, late-bound calls, class factories and error reports; type
// descriptions are in TypeInfo.h.
// Interfaces derive from one another only, are never destroyed through a pointer, and hand out
// references that the caller releases.
#pragma once

#include "platform/automation/Types.h"

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

namespace orxdb {
/// The platform's own interfaces differ in the first member of their identifiers only.
constexpr IID StandardIid(std::uint32_t first) noexcept {
  return {first, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
}
}  // namespace orxdb

inline constexpr IID IID_IUnknown = orxdb::StandardIid(0x00000000);
inline constexpr IID IID_IClassFactory = orxdb::StandardIid(0x00000001);
inline constexpr IID IID_IDispatch = orxdb::StandardIid(0x00020400);
inline constexpr IID IID_ITypeInfo = orxdb::StandardIid(0x00020401);
inline constexpr IID IID_ITypeLib = orxdb::StandardIid(0x00020402);
inline constexpr IID IID_ITypeComp = orxdb::StandardIid(0x00020403);
inline constexpr IID IID_IErrorInfo = {
    0x1CF2B120, 0x547D, 0x101B, {0x8E, 0x65, 0x08, 0x00, 0x2B, 0x2B, 0xD1, 0x19}};
inline constexpr IID IID_ICreateErrorInfo = {
    0x22F03340, 0x547D, 0x101B, {0x8E, 0x65, 0x08, 0x00, 0x2B, 0x2B, 0xD1, 0x19}};
inline constexpr IID IID_ISupportErrorInfo = {
    0xDF0B3D60, 0x548F, 0x101B, {0x8E, 0x65, 0x08, 0x00, 0x2B, 0x2B, 0xD1, 0x19}};
inline constexpr IID IID_IProvideClassInfo = {
    0xB196B283, 0xBAB4, 0x101A, {0xB6, 0x9C, 0x00, 0xAA, 0x00, 0x34, 0x1D, 0x07}};

struct ITypeInfo;  // TypeInfo.h

struct IUnknown {
  static constexpr const IID& iid = IID_IUnknown;
  virtual HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppvObject) = 0;
  virtual ULONG STDMETHODCALLTYPE AddRef() = 0;
  virtual ULONG STDMETHODCALLTYPE Release() = 0;
};

inline constexpr WORD DISPATCH_METHOD = 0x1;
inline constexpr WORD DISPATCH_PROPERTYGET = 0x2;
inline constexpr WORD DISPATCH_PROPERTYPUT = 0x4;
inline constexpr WORD DISPATCH_PROPERTYPUTREF = 0x8;

inline constexpr DISPID DISPID_VALUE = 0;
inline constexpr DISPID DISPID_UNKNOWN = -1;
inline constexpr DISPID DISPID_PROPERTYPUT = -3;

/// Arguments of a late-bound call: `rgvarg` in reverse order, the named ones before the others.
struct DISPPARAMS {
  VARIANTARG* rgvarg;
  DISPID* rgdispidNamedArgs;
  UINT cArgs;
  UINT cNamedArgs;
};

/// What a failed late-bound call tells; the caller frees the three strings.
struct EXCEPINFO {
  WORD wCode;
  WORD wReserved;
  BSTR bstrSource;
  BSTR bstrDescription;
  BSTR bstrHelpFile;
  DWORD dwHelpContext;
  PVOID pvReserved;
  HRESULT(STDMETHODCALLTYPE* pfnDeferredFillIn)(EXCEPINFO*);
  SCODE scode;
};

struct IDispatch : public IUnknown {
  static constexpr const IID& iid = IID_IDispatch;
  virtual HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* pctinfo) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT iTInfo, LCID lcid, ITypeInfo** ppTInfo) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID riid, LPOLESTR* rgszNames, UINT cNames,
                                                  LCID lcid, DISPID* rgDispId) = 0;
  virtual HRESULT STDMETHODCALLTYPE Invoke(DISPID dispIdMember, REFIID riid, LCID lcid, WORD wFlags,
                                           DISPPARAMS* pDispParams, VARIANT* pVarResult,
                                           EXCEPINFO* pExcepInfo, UINT* puArgErr) = 0;
};

struct IClassFactory : public IUnknown {
  static constexpr const IID& iid = IID_IClassFactory;
  virtual HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* pUnkOuter, REFIID riid,
                                                   void** ppvObject) = 0;
  virtual HRESULT STDMETHODCALLTYPE LockServer(BOOL fLock) = 0;
};

struct IErrorInfo : public IUnknown {
  static constexpr const IID& iid = IID_IErrorInfo;
  virtual HRESULT STDMETHODCALLTYPE GetGUID(GUID* pGUID) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetSource(BSTR* pBstrSource) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetDescription(BSTR* pBstrDescription) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetHelpFile(BSTR* pBstrHelpFile) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetHelpContext(DWORD* pdwHelpContext) = 0;
};

struct ICreateErrorInfo : public IUnknown {
  static constexpr const IID& iid = IID_ICreateErrorInfo;
  virtual HRESULT STDMETHODCALLTYPE SetGUID(REFGUID rguid) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetSource(LPOLESTR szSource) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetDescription(LPOLESTR szDescription) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetHelpFile(LPOLESTR szHelpFile) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetHelpContext(DWORD dwHelpContext) = 0;
};

struct ISupportErrorInfo : public IUnknown {
  static constexpr const IID& iid = IID_ISupportErrorInfo;
  virtual HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID riid) = 0;
};

#pragma GCC diagnostic pop
