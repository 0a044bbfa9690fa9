#include "component/TypeDescription.h"

#include <memory>
#include <string>

#include "component/Dispatch.h"
#include "component/MethodTable.h"
#include "component/Module.h"
#include "platform/automation/Bstr.h"

namespace orxdb {
namespace {

/// Slots of IUnknown and IDispatch before the first method.
constexpr int kInheritedSlots = 7;
constexpr HREFTYPE kInterface = 0;
constexpr HREFTYPE kClass = 1;
constexpr HREFTYPE kPartner = 2;  ///< behind the two types that the library numbers
constexpr UINT kLibraryTypes = 2;

struct TypeEntry {
  TYPEKIND kind;
  const DescribedType& type;
  WORD flags;
  std::size_t functions;
  WORD implemented;
};

constexpr WORD kDualFlags =
    TYPEFLAG_FDUAL | TYPEFLAG_FNONEXTENSIBLE | TYPEFLAG_FOLEAUTOMATION | TYPEFLAG_FDISPATCHABLE;

constexpr std::array<TypeEntry, 3> kTypes = {{
    {TKIND_DISPATCH, kDescribedInterface, kDualFlags, kMethodCount, 0},
    {TKIND_COCLASS, kDescribedClass, TYPEFLAG_FCANCREATE, 0, 1},
    {TKIND_INTERFACE, kDescribedInterface, kDualFlags, kMethodCount, 0},
}};

/// Puts new strings where they are asked for; help files and contexts there are none.
HRESULT Document(std::u16string_view name, std::u16string_view help, BSTR* nameOut, BSTR* helpOut,
                 DWORD* contextOut, BSTR* fileOut) noexcept try {
  if (contextOut) *contextOut = 0;
  if (fileOut) *fileOut = nullptr;
  Bstr newName(name);
  if (helpOut) *helpOut = Bstr(help).detach();
  if (nameOut) *nameOut = newName.detach();
  return S_OK;
} catch (const std::bad_alloc&) {
  return E_OUTOFMEMORY;
}

/// A function description and all that it points to; hosts hold its first member.
struct FunctionBlock {
  FUNCDESC description{};
  std::array<ELEMDESC, kMaxParameters> elements{};
  std::array<TYPEDESC, kMaxParameters> referred{};
  std::array<PARAMDESCEX, kMaxParameters> defaults{};

  FunctionBlock(const Method& method, TYPEKIND kind) {
    for (std::size_t i = 0; i < method.parameterCount; ++i) AddParameter(method.slots[i], i);
    description.memid = method.id;
    description.lprgelemdescParam = elements.data();
    description.funckind = kind == TKIND_DISPATCH ? FUNC_DISPATCH : FUNC_PUREVIRTUAL;
    description.invkind = INVOKE_FUNC;
    description.callconv = CC_STDCALL;
    description.cParams = static_cast<SHORT>(method.parameterCount);
    description.cParamsOpt = static_cast<SHORT>(method.optionalCount);
    description.oVft =
        static_cast<SHORT>((kInheritedSlots + method.id - 1) * static_cast<int>(sizeof(void*)));
    description.elemdescFunc.tdesc.vt = kind == TKIND_DISPATCH ? VT_VOID : VT_HRESULT;
  }

