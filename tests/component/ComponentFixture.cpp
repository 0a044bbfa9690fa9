#include "tests/component/ComponentFixture.h"

#include <cstdlib>
#include <dlfcn.h>

#include "platform/automation/ClassObject.h"
#include "platform/automation/ErrorInfo.h"
#include "platform/framework/Library.h"
#include "platform/framework/Text.h"

namespace orxdb::test {

std::string Script(const std::string& name) {
  return Contents(ORXDB_SCRIPTS + name + ".sql");
}

void SeedDatabase(const std::filesystem::path& file, const std::string& more) {
  QueryRows(file, Script("Seed"));
  QueryRows(file, more);
}

std::string Show(const VARIANT& value) {
  if (value.vt == VT_EMPTY || (value.vt == VT_BSTR && !value.bstrVal)) return "nothing";
  if (value.vt == VT_NULL) return "null";
  if (!(value.vt & VT_ARRAY)) {
    Variant text;
    EXPECT_EQ(VariantChangeType(text.ptr(), &value, 0, VT_BSTR), S_OK) << value.vt;
    return NarrowBstr(text.get().bstrVal);
  }
  std::string all;
  for (LONG i = 0; i < static_cast<LONG>(value.parray->rgsabound[0].cElements); ++i) {
    VARIANT element{};
    element.vt = static_cast<VARTYPE>(value.vt & ~VT_ARRAY);
    const bool variants = element.vt == VT_VARIANT;
    void* const place = variants ? static_cast<void*>(&element) : &element.llVal;
    EXPECT_EQ(SafeArrayGetElement(value.parray, &i, place), S_OK) << "the first is 0";
    Variant owned;
    owned.attach(element);
    all += (i ? "|" : "") + Show(owned.get());
  }
  return all;
}

std::string TakeError() {
  ComPtr<IErrorInfo> info;
  if (GetErrorInfo(0, info.put()) != S_OK) return {};
  GUID guid{};
  info->GetGUID(&guid);
  Bstr source;
  Bstr description;
  info->GetSource(source.put());
  EXPECT_EQ(guid, View(source.get()) == kOrxDbLibraryProgId ? IID_IOrxDbLibrary : IID_IOrxDbObj);
  info->GetDescription(description.put());
  return NarrowBstr(source.get()) + ": " + NarrowBstr(description.get());
}

bool IsLoaded(const std::filesystem::path& library) {
  return static_cast<bool>(Library::Attach(dlopen(library.c_str(), RTLD_NOW | RTLD_NOLOAD)));
}

void ComponentTest::SetUp() {
  LeakBalance::SetUp();
  setenv("AUTOMATION_CLASS_PATH", (m_folder / "classes").c_str(), 1);
  EXPECT_EQ(Library::Load(ORXDB_LIBRARY).Find<HRESULT()>("DllRegisterServer")(), S_OK);
  m_db = NewObject();
}

void ComponentTest::TearDown() {
  m_db.reset();
  TakeError();
  LeakBalance::TearDown();
}

ComPtr<IClassFactory> ComponentTest::Factory(REFCLSID clsid) {
  ComPtr<IClassFactory> factory;
  EXPECT_EQ(CoGetClassObjectFromFile(ORXDB_LIBRARY, clsid, IClassFactory::iid, factory.putVoid()),
            S_OK);
  return factory;
}

void ComponentTest::OpenSeeded(const std::string& more) {
  m_db.reset();
  std::filesystem::remove(m_file);
  SeedDatabase(m_file, more);
  Reopen();
}

void ComponentTest::Reopen() {
  m_db.reset();
  m_db = NewObject();
  EXPECT_EQ(SetMdbFile(*m_db, m_file), S_OK);
}

HRESULT ComponentTest::SetMdbFile(IOrxDbObj& object, const std::filesystem::path& file) {
  return object.SetMdbFile(WidenToBstr(file.string()).get());
}

std::string ComponentTest::Told(const char* error, HRESULT status,
                                std::span<const Variant> results) {
  if (status != S_OK) {
    EXPECT_EQ(status, E_FAIL);
    EXPECT_EQ(TakeError(), error);
    return "fails";
  }
  std::string told;
  for (const Variant& result : results) told += (told.empty() ? "" : "/") + Show(result.get());
  return told;
}

Record ComponentTest::First(std::string_view table) {
  Variant names;
  Variant values;
  EXPECT_EQ(m_db->GetFirstTool(WidenToBstr(table).get(), names.put(), values.put()), S_OK);
  return ToRecord(names, values);
}

Record ComponentTest::Next(std::string_view table) {
  Variant names;
  Variant types;
  Variant values;
  EXPECT_EQ(m_db->GetNextTool(WidenToBstr(table).get(), values.put()), S_OK);
  m_db->GetPropsTypes(WidenToBstr(table).get(), names.ptr(), types.ptr());
  return values.empty() ? Record() : ToRecord(names, values);
}

Record ComponentTest::Tool(std::string_view table, LONG id) {
  Variant names;
  Variant values;
  EXPECT_EQ(m_db->GetToolProps(WidenToBstr(table).get(), id, names.put(), values.put()), S_OK);
  return ToRecord(names, values);
}

Record ComponentTest::ToRecord(const Variant& names, const Variant& values) {
  EXPECT_EQ(names.empty(), values.empty());
  if (values.empty()) return {};
  EXPECT_EQ(names.type(), VT_ARRAY | VT_BSTR);
  EXPECT_EQ(values.type(), VT_ARRAY | VT_VARIANT);
  const ArrayAccess<BSTR> fields(names.get().parray);
  const ArrayAccess<VARIANT> elements(values.get().parray);
  EXPECT_EQ(elements.size(), fields.size());
  Record record;
  for (std::size_t i = 0; i < std::min(fields.size(), elements.size()); ++i) {
    Bstr text;
    EXPECT_EQ(m_db->VariantToSQLString(&elements[i], text.put()), S_OK);
    record[NarrowBstr(fields[i])] = NarrowBstr(text.get());
  }
  return record;
}

std::vector<std::string> ComponentTest::Walk(std::string_view table) {
  std::vector<std::string> found;
  for (Record record = First(table); !record.empty(); record = Next(table)) {
    found.push_back(record["Name"]);
  }
  return found;
}

}  // namespace orxdb::test
