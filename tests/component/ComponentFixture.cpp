#include "tests/component/ComponentFixture.h"

#include <algorithm>
#include <cstdlib>
#include <dlfcn.h>
#include <fstream>
#include <memory>
#include <sqlite3.h>
#include <sstream>

#include "platform/automation/ClassObject.h"
#include "platform/automation/ErrorInfo.h"
#include "platform/framework/Library.h"
#include "platform/framework/Text.h"

namespace orxdb::test {

TemporaryFolder::TemporaryFolder() {
  std::string name = (std::filesystem::temp_directory_path() / "orxdb-XXXXXX").string();
  m_path = mkdtemp(name.data());
}

TemporaryFolder::~TemporaryFolder() {
  std::filesystem::remove_all(m_path);
}

void RunSql(const std::filesystem::path& file, const std::string& sql) {
  sqlite3* opened = nullptr;
  ASSERT_EQ(sqlite3_open(file.c_str(), &opened), SQLITE_OK);
  const std::unique_ptr<sqlite3, decltype(&sqlite3_close)> database(opened, &sqlite3_close);
  ASSERT_EQ(sqlite3_exec(opened, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
      << sqlite3_errmsg(opened);
}

std::string Contents(const std::filesystem::path& file) {
  return (std::ostringstream() << std::ifstream(file, std::ios::binary).rdbuf()).str();
}

std::string Script(const std::string& name) {
  return Contents(ORXDB_SCRIPTS + name + ".sql");
}

void SeedDatabase(const std::filesystem::path& file, const std::string& more) {
  RunSql(file, Script("Seed"));
  RunSql(file, more);
}

std::string QueryRows(const std::filesystem::path& file, const std::string& sql) {
  sqlite3* opened = nullptr;
  EXPECT_EQ(sqlite3_open(file.c_str(), &opened), SQLITE_OK);
  const std::unique_ptr<sqlite3, decltype(&sqlite3_close)> database(opened, &sqlite3_close);
  std::string rows;
  const auto append = [](void* text, int, char** values, char**) {
    auto& all = *static_cast<std::string*>(text);
    if (!all.empty()) all += '|';
    all += values[0] ? values[0] : "NULL";
    return 0;
  };
  EXPECT_EQ(sqlite3_exec(opened, sql.c_str(), append, &rows, nullptr), SQLITE_OK)
      << sqlite3_errmsg(opened);
  return rows;
}

Properties& Properties::Add(std::string_view name, Variant value) {
  m_givenNames.emplace_back(name);
  m_givenValues.push_back(std::move(value));
  return *this;
}
Properties& Properties::Add(std::string_view name, std::string_view text) {
  return Add(name, Variant::FromBstr(WidenToBstr(text)));
}
Properties& Properties::Add(std::string_view name, double value) {
  return Add(name, Variant::FromR8(value));
}

namespace {

template <typename Element, typename Given, typename Convert>
VARIANT* MakeArray(Variant& result, VARTYPE type, LONG lowerBound, const std::vector<Given>& given,
                   Convert&& convert) {
  SafeArray array;
  array.attach(SafeArrayCreateVector(type, lowerBound, static_cast<ULONG>(given.size())));
  std::ranges::transform(given, ArrayAccess<Element>(array.get()).begin(), convert);
  result = Variant::FromArray(type, std::move(array));
  return result.ptr();
}

}  // namespace

VARIANT* Properties::Names(LONG lowerBound) {
  return MakeArray<BSTR>(m_names, VT_BSTR, lowerBound, m_givenNames,
                         [](const std::string& name) { return WidenToBstr(name).detach(); });
}

VARIANT* Properties::Values(LONG lowerBound) {
  return MakeArray<VARIANT>(m_values, VT_VARIANT, lowerBound, m_givenValues,
                            [](const Variant& value) { return value.Copy().detach(); });
}

std::vector<std::string> Strings(const VARIANT& array) {
  EXPECT_EQ(array.vt, VT_ARRAY | VT_BSTR);
  std::vector<std::string> strings;
  if (array.vt != (VT_ARRAY | VT_BSTR)) return strings;
  LONG first = -1;
  EXPECT_EQ(SafeArrayGetLBound(array.parray, 1, &first), S_OK);
  EXPECT_EQ(first, 0);
  for (const BSTR string : ArrayAccess<BSTR>(array.parray)) strings.push_back(NarrowBstr(string));
  return strings;
}

std::string TakeError() {
  ComPtr<IErrorInfo> info;
  if (GetErrorInfo(0, info.put()) != S_OK) return {};
  GUID guid{};
  info->GetGUID(&guid);
  EXPECT_EQ(guid, IID_IOrxDbObj);
  Bstr source;
  Bstr description;
  info->GetSource(source.put());
  info->GetDescription(description.put());
  return NarrowBstr(source.get()) + ": " + NarrowBstr(description.get());
}

bool IsLoaded(const std::filesystem::path& library) {
  return static_cast<bool>(Library::Attach(dlopen(library.c_str(), RTLD_NOW | RTLD_NOLOAD)));
}

void ComponentTest::SetUp() {
  m_strings = AutomationLiveStrings();
  m_arrays = AutomationLiveArrays();
  setenv("AUTOMATION_CLASS_PATH", (m_folder / "classes").c_str(), 1);
  EXPECT_EQ(Library::Load(ORXDB_LIBRARY).Find<HRESULT()>("DllRegisterServer")(), S_OK);
  m_db = NewObject();
}

void ComponentTest::TearDown() {
  m_db.reset();
  TakeError();
  EXPECT_EQ(AutomationLiveStrings(), m_strings);
  EXPECT_EQ(AutomationLiveArrays(), m_arrays);
}

ComPtr<IClassFactory> ComponentTest::Factory() {
  ComPtr<IClassFactory> factory;
  EXPECT_EQ(CoGetClassObjectFromFile(ORXDB_LIBRARY, CLSID_OrxDbObj, IClassFactory::iid,
                                     factory.putVoid()),
            S_OK);
  return factory;
}

ComPtr<IOrxDbObj> ComponentTest::NewObject() {
  ComPtr<IOrxDbObj> object;
  EXPECT_EQ(Factory()->CreateInstance(nullptr, IOrxDbObj::iid, object.putVoid()), S_OK);
  return object;
}

void ComponentTest::OpenSeeded(const std::string& more) {
  SeedDatabase(m_file, more);
  ASSERT_EQ(SetMdbFile(*m_db, m_file), S_OK);
}

HRESULT ComponentTest::SetMdbFile(IOrxDbObj& object, const std::filesystem::path& file) {
  return object.SetMdbFile(WidenToBstr(file.string()).get());
}

HRESULT ComponentTest::SetFilter(std::string_view table, std::string_view where,
                                 std::string_view order) {
  return m_db->SetTabFilter(WidenToBstr(table).get(), WidenToBstr(where).get(),
                            WidenToBstr(order).get());
}

Record ComponentTest::First(std::string_view table) {
  Variant names;
  Variant values;
  EXPECT_EQ(m_db->GetFirstTool(WidenToBstr(table).get(), names.put(), values.put()), S_OK);
  EXPECT_EQ(names.empty(), values.empty());
  if (values.empty()) return {};
  m_names[std::string(table)] = Strings(names.get());
  return ToRecord(table, values);
}

Record ComponentTest::Next(std::string_view table) {
  Variant values;
  EXPECT_EQ(m_db->GetNextTool(WidenToBstr(table).get(), values.put()), S_OK);
  return values.empty() ? Record() : ToRecord(table, values);
}

Record ComponentTest::ToRecord(std::string_view table, const Variant& values) {
  std::vector<std::string>& names = m_names[std::string(table)];
  if (names.empty()) {
    Variant found;
    Variant types;
    m_db->GetPropsTypes(WidenToBstr(table).get(), found.ptr(), types.ptr());
    names = Strings(found.get());
  }
  EXPECT_EQ(values.type(), VT_ARRAY | VT_VARIANT);
  const ArrayAccess<VARIANT> elements(values.get().parray);
  EXPECT_EQ(elements.size(), names.size());
  Record record;
  for (std::size_t i = 0; i < std::min(names.size(), elements.size()); ++i) {
    Bstr text;
    EXPECT_EQ(m_db->VariantToSQLString(&elements[i], text.put()), S_OK);
    record[names[i]] = NarrowBstr(text.get());
  }
  return record;
}

std::vector<std::string> ComponentTest::Walk(std::string_view table, const std::string& field) {
  std::vector<std::string> found;
  for (Record record = First(table); !record.empty(); record = Next(table)) {
    found.push_back(record[field]);
  }
  return found;
}

HRESULT ComponentTest::FirstStatus(std::string_view table) {
  Variant names;
  Variant values;
  const HRESULT result = m_db->GetFirstTool(WidenToBstr(table).get(), names.put(), values.put());
  EXPECT_TRUE(result == S_OK || (names.empty() && values.empty()));
  return result;
}

LONG ComponentTest::Count(std::string_view table) {
  LONG count = -2;
  EXPECT_EQ(m_db->GetSelectedRecordCount(WidenToBstr(table).get(), &count), S_OK);
  return count;
}

Record ComponentTest::Tool(std::string_view table, LONG id) {
  Variant names;
  Variant values;
  EXPECT_EQ(m_db->GetToolProps(WidenToBstr(table).get(), id, names.put(), values.put()), S_OK);
  if (values.empty()) return {};
  m_names[std::string(table)] = Strings(names.get());
  return ToRecord(table, values);
}

HRESULT ComponentTest::Add(std::string_view table, Properties& tool) {
  return m_db->AddNewRecord(WidenToBstr(table).get(), tool.Names(), tool.Values(), &m_id);
}

HRESULT ComponentTest::Set(std::string_view table, LONG id, Properties& tool) {
  return m_db->SetToolProps(WidenToBstr(table).get(), id, tool.Names(), tool.Values());
}

std::vector<std::string> ComponentTest::ToolTypes() {
  Variant types;
  EXPECT_EQ(m_db->GetToolTypes(types.put()), S_OK);
  return Strings(types.get());
}

}  // namespace orxdb::test
