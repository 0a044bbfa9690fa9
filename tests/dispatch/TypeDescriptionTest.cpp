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

  ComPtr<ITypeInfo> m_type;
  ComPtr<ITypeLib> m_library;
};

TEST_F(TypeDescriptionTest, SaysWhatTheInterfaceDeclares) {
  // In, out, neither; optional with a default: what the declarations cannot say, method by method.
  std::istringstream directions(
      "i o ioo io iii iiio iiii iiio io ioi=-1 io iio ii iioo iio oo o iiioo ioo iiooo . ioo io "
      "ioo -- ioo iii ii iio iiioo io iioo io io ii io iiiioo iiioo io ---- io");
  const ComPtr<ITypeInfo> early = Referred(*m_type);
  std::istringstream header(Contents(ORXDB_INTERFACE));
  UINT index = 0;
  for (std::string declared; header >> declared;) {
    if (declared != "STDMETHODCALLTYPE") continue;
    std::getline(header, declared, ')');
    std::erase_if(declared, [](char c) { return std::isspace(c); });
    FUNCDESC* function = nullptr;
    ASSERT_EQ(early->GetFuncDesc(index++, &function), S_OK);
    std::vector<BSTR> names(8);
    UINT count = 0;
    EXPECT_EQ(early->GetNames(function->memid, names.data(), 8, &count), S_OK);
    EXPECT_EQ(count, static_cast<UINT>(function->cParams) + 1);
    EXPECT_EQ(Document(*early, function->memid),
              NarrowBstr(names[0]) + ": method " + NarrowBstr(names[0]));
    EXPECT_EQ(function->elemdescFunc.tdesc.vt, VT_HRESULT);
    // Behind the seven methods that are inherited.
    EXPECT_EQ(function->oVft, static_cast<SHORT>((6 + index) * sizeof(void*)));
    EXPECT_EQ(function->cParamsOpt, function->memid == 10 ? 1 : 0);
    std::string text = NarrowBstr(names[0]) + "(";
    std::string marks;
    for (UINT i = 1; i < count; ++i) {
      const ELEMDESC& element = function->lprgelemdescParam[i - 1];
      const auto& [extra, flags] = element.paramdesc;
      text += (i > 1 ? "," : "") + TypeName(element.tdesc) + NarrowBstr(names[i]);
      marks += flags & PARAMFLAG_FIN ? 'i' : flags & PARAMFLAG_FOUT ? 'o' : '-';
      if (flags & PARAMFLAG_FOPT) marks += "=" + std::to_string(extra->varDefaultValue.lVal);
    }
    for (const BSTR name : names) SysFreeString(name);
    early->ReleaseFuncDesc(function);
    std::string expected;
    directions >> expected;
    EXPECT_EQ(marks.empty() ? "." : marks, expected) << text;
    EXPECT_EQ(text, declared);
  }
  EXPECT_EQ(index, 41u);
  EXPECT_EQ(Document(*early, MEMBERID_NIL), "IOrxDbObj: IOrxDbObj Interface");
  EXPECT_EQ(Document(*m_library, 1), "OrxDbObj: OrxDbObj Class");
  EXPECT_EQ(Document(*m_library, -1), "ORXDBLib: ORXDB 1.0 Type Library");
}

TEST_F(TypeDescriptionTest, LeadsFromTypeToType) {
  TYPEATTR* attributes = nullptr;
  ComPtr<ITypeInfo> found = Referred(*m_type);
  EXPECT_EQ(found->GetTypeAttr(&attributes), S_OK);
  EXPECT_EQ(attributes->guid, IID_IOrxDbObj);
  EXPECT_EQ(attributes->typekind, TKIND_INTERFACE);
  EXPECT_EQ(attributes->wTypeFlags & TYPEFLAG_FDUAL, TYPEFLAG_FDUAL);
  found->ReleaseTypeAttr(attributes);
  EXPECT_EQ(Referred(*found).get(), m_type.get());
  EXPECT_EQ(m_library->GetTypeInfoOfGuid(CLSID_OrxDbObj, found.put()), S_OK);
  INT flags = 0;
  EXPECT_EQ(found->GetImplTypeFlags(0, &flags), S_OK);
  EXPECT_EQ(flags, IMPLTYPEFLAG_FDEFAULT);
  EXPECT_EQ(Referred(*found, 0).get(), m_type.get());
  FUNCDESC* function = nullptr;
  EXPECT_EQ(m_type->GetFuncDesc(41, &function), TYPE_E_ELEMENTNOTFOUND);
  EXPECT_EQ(m_library->GetTypeInfo(2, found.put()), TYPE_E_ELEMENTNOTFOUND);
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
