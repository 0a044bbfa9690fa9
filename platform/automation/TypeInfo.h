// Type descriptions: what a type library tells of a class, its interface and the interface's
// methods. Structures and interfaces have the standard layout; whoever implements them decides
// which methods answer E_NOTIMPL.
#pragma once

#include "platform/automation/Types.h"
#include "platform/automation/Unknown.h"

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

struct ITypeComp;
struct ITypeLib;

enum TYPEKIND {
  TKIND_ENUM,
  TKIND_RECORD,
  TKIND_MODULE,
  TKIND_INTERFACE,
  TKIND_DISPATCH,
  TKIND_COCLASS,
  TKIND_ALIAS,
  TKIND_UNION,
  TKIND_MAX
};
enum CALLCONV { CC_CDECL = 1, CC_STDCALL = 4 };
enum FUNCKIND { FUNC_VIRTUAL, FUNC_PUREVIRTUAL, FUNC_NONVIRTUAL, FUNC_STATIC, FUNC_DISPATCH };
enum INVOKEKIND {
  INVOKE_FUNC = DISPATCH_METHOD,
  INVOKE_PROPERTYGET = DISPATCH_PROPERTYGET,
  INVOKE_PROPERTYPUT = DISPATCH_PROPERTYPUT,
  INVOKE_PROPERTYPUTREF = DISPATCH_PROPERTYPUTREF
};
enum VARKIND { VAR_PERINSTANCE, VAR_STATIC, VAR_CONST, VAR_DISPATCH };
enum DESCKIND { DESCKIND_NONE, DESCKIND_FUNCDESC, DESCKIND_VARDESC, DESCKIND_TYPECOMP };
enum SYSKIND { SYS_WIN16, SYS_WIN32, SYS_MAC, SYS_WIN64 };

inline constexpr USHORT PARAMFLAG_NONE = 0x0;
inline constexpr USHORT PARAMFLAG_FIN = 0x1;
inline constexpr USHORT PARAMFLAG_FOUT = 0x2;
inline constexpr USHORT PARAMFLAG_FLCID = 0x4;
inline constexpr USHORT PARAMFLAG_FRETVAL = 0x8;
inline constexpr USHORT PARAMFLAG_FOPT = 0x10;
inline constexpr USHORT PARAMFLAG_FHASDEFAULT = 0x20;

inline constexpr WORD TYPEFLAG_FCANCREATE = 0x2;
inline constexpr WORD TYPEFLAG_FDUAL = 0x40;
inline constexpr WORD TYPEFLAG_FNONEXTENSIBLE = 0x80;
inline constexpr WORD TYPEFLAG_FOLEAUTOMATION = 0x100;
inline constexpr WORD TYPEFLAG_FDISPATCHABLE = 0x1000;

inline constexpr INT IMPLTYPEFLAG_FDEFAULT = 0x1;

inline constexpr MEMBERID MEMBERID_NIL = DISPID_UNKNOWN;

struct TYPEDESC;
struct ARRAYDESC;

/// A type; `lptdesc` for VT_PTR and VT_SAFEARRAY, `lpadesc` for VT_CARRAY, `hreftype` for
/// VT_USERDEFINED.
struct TYPEDESC {
  union {
    TYPEDESC* lptdesc;
    ARRAYDESC* lpadesc;
    HREFTYPE hreftype;
  };
  VARTYPE vt;
};

struct ARRAYDESC {
  TYPEDESC tdescElem;
  USHORT cDims;
  SAFEARRAYBOUND rgbounds[1];
};

/// Default value of an optional parameter.
struct PARAMDESCEX {
  ULONG cBytes;
  VARIANTARG varDefaultValue;
};

struct PARAMDESC {
  PARAMDESCEX* pparamdescex;
  USHORT wParamFlags;
};

struct IDLDESC {
  std::uintptr_t dwReserved;
  USHORT wIDLFlags;
};

struct ELEMDESC {
  TYPEDESC tdesc;
  union {
    IDLDESC idldesc;
    PARAMDESC paramdesc;
  };
};

struct FUNCDESC {
  MEMBERID memid;
  SCODE* lprgscode;
  ELEMDESC* lprgelemdescParam;
  FUNCKIND funckind;
  INVOKEKIND invkind;
  CALLCONV callconv;
  SHORT cParams;
  SHORT cParamsOpt;
  SHORT oVft;
  SHORT cScodes;
  ELEMDESC elemdescFunc;
  WORD wFuncFlags;
};

struct VARDESC {
  MEMBERID memid;
  LPOLESTR lpstrSchema;
  union {
    ULONG oInst;
    VARIANT* lpvarValue;
  };
  ELEMDESC elemdescVar;
  WORD wVarFlags;
  VARKIND varkind;
};

struct TYPEATTR {
  GUID guid;
  LCID lcid;
  DWORD dwReserved;
  MEMBERID memidConstructor;
  MEMBERID memidDestructor;
  LPOLESTR lpstrSchema;
  ULONG cbSizeInstance;
  TYPEKIND typekind;
  WORD cFuncs;
  WORD cVars;
  WORD cImplTypes;
  WORD cbSizeVft;
  WORD cbAlignment;
  WORD wTypeFlags;
  WORD wMajorVerNum;
  WORD wMinorVerNum;
  TYPEDESC tdescAlias;
  IDLDESC idldescType;
};

