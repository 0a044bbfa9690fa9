// The type description says the same as the interface itself, and leads from type to type.
#include <algorithm>
#include <sstream>

#include "platform/automation/ClassObject.h"
#include "platform/automation/TypeLibraries.h"
#include "platform/framework/Library.h"
#include "platform/framework/Text.h"
#include "tests/component/ComponentFixture.h"

namespace orxdb::test {
namespace {

std::string TypeName(const TYPEDESC& type) {
  static const std::map<VARTYPE, std::string> names = {
      {VT_BSTR, "BSTR"}, {VT_VARIANT, "VARIANT"}, {VT_I4, "LONG"},
      {VT_R8, "DOUBLE"}, {VT_UI2, "USHORT"},      {VT_BOOL, "VARIANT_BOOL"}};
  return type.vt == VT_PTR ? TypeName(*type.lptdesc) + "*" : names.at(type.vt);
}

class TypeDescriptionTest : public ComponentTest {
 protected:
  void SetUp() override {
    ComponentTest::SetUp();
    ASSERT_EQ(m_db->GetTypeInfo(0, 0, m_type.put()), S_OK);
    UINT index = 99;
    ASSERT_EQ(m_type->GetContainingTypeLib(m_library.put(), &index), S_OK);
    EXPECT_EQ(index, 0u);
  }
  /// Name and help.
  template <typename Description>
  static std::string Document(Description& description, INT id) {
    Bstr name;
    Bstr help;
    Bstr file;
    DWORD context = 9;
    EXPECT_EQ(description.GetDocumentation(id, name.put(), help.put(), &context, file.put()), S_OK);
    EXPECT_TRUE(context == 0 && !file);
    return NarrowBstr(name.get()) + ": " + NarrowBstr(help.get());
  }
  /// A type that this one refers to; the last is its partner, the other face of one interface.
  static ComPtr<ITypeInfo> Referred(ITypeInfo& type, UINT index = static_cast<UINT>(-1)) {
    HREFTYPE reference = 9;
    ComPtr<ITypeInfo> referred;
    EXPECT_EQ(type.GetRefTypeOfImplType(index, &reference), S_OK);
    EXPECT_EQ(type.GetRefTypeInfo(reference, referred.put()), S_OK);
    return referred;
  }

  /// A method as its declaration and the directions of its parameters.
  static std::pair<std::string, std::string> Described(ITypeInfo& early, UINT index) {
    FUNCDESC* function = nullptr;
    EXPECT_EQ(early.GetFuncDesc(index, &function), S_OK);
    std::vector<BSTR> names(8);
    UINT count = 0;
    EXPECT_EQ(early.GetNames(function->memid, names.data(), 8, &count), S_OK);
    EXPECT_EQ(count, static_cast<UINT>(function->cParams) + 1);
    std::string text = NarrowBstr(names[0]);
    EXPECT_EQ(Document(early, function->memid), text + ": method " + text);
    EXPECT_EQ(function->elemdescFunc.tdesc.vt, VT_HRESULT);
    // Behind the seven methods that are inherited.
    EXPECT_EQ(function->oVft, static_cast<SHORT>((7 + index) * sizeof(void*)));
    EXPECT_EQ(function->cParamsOpt, text == "VariantToUIString" ? 1 : 0);
    std::string marks;
    text += "(";
    for (UINT i = 1; i < count; ++i) {
      const ELEMDESC& element = function->lprgelemdescParam[i - 1];
      const auto& [extra, flags] = element.paramdesc;
      text += (i > 1 ? "," : "") + TypeName(element.tdesc) + NarrowBstr(names[i]);
      const char out = flags & PARAMFLAG_FRETVAL ? 'r' : 'o';
      marks += flags & PARAMFLAG_FIN ? 'i' : flags & PARAMFLAG_FOUT ? out : '-';
      if (flags & PARAMFLAG_FOPT) marks += "=" + std::to_string(extra->varDefaultValue.lVal);
    }
    for (const BSTR name : names) SysFreeString(name);
    early.ReleaseFuncDesc(function);
    return {text, marks.empty() ? "." : marks};
  }
  /// What a method gives back to late-bound hosts: never one of its parameters.
  static std::string ShownLate(ITypeInfo& late, UINT index) {
    FUNCDESC* function = nullptr;
    EXPECT_EQ(late.GetFuncDesc(index, &function), S_OK);
    for (SHORT i = 0; i < function->cParams; ++i) {
      EXPECT_FALSE(function->lprgelemdescParam[i].paramdesc.wParamFlags & PARAMFLAG_FRETVAL);
    }
    const TYPEDESC result = function->elemdescFunc.tdesc;
    late.ReleaseFuncDesc(function);
    return result.vt == VT_VOID ? "nothing" : TypeName(result);
  }