 private:
  void AddParameter(const Parameter& parameter, std::size_t i) {
    ELEMDESC& element = elements[i];
    element.tdesc.vt = parameter.type;
    if (parameter.byReference) {
      referred[i].vt = parameter.type;
      element.tdesc.vt = VT_PTR;
      element.tdesc.lptdesc = &referred[i];
    }
    element.paramdesc.wParamFlags = parameter.flags;
    if (parameter.flags & PARAMFLAG_FHASDEFAULT) {
      defaults[i].cBytes = sizeof(PARAMDESCEX);
      defaults[i].varDefaultValue.vt = VT_I4;
      defaults[i].varDefaultValue.lVal = parameter.defaultValue;
      element.paramdesc.pparamdescex = &defaults[i];
    }
  }
};

/// An object that lives as long as the module: a reference to it is a lock on the module.
template <typename Interface>
class Resident : public Interface {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppvObject) override {
    if (!ppvObject) return E_POINTER;
    *ppvObject = nullptr;
    if (riid != IID_IUnknown && riid != Interface::iid) return E_NOINTERFACE;
    *ppvObject = static_cast<Interface*>(this);
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override {
    ModuleLock::Lock();
    return 2;
  }
  ULONG STDMETHODCALLTYPE Release() override {
    ModuleLock::Unlock();
    return 1;
  }
};

/// Gives a resident object with a reference, or null with the status.
template <typename Interface>
HRESULT Give(Interface* object, Interface** out, HRESULT otherwise) {
  if (!out) return E_POINTER;
  *out = object;
  if (!object) return otherwise;
  object->AddRef();
  return S_OK;
}

ITypeLib& TheLibrary();
ITypeInfo* TypeAt(HREFTYPE index);

class TypeInformation final : public Resident<ITypeInfo> {
 public:
  explicit TypeInformation(UINT index) : m_index(index), m_entry(kTypes[index]) {}

  HRESULT STDMETHODCALLTYPE GetTypeAttr(TYPEATTR** ppTypeAttr) override {
    if (!ppTypeAttr) return E_POINTER;
    *ppTypeAttr = new (std::nothrow) TYPEATTR{};
    if (!*ppTypeAttr) return E_OUTOFMEMORY;
    TYPEATTR& attributes = **ppTypeAttr;
    attributes.guid = m_entry.type.guid;
    attributes.memidConstructor = MEMBERID_NIL;
    attributes.memidDestructor = MEMBERID_NIL;
    attributes.cbSizeInstance = sizeof(void*);
    attributes.typekind = m_entry.kind;
    attributes.cFuncs = static_cast<WORD>(m_entry.functions);
    attributes.cImplTypes = m_entry.implemented;
    attributes.cbSizeVft = static_cast<WORD>(
        m_entry.functions ? (kInheritedSlots + m_entry.functions) * sizeof(void*) : 0);
    attributes.cbAlignment = alignof(void*);
    attributes.wTypeFlags = m_entry.flags;
    attributes.wMajorVerNum = kLibraryMajor;
    attributes.wMinorVerNum = kLibraryMinor;
    return S_OK;
  }
  void STDMETHODCALLTYPE ReleaseTypeAttr(TYPEATTR* pTypeAttr) override {
    std::unique_ptr<TYPEATTR>{pTypeAttr}.reset();
  }

  HRESULT STDMETHODCALLTYPE GetFuncDesc(UINT index, FUNCDESC** ppFuncDesc) override {
    if (!ppFuncDesc) return E_POINTER;
    *ppFuncDesc = nullptr;
    if (index >= m_entry.functions) return TYPE_E_ELEMENTNOTFOUND;
    auto* const block = new (std::nothrow) FunctionBlock(Methods()[index], m_entry.kind);
    if (!block) return E_OUTOFMEMORY;
    *ppFuncDesc = &block->description;
    return S_OK;
  }
  void STDMETHODCALLTYPE ReleaseFuncDesc(FUNCDESC* pFuncDesc) override {
    std::unique_ptr<FunctionBlock>{reinterpret_cast<FunctionBlock*>(pFuncDesc)}.reset();
  }

  HRESULT STDMETHODCALLTYPE GetNames(MEMBERID memid, BSTR* rgBstrNames, UINT cMaxNames,
                                     UINT* pcNames) override try {
    if (!rgBstrNames || !pcNames) return E_POINTER;
    *pcNames = 0;
    const Method* const method = Find(memid);
    if (!method) return TYPE_E_ELEMENTNOTFOUND;
    std::array<Bstr, kMaxParameters + 1> names;
    const UINT count = std::min(cMaxNames, method->parameterCount + 1);
    for (UINT i = 0; i < count; ++i) {
      names[i] = Bstr(i == 0 ? method->name : method->slots[i - 1].name);
    }
    for (UINT i = 0; i < count; ++i) rgBstrNames[i] = names[i].detach();
    *pcNames = count;
    return S_OK;
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  }

