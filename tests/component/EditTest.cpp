// Adding, changing and deleting tools through the interface.
#include <algorithm>
#include <sstream>

#include "platform/framework/MessageBox.h"
#include "platform/framework/Text.h"
#include "tests/component/ComponentFixture.h"

namespace orxdb::test {
namespace {

class EditTest : public ComponentTest {
 protected:
  void SetUp() override {
    ComponentTest::SetUp();
    OpenSeeded(Script("Edit"));
  }
  std::string Stored(const std::string& table, const std::string& field, LONG id) {
    return QueryRows(
        m_file, "SELECT \"" + field + "\" FROM " + table + " WHERE ID = " + std::to_string(id));
  }
};

constexpr const char* kFails = "fails";

// Each value is given to a new tool, whose fields start with defaults, and to a stored one.
TEST_F(EditTest, RulesOfTheToolDomain) {
  struct Case {
    std::string field;
    Variant value;
    std::string added, changed;
  };
  const auto text = [](std::string_view narrow) { return Variant::FromBstr(WidenToBstr(narrow)); };
  const std::string longText(60'000, 'x');
  const std::string hostile = "O''Brien [x] *?# \"6\" Ø %";
  Case cases[] = {{"Material", text("hss"), "1", "1"},
                  {"Material", text("Steel"), "3", "3"},
                  {"Material", text("Wood"), "2", kFails},
                  {"Material", text(""), "2", kFails},
                  {"Material", text("Absent"), "2", "1"},
                  {"Material", text("It's"), kFails, kFails},
                  {"Material", text("' OR '1' = '1"), "1", "1"},
                  {"Material", text("'; DELETE FROM MATERIAL; --"), kFails, kFails},
                  {"Material", Variant(), "2", "NULL"},
                  {"Material", Variant::Null(), "2", "NULL"},
                  {"Material", Variant::FromI4(4), "4", kFails},
                  {"TappingHead", text("Head B"), "2", "2"},
                  {"TappingHead", text("Absent"), "NULL", "NULL"},
                  {"TappingHead", text("absent"), "2", kFails},
                  {"TappingHead", Variant::Null(), "2", "NULL"},
                  {"Size", Variant(), "7", "NULL"},
                  {"Size", text("12"), "12", "12"},
                  {"Size", text("twelve"), "7", "5"},
                  {"Size", Variant::FromI4(70'000), "7", "5"},
                  {"Name", text(hostile), hostile, hostile},
                  {"Name", text(longText), "NULL", "One"},
                  {"Name", text("Absent"), "Absent", "Absent"},
                  {"Note", text(longText), longText, longText},
                  {"ID", Variant::FromI4(99), "", ""},
                  {"Nope", Variant::FromI4(1), kFails, kFails},
                  {"Nope", Variant(), "", kFails}};
  for (const std::string table : {"PIPE_TAP", "DRILL"}) {
    const auto check = [&](const std::string& field, const Variant& value, const std::string& added,
                           const std::string& changed) {
      SCOPED_TRACE(table + "." + field + " -> " + added.substr(0, 9) + "/" + changed.substr(0, 9));
      const std::string before = QueryRows(m_file, "SELECT count(*) FROM " + table);
      EXPECT_EQ(Add(table, Properties().Add(field, value.Copy()).Add("Note", longText)),
                added == kFails ? E_FAIL : S_OK);
      EXPECT_EQ(TakeError(), added == kFails ? kReportedError : "");
      if (added == kFails) {
        EXPECT_EQ(QueryRows(m_file, "SELECT count(*) FROM " + table), before);
      } else {
        if (!added.empty()) {
          EXPECT_EQ(Stored(table, field, m_id), added);
        }
        EXPECT_EQ(Stored(table, "Note", m_id), longText);
      }
      EXPECT_EQ(Set(table, 1, Properties().Add("Note", "new").Add(field, value.Copy())),
                changed == kFails ? E_FAIL : S_OK);
      EXPECT_EQ(TakeError(), changed == kFails ? kReportedError : "");
      if (changed != kFails && !changed.empty()) {
        EXPECT_EQ(Stored(table, field, 1), changed);
      }
      if (field != "Note") {
        EXPECT_EQ(Stored(table, "Note", 1), changed == kFails ? "x" : "new");
      }
      RunSql(m_file, "UPDATE " + table +
                         " SET Name = 'One', Approach_Height = 4, Retraction_Height = 4, "
                         "Extra_Depth = 4, Retraction_Ratio = 4, Size = 5, Note = 'x', "
                         "Material = 1, TappingHead = 1 WHERE ID = 1");
    };
    for (const Case& c : cases) check(c.field, c.value, c.added, c.changed);
    const bool tap = table == "PIPE_TAP";
    for (const auto* field :
         {"Approach_Height", "Retraction_Height", "Extra_Depth", "Retraction_Ratio"}) {
      check(field, Variant::FromR8(9), tap ? "1.5" : "9.0", tap ? "4.0" : "9.0");
      check(field, Variant::Null(), "1.5", tap ? "4.0" : "NULL");
    }
  }
  EXPECT_EQ(QueryRows(m_file, "SELECT count(*) FROM MATERIAL"), "4");
}

TEST_F(EditTest, TappingHeadsNeedNamesOfTheirOwn) {
  std::string messages;
  auto earlier =
      InstallMessageBoxHandler([&](const std::string& text, const std::string&, unsigned style) {
        messages += text + "/" + std::to_string(style);
        return IDOK;
      });
  EXPECT_EQ(Add("TAPPING_HEAD", Properties().Add("Name", "head a")), E_FAIL);
  EXPECT_EQ(TakeError(), kReportedError);
  EXPECT_EQ(messages, "You should use unique 'Description' for each Tapping Head/16");
  EXPECT_EQ(m_id, 3);
  EXPECT_EQ(Add("TAPPING_HEAD", Properties().Add("Name", "It's")), S_OK) << "cannot be asked about";
  EXPECT_EQ(Add("TAPPING_HEAD", Properties().Add("Name", Variant::FromI4(7))), S_OK);
  EXPECT_EQ(Add("DRILL", Properties().Add("Name", "One")), S_OK);
  EXPECT_EQ(Set("TAPPING_HEAD", 2, Properties().Add("Name", "Head A")), S_OK);
  EXPECT_EQ(messages.find("/16"), messages.rfind("/16")) << "one message only";
  EXPECT_EQ(QueryRows(m_file, "SELECT ID || Name FROM TAPPING_HEAD"), "1Head A|2Head A|4It's|57");
  InstallMessageBoxHandler(std::move(earlier));
}

SafeArray Table(VARTYPE type, ULONG rows, ULONG columns) {
  const SAFEARRAYBOUND bounds[] = {{rows, -3}, {columns, 0}};
  SafeArray array;
  array.attach(SafeArrayCreate(type, 2, bounds));
  return array;
}

// What does not pair up is refused before anything is stored.
TEST_F(EditTest, ArraysOfEveryShape) {
  Properties good;
  good.Add("Name", "New").Add("Size", 8);
  Properties shorter;
  shorter.Add("Name", "New");
  const Bstr drill(u"DRILL");
  const auto status = [&](VARIANT* names, VARIANT* values) {
    m_id = -1;
    const HRESULT added = m_db->AddNewRecord(drill.get(), names, values, &m_id);
    const HRESULT changed = m_db->SetToolProps(drill.get(), 1, names, values);
    EXPECT_EQ(Stored("DRILL", "Name", m_id), added == S_OK ? "New" : "");
    EXPECT_EQ(Stored("DRILL", "Name", 1), changed == S_OK ? "New" : "One");
    RunSql(m_file, "UPDATE DRILL SET Name = 'One' WHERE ID = 1");
    return std::string(added == S_OK ? "added " : "") + (m_id > 0 ? "id " : "") +
           (changed == S_OK ? "changed" : "");
  };
  EXPECT_EQ(status(good.Names(), good.Values()), "added id changed");
  EXPECT_EQ(status(good.Names(-7), good.Values(3)), "added id changed");
  EXPECT_EQ(status(good.Names(), shorter.Values()), "id ");
  EXPECT_EQ(status(shorter.Names(), good.Values()), "id ");
  EXPECT_EQ(status(nullptr, good.Values()), "");
  EXPECT_EQ(status(good.Names(), nullptr), "");

  Variant table = Variant::FromArray(VT_VARIANT, Table(VT_VARIANT, 1, 3));
  ArrayAccess<VARIANT>(table.get().parray)[0] = Variant::FromText(u"New").detach();
  EXPECT_EQ(status(shorter.Names(), table.ptr()), "id changed");
  for (const int type : {+VT_EMPTY, +VT_I4, VT_ARRAY | VT_VARIANT, VT_ARRAY | VT_I4}) {
    VARIANT wrong{};
    wrong.vt = static_cast<VARTYPE>(type);
    EXPECT_EQ(status(&wrong, good.Values()), "");
  }
  for (const bool lying : {false, true}) {
    SafeArray numbers = SafeArray::Vector(VT_I8, 2);
    VARIANT array{};
    array.vt = VT_ARRAY | VT_BSTR;
    array.parray = lying ? numbers.get() : nullptr;
    EXPECT_EQ(status(&array, good.Values()), "id ") << "no strings in the array";
  }
  EXPECT_EQ(m_db->AddNewRecord(Bstr(u"NOPE").get(), good.Names(), good.Values(), &m_id), E_FAIL);
  EXPECT_EQ(m_db->AddNewRecord(nullptr, good.Names(), good.Values(), &m_id), E_FAIL);
  EXPECT_EQ(m_db->SetToolProps(drill.get(), 12345, good.Names(), good.Values()), E_FAIL);
}

// Every type of value meets every type of field: what fits is stored, nothing else happens.
TEST_F(EditTest, ValuesOfEveryTypeForEveryField) {
  const std::string row = QueryRows(m_file,
                                    "SELECT group_concat(name) FROM "
                                    "pragma_table_info('ALL_TYPES') WHERE name LIKE 'F_%'");
  std::vector<std::string> fields;
  std::istringstream names(row);
  for (std::string field; std::getline(names, field, ',');) fields.push_back(field);
  ASSERT_EQ(fields.size(), 12u);

  LONG number = 5;
  SafeArray bytes = SafeArray::Vector(VT_UI1, 16);
  std::vector<VARIANT> values;  // own nothing
  for (const VARTYPE extra : {VARTYPE{0}, VARTYPE{VT_BYREF}, VARTYPE{VT_ARRAY}}) {
    for (VARTYPE type = 0; type <= VT_CLSID; ++type) {
      VARIANT value{};
      value.vt = type | extra;
      values.push_back(value);
    }
  }
  for (const int type : {VT_BYREF | VT_I4, VT_ARRAY | VT_UI1}) {
    VARIANT value{};
    value.vt = static_cast<VARTYPE>(type);
    if (type & VT_BYREF) value.plVal = &number;
    if (type & VT_ARRAY) value.parray = bytes.get();
    values.push_back(value);
  }
  const Bstr table(u"ALL_TYPES");
  Properties tool;
  for (const std::string& field : fields) tool.Add(field, Variant());
  tool.Add("Name", "stored");
  for (const VARIANT& value : values) {
    SCOPED_TRACE(value.vt);
    VARIANT* given = tool.Values();
    const auto elements = ArrayAccess<VARIANT>(given->parray).elements().first(fields.size());
    std::ranges::fill(elements, value);
    EXPECT_EQ(m_db->AddNewRecord(table.get(), tool.Names(), given, &m_id), S_OK);
    EXPECT_EQ(m_db->SetToolProps(table.get(), m_id, tool.Names(), given), S_OK);
    std::ranges::fill(elements, VARIANT{});
    EXPECT_EQ(Stored("ALL_TYPES", "Name", m_id), "stored");
    Variant read[2];
    EXPECT_EQ(m_db->GetToolProps(table.get(), m_id, read[0].ptr(), read[1].ptr()), S_OK);
    EXPECT_FALSE(read[1].empty());
  }
}

}  // namespace
}  // namespace orxdb::test