  ComPtr<ITypeInfo> m_type;
  ComPtr<ITypeLib> m_library;
};

TEST_F(TypeDescriptionTest, SaysWhatTheInterfacesDeclare) {
  // In, out, result, neither; optional with a default: what the declarations cannot say, method by
  // method.
  std::istringstream directions(
      "i o ioo io iii iiio iiii iiio io ioi=-1 io iio ii iioo iio oo o iiioo ioo iiooo . ioo io "
      "ioo -- ioo iii ii iio iiioo io iioo io io ii io iiiioo iiioo io ---- io "
      "r iioooo r iii . . . ii");
  for (const auto& [name, place] : {std::pair(std::string("OrxDbObj"), 0u), {"OrxDbLibrary", 2}}) {
    ComPtr<ITypeInfo> late;
    ASSERT_EQ(m_library->GetTypeInfo(place, late.put()), S_OK);
    const ComPtr<ITypeInfo> early = Referred(*late);
    std::istringstream header(Contents(ORXDB_INTERFACES "I" + name + ".h"));
    UINT index = 0;
    for (std::string declared; header >> declared;) {
      if (declared != "STDMETHODCALLTYPE") continue;
      std::getline(header, declared, ')');
      std::erase_if(declared, [](char c) { return std::isspace(c); });
      std::string expected;
      directions >> expected;
      EXPECT_EQ(Described(*early, index), std::pair(declared, expected));
      const bool text = declared.starts_with("LastError");
      EXPECT_EQ(ShownLate(*late, index++), !expected.ends_with('r') ? "nothing"
                                           : text                   ? "BSTR"
                                                                    : "DOUBLE");
    }
    FUNCDESC* function = nullptr;
    EXPECT_EQ(late->GetFuncDesc(index, &function), TYPE_E_ELEMENTNOTFOUND);
    EXPECT_EQ(Document(*early, MEMBERID_NIL), "I" + name + ": I" + name + " Interface");
    EXPECT_EQ(Document(*m_library, static_cast<INT>(place + 1)), name + ": " + name + " Class");
  }
  EXPECT_EQ(Document(*m_library, -1), "ORXDBLib: ORXDB 1.0 Type Library");
}

TEST_F(TypeDescriptionTest, LeadsFromTypeToType) {
  for (const auto& [iid, clsid, place] : {std::tuple(IID_IOrxDbObj, CLSID_OrxDbObj, 0u),
                                          {IID_IOrxDbLibrary, CLSID_OrxDbLibrary, 2}}) {
    TYPEATTR* attributes = nullptr;
    ComPtr<ITypeInfo> late;
    ASSERT_EQ(m_library->GetTypeInfoOfGuid(iid, late.put()), S_OK);
    ComPtr<ITypeInfo> found = Referred(*late);
    EXPECT_EQ(found->GetTypeAttr(&attributes), S_OK);
    EXPECT_EQ(attributes->guid, iid);
    EXPECT_EQ(attributes->typekind, TKIND_INTERFACE);
    EXPECT_EQ(attributes->wTypeFlags & TYPEFLAG_FDUAL, TYPEFLAG_FDUAL);
    found->ReleaseTypeAttr(attributes);
    EXPECT_EQ(Referred(*found).get(), late.get());
    for (const GUID& guid : {iid, clsid}) {
      ComPtr<ITypeLib> library;
      UINT index = 99;
      EXPECT_EQ(m_library->GetTypeInfoOfGuid(guid, found.put()), S_OK);
      EXPECT_EQ(found->GetContainingTypeLib(library.put(), &index), S_OK);
      EXPECT_EQ(index, guid == iid ? place : place + 1);
    }
    INT flags = 0;
    EXPECT_EQ(found->GetImplTypeFlags(0, &flags), S_OK);
    EXPECT_EQ(flags, IMPLTYPEFLAG_FDEFAULT);
    EXPECT_EQ(Referred(*found, 0).get(), late.get());
  }
  ComPtr<ITypeInfo> none;
  EXPECT_EQ(m_library->GetTypeInfo(4, none.put()), TYPE_E_ELEMENTNOTFOUND);
}

TEST_F(TypeDescriptionTest, ObjectsAreMadeWithTheInterfacesAskedFor) {
  MULTI_QI queries[] = {{&IID_IOrxDbObj, nullptr, 1}, {&IID_IClassFactory, nullptr, 1}};
  std::u16string machine = u"other";
  COSERVERINFO server{0, machine.data(), nullptr, 0};
  for (const auto& [context, where, count, expected] :
       {std::tuple(CLSCTX_ALL, &server, 1u, E_INVALIDARG),
        {CLSCTX_ALL & ~CLSCTX_INPROC_SERVER, nullptr, 1, REGDB_E_CLASSNOTREG},
        {CLSCTX_ALL, nullptr, 1, S_OK},
        {CLSCTX_ALL, nullptr, 2, CO_S_NOTALLINTERFACES}}) {
    EXPECT_EQ(CoCreateInstanceEx(CLSID_OrxDbObj, nullptr, context, where, count, queries),
              expected);
    if (SUCCEEDED(expected)) queries[0].pItf->Release();
  }
  EXPECT_EQ(queries[1].hr, E_NOINTERFACE);
  EXPECT_EQ(queries[1].pItf, nullptr);
}

TEST_F(TypeDescriptionTest, IsFoundByIdentifierAndByLibraryAndKeepsItLoaded) {
  OpenSeeded();
  ComPtr<ITypeLib> found;
  for (const auto& [library, major, minor] : {std::tuple(LIBID_ORXDBLib, 1, 1),
                                              {LIBID_ORXDBLib, 2, 0},
                                              {CLSID_OrxDbObj, 1, 0},
                                              {LIBID_ORXDBLib, 1, 0}}) {
    const bool known = library == LIBID_ORXDBLib && major == 1 && minor == 0;
    EXPECT_EQ(LoadRegTypeLib(library, static_cast<WORD>(major), static_cast<WORD>(minor), 0x409,
                             found.put()),
              known ? S_OK : TYPE_E_LIBNOTREGISTERED);
    EXPECT_EQ(found.get(), known ? m_library.get() : nullptr);
  }
  std::u16string path = Widen(ORXDB_LIBRARY);
  std::ranges::replace(path, u'/', u'\\');
  EXPECT_EQ(LoadTypeLib((path + u"x").c_str(), found.put()), TYPE_E_CANTLOADLIBRARY);
  EXPECT_EQ(LoadTypeLib(path.c_str(), found.put()), S_OK);
  EXPECT_EQ(found.get(), m_library.get());
  EXPECT_EQ(Walk("TAP").size(), 3u) << "no object was made for it";

  const Library library = Library::Load(ORXDB_LIBRARY);
  const auto canUnload = library.Find<HRESULT()>("DllCanUnloadNow");
  m_db.reset();
  m_type.reset();
  m_library.reset();
  EXPECT_EQ(canUnload(), S_FALSE);
  found.reset();
  EXPECT_EQ(canUnload(), S_OK);
}

}  // namespace
}  // namespace orxdb::test