  HRESULT STDMETHODCALLTYPE GetIDsOfNames(LPOLESTR* rgszNames, UINT cNames,
                                          MEMBERID* pMemId) override {
    if (m_entry.functions == 0) return DISP_E_UNKNOWNNAME;
    return FindIdsOfNames(rgszNames, cNames, pMemId);
  }

  HRESULT STDMETHODCALLTYPE GetDocumentation(MEMBERID memid, BSTR* pBstrName, BSTR* pBstrDocString,
                                             DWORD* pdwHelpContext, BSTR* pBstrHelpFile) override
      try {
    if (memid == MEMBERID_NIL) {
      return Document(m_entry.type.name, m_entry.type.help, pBstrName, pBstrDocString,
                      pdwHelpContext, pBstrHelpFile);
    }
    const Method* const method = Find(memid);
    if (!method) return TYPE_E_ELEMENTNOTFOUND;
    return Document(method->name, HelpOf(*method), pBstrName, pBstrDocString, pdwHelpContext,
                    pBstrHelpFile);
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  }

  HRESULT STDMETHODCALLTYPE Invoke(PVOID pvInstance, MEMBERID memid, WORD wFlags,
                                   DISPPARAMS* pDispParams, VARIANT* pVarResult,
                                   EXCEPINFO* pExcepInfo, UINT* puArgErr) override {
    if (!pvInstance) return E_INVALIDARG;
    if (m_entry.functions == 0) return DISP_E_MEMBERNOTFOUND;
    return InvokeMethod(*static_cast<IOrxDbObj*>(pvInstance), memid, wFlags, pDispParams,
                        pVarResult, pExcepInfo, puArgErr);
  }

