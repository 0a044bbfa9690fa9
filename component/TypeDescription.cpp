#include "component/TypeDescription.h"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>

#include "component/Dispatch.h"
#include "component/MethodTable.h"
#include "component/Module.h"
#include "platform/automation/Bstr.h"

namespace orxdb {
namespace {

/// Slots of IUnknown and IDispatch before the first method.
constexpr int kInheritedSlots = 7;
/// The types that the library numbers are pairs of an interface and its class; the partners of the
/// interfaces stand behind them.
constexpr UINT kLibraryTypes = 2 * static_cast<UINT>(kDescribedClasses.size());
constexpr HREFTYPE kAllTypes = kLibraryTypes + static_cast<HREFTYPE>(kDescribedClasses.size());

constexpr WORD kDualFlags =
    TYPEFLAG_FDUAL | TYPEFLAG_FNONEXTENSIBLE | TYPEFLAG_FOLEAUTOMATION | TYPEFLAG_FDISPATCHABLE;

/// One type of the library or a partner, by its number.
struct TypeEntry {
  explicit TypeEntry(HREFTYPE number)
      : kind(number >= kLibraryTypes ? TKIND_INTERFACE
             : number % 2 == 0       ? TKIND_DISPATCH
                                     : TKIND_COCLASS),
        place(number >= kLibraryTypes ? number - kLibraryTypes : number / 2),
        described(*kDescribedClasses[place]) {}

  bool isClass() const noexcept { return kind == TKIND_COCLASS; }
  const DescribedType& type() const noexcept {
    return isClass() ? described.type : described.interfaceType;
  }
  std::span<const Method> methods() const noexcept {
    return isClass() ? std::span<const Method>() : described.methods;
  }
  const Method* Find(MEMBERID memid) const noexcept {
    return isClass() ? nullptr : described.Find(memid);
  }
  HREFTYPE interfaceNumber() const noexcept { return 2 * place; }
  HREFTYPE partnerNumber() const noexcept {
    return kind == TKIND_DISPATCH ? kLibraryTypes + place : interfaceNumber();
  }

  TYPEKIND kind;
  HREFTYPE place;  ///< of the class
  const DescribedClass& described;
};

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
    const bool late = kind == TKIND_DISPATCH;
    const auto parameters = late ? method.arguments() : method.parameters();
    for (std::size_t i = 0; i < parameters.size(); ++i) AddParameter(parameters[i], i);
    description.memid = method.id;
    description.lprgelemdescParam = elements.data();
    description.funckind = late ? FUNC_DISPATCH : FUNC_PUREVIRTUAL;
    description.invkind = INVOKE_FUNC;
    description.callconv = CC_STDCALL;
    description.cParams = static_cast<SHORT>(parameters.size());
    description.cParamsOpt = static_cast<SHORT>(method.optionalCount);
    description.oVft =
        static_cast<SHORT>((kInheritedSlots + method.id - 1) * static_cast<int>(sizeof(void*)));
    const VARTYPE result = method.hasResult ? method.parameters().back().type : VT_VOID;
    description.elemdescFunc.tdesc.vt = late ? result : VARTYPE{VT_HRESULT};
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
ITypeInfo* TypeAt(HREFTYPE number);

class TypeInformation final : public Resident<ITypeInfo> {
 public:
  explicit TypeInformation(HREFTYPE number) : m_entry(number) {}

  HRESULT STDMETHODCALLTYPE GetTypeAttr(TYPEATTR** ppTypeAttr) override {
    if (!ppTypeAttr) return E_POINTER;
    *ppTypeAttr = new (std::nothrow) TYPEATTR{};
    if (!*ppTypeAttr) return E_OUTOFMEMORY;
    TYPEATTR& attributes = **ppTypeAttr;
    attributes.guid = m_entry.type().guid;
    attributes.memidConstructor = MEMBERID_NIL;
    attributes.memidDestructor = MEMBERID_NIL;
    attributes.cbSizeInstance = sizeof(void*);
    attributes.typekind = m_entry.kind;
    attributes.cFuncs = static_cast<WORD>(m_entry.methods().size());
    attributes.cImplTypes = m_entry.isClass() ? 1 : 0;
    attributes.cbSizeVft = static_cast<WORD>(
        !m_entry.isClass() ? (kInheritedSlots + m_entry.methods().size()) * sizeof(void*) : 0);
    attributes.cbAlignment = alignof(void*);
    attributes.wTypeFlags = m_entry.isClass() ? WORD{TYPEFLAG_FCANCREATE} : kDualFlags;
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
    if (index >= m_entry.methods().size()) return TYPE_E_ELEMENTNOTFOUND;
    auto* const block = new (std::nothrow) FunctionBlock(m_entry.methods()[index], m_entry.kind);
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
    const Method* const method = m_entry.Find(memid);
    if (!method) return TYPE_E_ELEMENTNOTFOUND;
    std::array<Bstr, kMaxParameters + 1> names;
    const std::size_t parameters =
        m_entry.kind == TKIND_DISPATCH ? method->arguments().size() : method->parameterCount;
    const UINT count = std::min(cMaxNames, static_cast<UINT>(parameters) + 1);
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
    if (m_entry.isClass()) return DISP_E_UNKNOWNNAME;
    return m_entry.described.FindIdsOfNames(rgszNames, cNames, pMemId);
  }

