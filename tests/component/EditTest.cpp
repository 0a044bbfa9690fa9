// Adding, changing and deleting tools through the interface.
#include <algorithm>
#include <fstream>
#include <functional>

#include "platform/framework/MessageBox.h"
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
    return Sql("SELECT \"" + field + "\" FROM " + table + " WHERE ID = " + std::to_string(id));
  }
};

constexpr const char* kFails = "fails";

// Each value is given to a new tool, whose fields start with defaults, and to a stored one.
TEST_F(EditTest, RulesOfTheToolDomain) {
  const auto text = [](std::string_view narrow) { return Variant::FromBstr(WidenToBstr(narrow)); };
  const auto reference = [](int type, const void* place) {
    return Variant::CopyOf(Reference(static_cast<VARTYPE>(type), place));
  };
  Variant name = text("刀");
  Variant steel = text("steel");
  Variant none;
  LONG number = 12;
  const std::string longText(60'000, 'x');
  const std::string hostile = "O''Brien [x] *?# \"6\" Ø %";
  // A field, its value, what becomes of it in the new tool and in the stored one; of taps, where
  // that differs.
  using Case = std::tuple<std::string, Variant, std::string, std::string>;
  const Case cases[] = {
      Case("Material", text("hss"), "1/1", ""), Case("Material", text("Steel"), "3/3", ""),
      Case("Material", text("Wood"), "2/fails", ""), Case("Material", text(""), "2/fails", ""),
      Case("Material", text("Absent"), "2/1", ""),
      Case("Material", text("It's"), "fails/fails", ""),
      Case("Material", text("' OR '1' = '1"), "1/1", ""),
      Case("Material", text("'; DELETE FROM MATERIAL; --"), "fails/fails", ""),
      Case("Material", Variant(), "2/NULL", ""),
      Case("Material", Variant::FromI4(4), "4/fails", ""),
      Case("TappingHead", text("Head B"), "2/2", ""),
      Case("TappingHead", text("Absent"), "NULL/NULL", ""),
      Case("TappingHead", text("absent"), "2/fails", ""),
      Case("TappingHead", Variant::Null(), "2/NULL", ""),
      // What counts is the value that a reference leads to.
      Case("Name", reference(VT_VARIANT, name.ptr()), "刀/刀", ""),
      Case("Name", reference(VT_BSTR, &name.ptr()->bstrVal), "刀/刀", ""),
      Case("Material", reference(VT_BSTR, &steel.ptr()->bstrVal), "3/3", ""),
      Case("Size", reference(VT_I4, &number), "12/12", ""),
      Case("Size", reference(VT_I4, nullptr), "7/5", ""),
      Case("Size", reference(VT_VARIANT, none.ptr()), "7/NULL", ""),
      Case("Size", text("12"), "12/12", ""), Case("Size", text("twelve"), "7/5", ""),
      Case("Size", Variant::FromI4(70'000), "7/5", ""),
      Case("Name", text(hostile), hostile + "/" + hostile, ""),
      Case("Name", text(longText), "NULL/One", ""),
      Case("Name", text("Absent"), "Absent/Absent", ""),
      Case("Approach_Height", Variant::FromR8(9), "9.0/9.0", "1.5/4.0"),
      Case("Retraction_Height", Variant(), "1.5/NULL", "1.5/4.0"),
      Case("Extra_Depth", Variant(), "1.5/NULL", "1.5/4.0"),
      Case("Retraction_Ratio", Variant(), "1.5/NULL", "1.5/4.0")};
  for (const std::string table : {"PIPE_TAP", "DRILL"}) {
    int stored = 1;
    for (const auto& [field, value, outcome, outcomeOfTap] : cases) {
      SCOPED_TRACE(table + "." + field + " -> " + outcome.substr(0, 20));
      const bool adds =
          Add(table, Properties().Add(field, value.Copy()).Add("Note", longText)) == S_OK;
      EXPECT_EQ(TakeError(), adds ? "" : kReportedError);
      const std::string added = adds ? Stored(table, field, m_id) : kFails;
      EXPECT_EQ(Stored(table, "Note", m_id), adds ? longText : "") << "all of it, or none";
      EXPECT_EQ(Sql("SELECT count(*) FROM " + table), std::to_string(stored += adds));
      Properties change;
      const bool changes =
          Set(table, 1, change.Add("Note", "new").Add(field, value.Copy())) == S_OK;
      EXPECT_EQ(TakeError(), changes ? "" : kReportedError);
      EXPECT_EQ(added + "/" + (changes ? Stored(table, field, 1) : kFails),
                table == "PIPE_TAP" && !outcomeOfTap.empty() ? outcomeOfTap : outcome);
      EXPECT_EQ(Stored(table, "Note", 1), changes ? "new" : "x");
      Sql("REPLACE INTO " + table + " VALUES (1, 'One', 4, 4, 4, 4, 5, 'x', 1, 1)");
    }
  }
  Properties odd;
  EXPECT_EQ(Add("DRILL", odd.Add("Nope", Variant())), S_OK) << "nothing to write";
  EXPECT_EQ(Set("DRILL", 1, odd), E_FAIL);
  EXPECT_EQ(Add("DRILL", odd.Add("ID", 99).Add("Nope", 1)), E_FAIL);
  EXPECT_EQ(Sql("SELECT count(*) FROM MATERIAL"), "4");
}

TEST_F(EditTest, TappingHeadsNeedNamesOfTheirOwn) {
  std::string messages;
  auto earlier =
      InstallMessageBoxHandler([&](const std::string& text, const std::string&, unsigned style) {
        messages += text + "/" + std::to_string(style);
        return IDOK;
      });
  Variant used = Variant::FromText(u"head a");
  const VARIANT reference = Reference(VT_BSTR, &used.ptr()->bstrVal);
  EXPECT_EQ(Add("TAPPING_HEAD", Properties().Add("Name", Variant::CopyOf(reference))), E_FAIL);
  EXPECT_EQ(messages, "You should use unique 'Description' for each Tapping Head/16");
  EXPECT_EQ(m_id, 3);
  EXPECT_EQ(Add("TAPPING_HEAD", Properties().Add("Name", "It's")), S_OK) << "cannot be asked about";
  EXPECT_EQ(Add("TAPPING_HEAD", Properties().Add("Name", Variant::FromI4(7))), S_OK);
  EXPECT_EQ(Add("DRILL", Properties().Add("Name", "One")), S_OK);
  Properties again;
  EXPECT_EQ(Set("TAPPING_HEAD", 2, again.Add("Name", "Head A")), S_OK);
  EXPECT_EQ(messages.find("/16"), messages.rfind("/16")) << "one message only";
  EXPECT_EQ(Sql("SELECT ID || Name FROM TAPPING_HEAD"), "1Head A|2Head A|4It's|57");
  for (const std::string kind : {"It's", "head a"}) {
    Properties head;
    VARIANT* const names = head.Add("Kind", kind).Add("Name", "").Names();
    VARIANT* const values = head.Values();
    EXPECT_EQ(Gives(&Db::GenerateDefToolName2, "TAPPING_HEAD", names, values),
              kind == "It's" ? kind : kind + "_1");
    EXPECT_EQ(Show(*values), kind + '|' + kind) << "without suffix";
  }
  InstallMessageBoxHandler(std::move(earlier));
}

// A message lets the host run, which may release an object or make one in the middle of a call.
TEST_F(EditTest, MessagesMayEndTheDataObject) {
  Sql("INSERT INTO TAPPING_HEAD (Name) VALUES ('AUX_TEMP_TOOLNAME_~*&^$%_')");
  const std::string text = m_folder / "x.txt";
  std::ofstream(text) << "ORX_tool_table_version=1.0\nORX_tool_table_name=TAPPING_HEAD\n"
                         "ORX_table_export_type=ORX_exported_by_table\n\"ID\"\t\"Name\"\n"
                         "\"9\"\t\"Head A\"\n\"9\"\t\"New\"\n";
  const char* table = "TAPPING_HEAD";
  Properties head;
  head.Add("Name", "Head B");
  const std::pair<std::function<std::string()>, const char*> calls[] = {
      {[&] { return Gives(&Db::AddNewRecord, table, head.Names(), head.Values()); }, "fails"},
      {[&] { return Gives(&Db::ImportToolRecordsFromFile, text, 0); }, ""},
      {[&] { return Gives(&Db::GetDefPropsValues, table); }, "nothing/nothing"}};
  int messages = 0;
  for (const bool replace : {false, true}) {
    for (const auto& [call, result] : calls) {
      ComPtr<IOrxDbObj> other;
      Reopen();
      InstallMessageBoxHandler([&](const std::string&, const std::string&, unsigned) {
        ++messages;
        Sql("UPDATE TAPPING_HEAD SET Name = Name");  // nothing keeps other programs out
        if (replace) other = NewObject();
        if (!replace) m_db.reset();
        return IDOK;
      });
      EXPECT_EQ(call(), result) << replace;
      EXPECT_EQ(Sql("SELECT count(*) FROM TAPPING_HEAD"), "3");
    }
  }
  EXPECT_EQ(messages, 6);
  InstallMessageBoxHandler({});
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
    return std::string(added == S_OK ? "added " : "") + (m_id > 0 ? "id " : "") +
           (changed == S_OK ? "changed" : "");
  };
  EXPECT_EQ(status(good.Names(), shorter.Values()), "id ");
  EXPECT_EQ(status(shorter.Names(), good.Values()), "id ");
  EXPECT_EQ(status(nullptr, good.Values()), "");
  EXPECT_EQ(status(good.Names(), nullptr), "");
  SafeArray numbers = SafeArray::Vector(VT_I8, 2);
  VARIANT odd{};
  odd.parray = numbers.get();
  for (const int type : {+VT_EMPTY, +VT_I4, VT_ARRAY | VT_VARIANT, VT_ARRAY | VT_I4}) {
    odd.vt = static_cast<VARTYPE>(type);
    EXPECT_EQ(status(&odd, good.Values()), "");
  }
  odd.vt = VT_ARRAY | VT_BSTR;
  EXPECT_EQ(status(&odd, good.Values()), "id ") << "no strings in the array";
  odd.parray = nullptr;
  EXPECT_EQ(status(&odd, good.Values()), "id ") << "no array";
  EXPECT_EQ(Sql("SELECT Name FROM DRILL"), "One");

  const SAFEARRAYBOUND bounds[] = {{1, -3}, {3, 0}};
  SafeArray table;
  table.attach(SafeArrayCreate(VT_VARIANT, 2, bounds));
  ArrayAccess<VARIANT>(table.get())[0] = Variant::FromText(u"Table").detach();
  Variant two = Variant::FromArray(VT_VARIANT, std::move(table));
  EXPECT_EQ(status(shorter.Names(), two.ptr()), "id changed");
  EXPECT_EQ(Sql("SELECT Name FROM DRILL"), "Table") << "along the first dimension";
  EXPECT_EQ(status(good.Names(), good.Values()), "added id changed");
  EXPECT_EQ(status(good.Names(-7), good.Values(3)), "added id changed");
  EXPECT_EQ(Sql("SELECT Name || Size FROM DRILL"), "New8|New8|New8");
  EXPECT_EQ(Gives(&Db::AddNewRecord, "NOPE", good.Names(), good.Values()), kFails);
  EXPECT_EQ(Gives(&Db::AddNewRecord, nullptr, good.Names(), good.Values()), kFails);
  EXPECT_EQ(Gives(&Db::SetToolProps, "DRILL", 12345, good.Names(), good.Values()), kFails);
}

// Values of every type for fields of every type: what fits is stored, nothing else happens.
TEST_F(EditTest, ValuesOfEveryTypeForEveryField) {
  const Bstr table(u"ALL_TYPES");
  Variant names;
  Variant values;
  ASSERT_EQ(m_db->GetDefPropsValues(table.get(), names.ptr(), values.ptr()), S_OK);
  // Behind the ID and the name, fields without a value.
  const auto elements = ArrayAccess<VARIANT>(values.get().parray).elements().subspan(2);
  SafeArray bytes = SafeArray::Vector(VT_UI1, 16);
  for (const int extra : {0, +VT_BYREF, +VT_ARRAY}) {
    for (int type = 0; type <= VT_CLSID; ++type) {
      SCOPED_TRACE(type | extra);
      VARIANT value{};  // owns nothing
      value.vt = static_cast<VARTYPE>(type | extra);
      if (value.vt == (VT_ARRAY | VT_UI1)) value.parray = bytes.get();
      std::ranges::fill(elements, value);
      EXPECT_EQ(m_db->AddNewRecord(table.get(), names.ptr(), values.ptr(), &m_id), S_OK);
      EXPECT_EQ(m_db->SetToolProps(table.get(), m_id, names.ptr(), values.ptr()), S_OK);
      EXPECT_THAT(Gives(&Db::GetToolProps, "ALL_TYPES", m_id),
                  testing::HasSubstr(std::to_string(m_id) + "|AUX_TEMP"));
      std::ranges::fill(elements, VARIANT{});
    }
  }
}

}  // namespace
}  // namespace orxdb::test