  HRESULT STDMETHODCALLTYPE GetRefTypeOfImplType(UINT index, HREFTYPE* pRefType) override {
    if (!pRefType) return E_POINTER;
    const bool partner = index == static_cast<UINT>(-1) && m_entry.kind != TKIND_COCLASS;
    if (!partner && index >= m_entry.implemented) return TYPE_E_ELEMENTNOTFOUND;
    *pRefType = partner && m_entry.kind == TKIND_DISPATCH ? kPartner : 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetImplTypeFlags(UINT index, INT* pImplTypeFlags) override {
    if (!pImplTypeFlags) return E_POINTER;
    if (index >= m_entry.implemented) return TYPE_E_ELEMENTNOTFOUND;
    *pImplTypeFlags = IMPLTYPEFLAG_FDEFAULT;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetRefTypeInfo(HREFTYPE hRefType, ITypeInfo** ppTInfo) override {
    return Give(TypeAt(hRefType), ppTInfo, TYPE_E_ELEMENTNOTFOUND);
  }
  HRESULT STDMETHODCALLTYPE GetContainingTypeLib(ITypeLib** ppTLib, UINT* pIndex) override {
    if (pIndex) *pIndex = m_index % kPartner;
    return ppTLib || !pIndex ? Give(&TheLibrary(), ppTLib, S_OK) : S_OK;
  }

  HRESULT STDMETHODCALLTYPE GetVarDesc(UINT, VARDESC** ppVarDesc) override {
    if (!ppVarDesc) return E_POINTER;
    *ppVarDesc = nullptr;
    return TYPE_E_ELEMENTNOTFOUND;
  }
  void STDMETHODCALLTYPE ReleaseVarDesc(VARDESC*) override {}
  HRESULT STDMETHODCALLTYPE GetTypeComp(ITypeComp** ppTComp) override {
    return Give<ITypeComp>(nullptr, ppTComp, E_NOTIMPL);
  }
  HRESULT STDMETHODCALLTYPE GetDllEntry(MEMBERID, INVOKEKIND, BSTR*, BSTR*, WORD*) override {
    return TYPE_E_BADMODULEKIND;
  }
  HRESULT STDMETHODCALLTYPE AddressOfMember(MEMBERID, INVOKEKIND, PVOID*) override {
    return TYPE_E_BADMODULEKIND;
  }
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID, PVOID*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetMops(MEMBERID, BSTR*) override { return E_NOTIMPL; }

 private:
  const Method* Find(MEMBERID memid) const noexcept {
    return m_entry.functions ? FindMethod(memid) : nullptr;
  }

  UINT m_index;
  const TypeEntry& m_entry;
};

class TypeLibrary final : public Resident<ITypeLib> {
 public:
  UINT STDMETHODCALLTYPE GetTypeInfoCount() override { return kLibraryTypes; }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, ITypeInfo** ppTInfo) override {
    return Give(index < kLibraryTypes ? TypeAt(index) : nullptr, ppTInfo, TYPE_E_ELEMENTNOTFOUND);
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfoType(UINT index, TYPEKIND* pTKind) override {
    if (!pTKind) return E_POINTER;
    if (index >= kLibraryTypes) return TYPE_E_ELEMENTNOTFOUND;
    *pTKind = kTypes[index].kind;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfoOfGuid(REFGUID guid, ITypeInfo** ppTInfo) override {
    const auto* const found =
        std::ranges::find(kTypes, guid, [](const TypeEntry& entry) { return entry.type.guid; });
    return Give(
        found == kTypes.end() ? nullptr : TypeAt(static_cast<HREFTYPE>(found - kTypes.begin())),
        ppTInfo, TYPE_E_ELEMENTNOTFOUND);
  }

  HRESULT STDMETHODCALLTYPE GetLibAttr(TLIBATTR** ppTLibAttr) override {
    if (!ppTLibAttr) return E_POINTER;
    *ppTLibAttr = new (std::nothrow) TLIBATTR{};
    if (!*ppTLibAttr) return E_OUTOFMEMORY;
    (*ppTLibAttr)->guid = kDescribedLibrary.guid;
    (*ppTLibAttr)->syskind = SYS_WIN64;
    (*ppTLibAttr)->wMajorVerNum = kLibraryMajor;
    (*ppTLibAttr)->wMinorVerNum = kLibraryMinor;
    return S_OK;
  }
  void STDMETHODCALLTYPE ReleaseTLibAttr(TLIBATTR* pTLibAttr) override {
    std::unique_ptr<TLIBATTR>{pTLibAttr}.reset();
  }

  HRESULT STDMETHODCALLTYPE GetDocumentation(INT index, BSTR* pBstrName, BSTR* pBstrDocString,
                                             DWORD* pdwHelpContext, BSTR* pBstrHelpFile) override {
    if (index == -1) {
      return Document(kDescribedLibrary.name, kDescribedLibrary.help, pBstrName, pBstrDocString,
                      pdwHelpContext, pBstrHelpFile);
    }
    const auto type = static_cast<UINT>(index);
    if (type >= kLibraryTypes) return TYPE_E_ELEMENTNOTFOUND;
    return Document(kTypes[type].type.name, kTypes[type].type.help, pBstrName, pBstrDocString,
                    pdwHelpContext, pBstrHelpFile);
  }

  HRESULT STDMETHODCALLTYPE GetTypeComp(ITypeComp** ppTComp) override {
    return Give<ITypeComp>(nullptr, ppTComp, E_NOTIMPL);
  }
  HRESULT STDMETHODCALLTYPE IsName(LPOLESTR, ULONG, BOOL*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE FindName(LPOLESTR, ULONG, ITypeInfo**, MEMBERID*, USHORT*) override {
    return E_NOTIMPL;
  }
};

ITypeLib& TheLibrary() {
  static TypeLibrary library;
  return library;
}

ITypeInfo* TypeAt(HREFTYPE index) {
  static std::array<TypeInformation, kTypes.size()> types{TypeInformation(0), TypeInformation(1),
                                                          TypeInformation(2)};
  return index < types.size() ? &types[index] : nullptr;
}

ITypeInfo* Referred(HREFTYPE index) {
  ITypeInfo* const description = TypeAt(index);
  description->AddRef();
  return description;
}

}  // namespace

ITypeInfo* DescribeInterface() noexcept {
  return Referred(kInterface);
}

ITypeInfo* DescribeClass() noexcept {
  return Referred(kClass);
}

}  // namespace orxdb