  HRESULT STDMETHODCALLTYPE GetDocumentation(MEMBERID memid, BSTR* pBstrName, BSTR* pBstrDocString,
                                             DWORD* pdwHelpContext, BSTR* pBstrHelpFile) override
      try {
    if (memid == MEMBERID_NIL) {
      return Document(m_entry.type().name, m_entry.type().help, pBstrName, pBstrDocString,
                      pdwHelpContext, pBstrHelpFile);
    }
    const Method* const method = m_entry.Find(memid);
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
    if (m_entry.isClass()) return DISP_E_MEMBERNOTFOUND;
    return InvokeMethod(m_entry.described, *static_cast<IDispatch*>(pvInstance), memid, wFlags,
                        pDispParams, pVarResult, pExcepInfo, puArgErr);
  }

  HRESULT STDMETHODCALLTYPE GetRefTypeOfImplType(UINT index, HREFTYPE* pRefType) override {
    if (!pRefType) return E_POINTER;
    const bool partner = index == static_cast<UINT>(-1) && !m_entry.isClass();
    if (!partner && (index != 0 || !m_entry.isClass())) return TYPE_E_ELEMENTNOTFOUND;
    *pRefType = partner ? m_entry.partnerNumber() : m_entry.interfaceNumber();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetImplTypeFlags(UINT index, INT* pImplTypeFlags) override {
    if (!pImplTypeFlags) return E_POINTER;
    if (index != 0 || !m_entry.isClass()) return TYPE_E_ELEMENTNOTFOUND;
    *pImplTypeFlags = IMPLTYPEFLAG_FDEFAULT;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetRefTypeInfo(HREFTYPE hRefType, ITypeInfo** ppTInfo) override {
    return Give(TypeAt(hRefType), ppTInfo, TYPE_E_ELEMENTNOTFOUND);
  }
  HRESULT STDMETHODCALLTYPE GetContainingTypeLib(ITypeLib** ppTLib, UINT* pIndex) override {
    if (pIndex) *pIndex = m_entry.interfaceNumber() + (m_entry.isClass() ? 1 : 0);
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
  TypeEntry m_entry;
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
    *pTKind = TypeEntry(index).kind;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfoOfGuid(REFGUID guid, ITypeInfo** ppTInfo) override {
    HREFTYPE number = 0;
    while (number < kLibraryTypes && TypeEntry(number).type().guid != guid) ++number;
    return Give(number < kLibraryTypes ? TypeAt(number) : nullptr, ppTInfo, TYPE_E_ELEMENTNOTFOUND);
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
    const TypeEntry entry(type);
    return Document(entry.type().name, entry.type().help, pBstrName, pBstrDocString, pdwHelpContext,
                    pBstrHelpFile);
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

ITypeInfo* TypeAt(HREFTYPE number) {
  static auto types = []<HREFTYPE... each>(std::integer_sequence<HREFTYPE, each...>) {
    return std::array<TypeInformation, sizeof...(each)>{TypeInformation(each)...};
  }
  (std::make_integer_sequence<HREFTYPE, kAllTypes>());
  return number < types.size() ? &types[number] : nullptr;
}

/// The interface of a described class or, `behind` it, the class.
ITypeInfo* Referred(const DescribedClass& described, HREFTYPE behind) {
  const auto place = std::ranges::find(kDescribedClasses, &described) - kDescribedClasses.begin();
  ITypeInfo* const description = TypeAt(2 * static_cast<HREFTYPE>(place) + behind);
  description->AddRef();
  return description;
}

}  // namespace

ITypeInfo* DescribeInterface(const DescribedClass& described) noexcept {
  return Referred(described, 0);
}

ITypeInfo* DescribeClass(const DescribedClass& described) noexcept {
  return Referred(described, 1);
}

}  // namespace orxdb
