// The type description says the same as the interface description file and the interface itself.
#include <bit>
#include <cctype>
#include <fstream>
#include <sstream>

#include "platform/automation/ClassObject.h"
#include "platform/automation/TypeInfo.h"
#include "platform/framework/Library.h"
#include "platform/framework/Text.h"
#include "tests/component/ComponentFixture.h"

namespace orxdb::test {
namespace {

/// One word a line, punctuation on its own, without comments: how two texts are compared.
std::string Words(std::istream&& text) {
  std::string result;
  for (std::string line; std::getline(text, line);) {
    for (const char c : line.substr(0, line.find("//")) + "\n") {
      const bool blank = c == ' ' || c == '\n';
      const bool word = std::isalnum(static_cast<unsigned char>(c)) || c == '_' || c == '-';
      if (!word && !result.empty() && result.back() != '\n') result += '\n';
      if (!blank) result += c;
      if (!word && !blank) result += '\n';
    }
  }
  return result;
}

std::string TypeName(const TYPEDESC& type) {
  if (type.vt == VT_PTR) return TypeName(*type.lptdesc) + " *";
  static const std::map<VARTYPE, std::string> names = {
      {VT_BSTR, "BSTR"},      {VT_VARIANT, "VARIANT"},    {VT_I4, "long"},
      {VT_R8, "double"},      {VT_UI2, "unsigned short"}, {VT_BOOL, "VARIANT_BOOL"},
      {VT_HRESULT, "HRESULT"}};
  return names.at(type.vt);
}

std::string Attributes(const PARAMDESC& parameter) {
  std::string value;
  if (parameter.wParamFlags & PARAMFLAG_FHASDEFAULT) {
    EXPECT_EQ(parameter.pparamdescex->varDefaultValue.vt, VT_I4);
    value = std::to_string(parameter.pparamdescex->varDefaultValue.lVal);
  }
  std::string text;
  for (const auto& [flag, word] : {std::pair(PARAMFLAG_FIN, std::string("in")),
                                   {PARAMFLAG_FOUT, "out"},
                                   {PARAMFLAG_FOPT, "optional"},
                                   {PARAMFLAG_FHASDEFAULT, "defaultvalue(" + value + ")"}}) {
    if (parameter.wParamFlags & flag) text += (text.empty() ? "[" : ", ") + word;
  }
  return text.empty() ? text : text + "] ";
}

std::string Uuid(const GUID& guid) {
  OLECHAR text[39];
  EXPECT_EQ(StringFromGUID2(guid, text, 39), 39);
  return "uuid(" + Narrow(std::u16string_view(text + 1, 36)) + ")";
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
  void TearDown() override {
    m_type.reset();
    m_library.reset();
    ComponentTest::TearDown();
  }

  template <typename Description>
  static std::string Help(Description& description, INT id, std::string* name = nullptr) {
    Bstr named;
    Bstr help;
    DWORD context = 9;
    Bstr file;
    EXPECT_EQ(description.GetDocumentation(id, named.put(), help.put(), &context, file.put()),
              S_OK);
    EXPECT_EQ(context, 0u);
    EXPECT_FALSE(file);
    if (name) *name = NarrowBstr(named.get());
    return "helpstring(\"" + NarrowBstr(help.get()) + "\")";
  }

  static std::string Render(ITypeInfo& type, const FUNCDESC& function) {
    std::vector<BSTR> names(8);
    UINT count = 0;
    EXPECT_EQ(type.GetNames(function.memid, names.data(), 8, &count), S_OK);
    EXPECT_EQ(count, static_cast<UINT>(function.cParams) + 1);
    std::string text = "[id(" + std::to_string(function.memid) + "), " +
                       Help(type, function.memid) + "] " + TypeName(function.elemdescFunc.tdesc) +
                       " " + NarrowBstr(names[0]) + "(";
    for (SHORT i = 0; i < function.cParams; ++i) {
      const ELEMDESC& element = function.lprgelemdescParam[i];
      text += (i ? ", " : "") + Attributes(element.paramdesc) + TypeName(element.tdesc) + " " +
              NarrowBstr(names[static_cast<std::size_t>(i) + 1]);
    }
    for (const BSTR name : names) SysFreeString(name);
    return text + ");\n";
  }

  /// The type library in the interface description language.
  std::string Render() {
    TLIBATTR* library = nullptr;
    EXPECT_EQ(m_library->GetLibAttr(&library), S_OK);
    std::string name;
    std::string text = "import \"oaidl.idl\"; [" + Uuid(library->guid) + ", version(" +
                       std::to_string(library->wMajorVerNum) + "." +
                       std::to_string(library->wMinorVerNum) + "), " + Help(*m_library, -1, &name);
    text += "] library " + name + " { importlib(\"stdole2.tlb\");";
    m_library->ReleaseTLibAttr(library);

    const ComPtr<ITypeInfo> early = Partner(*m_type);
    TYPEATTR* attributes = nullptr;
    EXPECT_EQ(early->GetTypeAttr(&attributes), S_OK);
    EXPECT_EQ(attributes->typekind, TKIND_INTERFACE);
    EXPECT_EQ(attributes->wTypeFlags & TYPEFLAG_FDUAL, TYPEFLAG_FDUAL);
    text += "[object, " + Uuid(attributes->guid) + ", dual, nonextensible, " +
            Help(*early, MEMBERID_NIL, &name) + ", pointer_default(unique)]";
    text += "interface " + name + " : IDispatch {";
    for (UINT i = 0; i < attributes->cFuncs; ++i) {
      FUNCDESC* function = nullptr;
      EXPECT_EQ(early->GetFuncDesc(i, &function), S_OK);
      text += Render(*early, *function);
      early->ReleaseFuncDesc(function);
    }
    early->ReleaseTypeAttr(attributes);

    ComPtr<ITypeInfo> coclass;
    EXPECT_EQ(m_library->GetTypeInfo(1, coclass.put()), S_OK);
    EXPECT_EQ(coclass->GetTypeAttr(&attributes), S_OK);
    EXPECT_EQ(attributes->typekind, TKIND_COCLASS);
    std::string className;
    text += "}; [" + Uuid(attributes->guid) + ", " + Help(*coclass, MEMBERID_NIL, &className) + "]";
    coclass->ReleaseTypeAttr(attributes);
    return text + "coclass " + className + " { [default] interface " + name + "; }; };";
  }

  static ComPtr<ITypeInfo> Partner(ITypeInfo& type) {
    HREFTYPE reference = 0;
    ComPtr<ITypeInfo> partner;
    EXPECT_EQ(type.GetRefTypeOfImplType(static_cast<UINT>(-1), &reference), S_OK);
    EXPECT_EQ(type.GetRefTypeInfo(reference, partner.put()), S_OK);
    return partner;
  }

  ComPtr<ITypeInfo> m_type;
  ComPtr<ITypeLib> m_library;
};

TEST_F(TypeDescriptionTest, SaysWhatTheInterfaceDescriptionFileSays) {
  EXPECT_EQ(Words(std::istringstream(Render())), Words(std::ifstream(ORXDB_IDL)));
}

TEST_F(TypeDescriptionTest, NumbersTheSlotsOfTheInterface) {
  const auto slot = [](auto method) {
    // Virtual methods are kept as their offset in the table of slots, plus one.
    return static_cast<SHORT>(std::bit_cast<std::array<std::uintptr_t, 2>>(method)[0] - 1);
  };
  for (const auto& [id, offset] : {std::pair(1u, slot(&IOrxDbObj::SetMdbFile)),
                                   {6u, slot(&IOrxDbObj::AddNewRecord)},
                                   {10u, slot(&IOrxDbObj::VariantToUIString)},
                                   {25u, slot(&IOrxDbObj::GetPrimaryOpByTable)},
                                   {35u, slot(&IOrxDbObj::SetToolTableBookmark)},
                                   {41u, slot(&IOrxDbObj::GetToolTypesByStoredQuery)}}) {
    FUNCDESC* function = nullptr;
    ASSERT_EQ(m_type->GetFuncDesc(id - 1, &function), S_OK);
    EXPECT_EQ(function->oVft, offset) << id;
    EXPECT_EQ(function->funckind, FUNC_DISPATCH);
    EXPECT_EQ(function->invkind, INVOKE_FUNC);
    EXPECT_EQ(function->elemdescFunc.tdesc.vt, VT_VOID);
    EXPECT_EQ(function->cParamsOpt, id == 10 ? 1 : 0);
    m_type->ReleaseFuncDesc(function);
  }
}

TEST_F(TypeDescriptionTest, LeadsFromTypeToType) {
  UINT count = 0;
  EXPECT_EQ(m_db->GetTypeInfoCount(&count), S_OK);
  EXPECT_EQ(count, 1u);
  EXPECT_EQ(Partner(*Partner(*m_type).get()).get(), m_type.get());
  ComPtr<ITypeInfo> found;
  EXPECT_EQ(m_library->GetTypeInfoOfGuid(CLSID_OrxDbObj, found.put()), S_OK);
  HREFTYPE reference = 9;
  INT flags = 0;
  EXPECT_EQ(found->GetImplTypeFlags(0, &flags), S_OK);
  EXPECT_EQ(flags, IMPLTYPEFLAG_FDEFAULT);
  EXPECT_EQ(found->GetRefTypeOfImplType(0, &reference), S_OK);
  EXPECT_EQ(found->GetRefTypeInfo(reference, found.put()), S_OK);
  EXPECT_EQ(found.get(), m_type.get());
  FUNCDESC* function = nullptr;
  BSTR name = nullptr;
  EXPECT_EQ(m_type->GetFuncDesc(41, &function), TYPE_E_ELEMENTNOTFOUND);
  EXPECT_EQ(m_type->GetNames(42, &name, 1, &count), TYPE_E_ELEMENTNOTFOUND);
  EXPECT_EQ(m_library->GetTypeInfo(2, found.put()), TYPE_E_ELEMENTNOTFOUND);
  EXPECT_FALSE(found);
}

TEST_F(TypeDescriptionTest, KeepsTheModuleLoaded) {
  const Library library = Library::Load(ORXDB_LIBRARY);
  const auto canUnload = library.Find<HRESULT()>("DllCanUnloadNow");
  m_db.reset();
  EXPECT_EQ(canUnload(), S_FALSE);
  m_library.reset();
  m_type.reset();
  EXPECT_EQ(canUnload(), S_OK);
}

}  // namespace
}  // namespace orxdb::test