struct TLIBATTR {
  GUID guid;
  LCID lcid;
  SYSKIND syskind;
  WORD wMajorVerNum;
  WORD wMinorVerNum;
  WORD wLibFlags;
};

union BINDPTR {
  FUNCDESC* lpfuncdesc;
  VARDESC* lpvardesc;
  ITypeComp* lptcomp;
};

/// Describes one type. What the Get…Attr and Get…Desc calls hand out goes back through the
/// matching Release… call; strings belong to the caller.
struct ITypeInfo : public IUnknown {
  static constexpr const IID& iid = IID_ITypeInfo;
  virtual HRESULT STDMETHODCALLTYPE GetTypeAttr(TYPEATTR** ppTypeAttr) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetTypeComp(ITypeComp** ppTComp) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetFuncDesc(UINT index, FUNCDESC** ppFuncDesc) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetVarDesc(UINT index, VARDESC** ppVarDesc) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetNames(MEMBERID memid, BSTR* rgBstrNames, UINT cMaxNames,
                                             UINT* pcNames) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetRefTypeOfImplType(UINT index, HREFTYPE* pRefType) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetImplTypeFlags(UINT index, INT* pImplTypeFlags) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetIDsOfNames(LPOLESTR* rgszNames, UINT cNames,
                                                  MEMBERID* pMemId) = 0;
  virtual HRESULT STDMETHODCALLTYPE Invoke(PVOID pvInstance, MEMBERID memid, WORD wFlags,
                                           DISPPARAMS* pDispParams, VARIANT* pVarResult,
                                           EXCEPINFO* pExcepInfo, UINT* puArgErr) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetDocumentation(MEMBERID memid, BSTR* pBstrName,
                                                     BSTR* pBstrDocString, DWORD* pdwHelpContext,
                                                     BSTR* pBstrHelpFile) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetDllEntry(MEMBERID memid, INVOKEKIND invKind,
                                                BSTR* pBstrDllName, BSTR* pBstrName,
                                                WORD* pwOrdinal) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetRefTypeInfo(HREFTYPE hRefType, ITypeInfo** ppTInfo) = 0;
  virtual HRESULT STDMETHODCALLTYPE AddressOfMember(MEMBERID memid, INVOKEKIND invKind,
                                                    PVOID* ppv) = 0;
  virtual HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* pUnkOuter, REFIID riid,
                                                   PVOID* ppvObj) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetMops(MEMBERID memid, BSTR* pBstrMops) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetContainingTypeLib(ITypeLib** ppTLib, UINT* pIndex) = 0;
  virtual void STDMETHODCALLTYPE ReleaseTypeAttr(TYPEATTR* pTypeAttr) = 0;
  virtual void STDMETHODCALLTYPE ReleaseFuncDesc(FUNCDESC* pFuncDesc) = 0;
  virtual void STDMETHODCALLTYPE ReleaseVarDesc(VARDESC* pVarDesc) = 0;
};

/// Describes a library of types, numbered from 0.
struct ITypeLib : public IUnknown {
  static constexpr const IID& iid = IID_ITypeLib;
  virtual UINT STDMETHODCALLTYPE GetTypeInfoCount() = 0;
  virtual HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, ITypeInfo** ppTInfo) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetTypeInfoType(UINT index, TYPEKIND* pTKind) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetTypeInfoOfGuid(REFGUID guid, ITypeInfo** ppTInfo) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetLibAttr(TLIBATTR** ppTLibAttr) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetTypeComp(ITypeComp** ppTComp) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetDocumentation(INT index, BSTR* pBstrName,
                                                     BSTR* pBstrDocString, DWORD* pdwHelpContext,
                                                     BSTR* pBstrHelpFile) = 0;
  virtual HRESULT STDMETHODCALLTYPE IsName(LPOLESTR szNameBuf, ULONG lHashVal, BOOL* pfName) = 0;
  virtual HRESULT STDMETHODCALLTYPE FindName(LPOLESTR szNameBuf, ULONG lHashVal,
                                             ITypeInfo** ppTInfo, MEMBERID* rgMemId,
                                             USHORT* pcFound) = 0;
  virtual void STDMETHODCALLTYPE ReleaseTLibAttr(TLIBATTR* pTLibAttr) = 0;
};

/// The type of an object that has one.
struct IProvideClassInfo : public IUnknown {
  static constexpr const IID& iid = IID_IProvideClassInfo;
  virtual HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** ppTI) = 0;
};

struct ITypeComp : public IUnknown {
  static constexpr const IID& iid = IID_ITypeComp;
  virtual HRESULT STDMETHODCALLTYPE Bind(LPOLESTR szName, ULONG lHashVal, WORD wFlags,
                                         ITypeInfo** ppTInfo, DESCKIND* pDescKind,
                                         BINDPTR* pBindPtr) = 0;
  virtual HRESULT STDMETHODCALLTYPE BindType(LPOLESTR szName, ULONG lHashVal, ITypeInfo** ppTInfo,
                                             ITypeComp** ppTComp) = 0;
};

#pragma GCC diagnostic pop
