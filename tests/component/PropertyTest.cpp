// Properties of tools and their fields, default values and default names, through the interface.
#include "platform/framework/Text.h"
#include "tests/component/ComponentFixture.h"

namespace orxdb::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class PropertyTest : public ComponentTest {
 protected:
  /// What the search for a property gives: "index: text", or nothing when `property` stays empty.
  std::string Find(const char16_t* name, VARIANT* names, VARIANT* values) {
    Variant found;
    LONG index = -99;
    EXPECT_EQ(m_db->FindPropByNameInArray(Bstr(name).get(), names, values, found.ptr(), &index),
              S_OK);
    if (index == -99) return {};
    Bstr text;
    m_db->VariantToUIString(found.ptr(), text.put(), -1);
    return std::to_string(index) + ": " + NarrowBstr(text.get());
  }
  /// The name made for properties, between brackets; nothing when the call gives none.
  std::string NameOf(std::string_view table, VARIANT* names, VARIANT* values) {
    Bstr name;
    EXPECT_EQ(m_db->GenerateDefToolName2(WidenToBstr(table).get(), names, values, name.put()),
              S_OK);
    return name ? '[' + NarrowBstr(name.get()) + ']' : "";
  }
  std::string NameOfStored(std::string_view table, LONG id) {
    Bstr name;
    EXPECT_EQ(m_db->GenerateDefToolName(WidenToBstr(table).get(), id, name.put()), S_OK);
    return name ? '[' + NarrowBstr(name.get()) + ']' : "";
  }
};

TEST_F(PropertyTest, ToolsByIdentifierLeaveTheCursor) {
  OpenSeeded();
  ASSERT_EQ(SetFilter("MILL", "Diameter < 5"), S_OK);
  EXPECT_EQ(First("MILL")["ID"], "6");
  EXPECT_EQ(Tool("MILL", 2)["Name"], "F2") << "whatever the filter";
  EXPECT_EQ(Next("MILL")["ID"], "7");
  EXPECT_THAT(Tool("MILL", 10), IsEmpty());
  EXPECT_THAT(Tool("MILL", -1), IsEmpty());
  EXPECT_EQ(Next("MILL")["ID"], "8");
  EXPECT_EQ(Tool("TAP", 2)["Material"], "Carbide") << "two tables of the query have an ID";
  Variant names;
  Variant values;
  EXPECT_EQ(m_db->GetToolProps(Bstr(u"NONE").get(), 1, names.ptr(), values.ptr()), E_FAIL);
  values = Variant::Null();
  EXPECT_EQ(m_db->GetToolProps(Bstr(u"TAP").get(), 1, names.ptr(), values.ptr()), E_FAIL);
  EXPECT_TRUE(names.empty());
}

TEST_F(PropertyTest, FieldTypes) {
  std::string columns;
  std::string shown;
  std::string types;
  const struct {
    const char* declared;
    int type;
  } fields[] = {{"BOOLEAN", VT_BOOL},
                {"BYTE", VT_UI1},
                {"SHORT", VT_I2},
                {"LONG", VT_I4},
                {"CURRENCY", VT_CY},
                {"SINGLE", VT_R4},
                {"DOUBLE", VT_R8},
                {"DATETIME", VT_DATE},
                {"TEXT(5)", VT_BSTR},
                {"LONGTEXT", VT_BSTR},
                {"LONGBINARY", VT_ARRAY | VT_UI1},
                {"GUID", VT_CLSID},
                {"BINARY(4)", VT_NULL},
                {"BIGINT", VT_NULL}};
  std::vector<int> expected = {VT_I4};
  for (const auto& [declared, type] : fields) {
    const std::string name = "F" + std::to_string(expected.size());
    columns += ", " + name + ' ' + declared;
    shown += ", " + name + " AS " + name;
    expected.push_back(type);
  }
  OpenSeeded("CREATE TABLE WIDE (ID INTEGER PRIMARY KEY AUTOINCREMENT" + columns +
             "); CREATE VIEW Q_WIDE AS SELECT ID AS ID" + shown +
             " FROM WIDE; INSERT INTO TYPES_DATA (TOOLTABLE_NAME, SEARCH_PARAM) VALUES "
             "('Q_WIDE', 'a;b'), ('Q_WIDER', 'a')");
  Variant names;
  Variant variantTypes;
  ASSERT_EQ(m_db->GetPropsTypes(Bstr(u"WIDE").get(), names.ptr(), variantTypes.ptr()), S_OK);
  EXPECT_EQ(TakeError(), kReportedError) << "told about the fields without a type";
  ASSERT_EQ(variantTypes.type(), VT_ARRAY | VT_I2);
  const ArrayAccess<SHORT> found(variantTypes.get().parray);
  EXPECT_EQ(std::vector<int>(found.begin(), found.end()), expected);
  for (const std::string& name : Strings(names.get())) {
    USHORT type = 99;
    const int wanted = expected[name == "ID" ? 0 : std::stoul(name.substr(1))];
    EXPECT_EQ(m_db->GetFieldType(Bstr(u"WIDE").get(), WidenToBstr(name).get(), &type),
              wanted == VT_NULL ? E_FAIL : S_OK);
    EXPECT_EQ(type, wanted);
  }
  USHORT type = 99;
  EXPECT_EQ(m_db->GetFieldType(Bstr(u"NONE").get(), Bstr(u"ID").get(), &type), S_OK);
  EXPECT_EQ(m_db->GetFieldType(Bstr(u"WIDE").get(), Bstr(u"Nope").get(), &type), E_FAIL);
  EXPECT_EQ(m_db->GetFieldType(Bstr(u"WIDER").get(), Bstr(u"ID").get(), &type), E_FAIL);
  EXPECT_EQ(type, 99);
  Variant untouched = Variant::FromI4(1);
  for (const auto* table : {u"NONE", u"WIDER"}) {
    EXPECT_EQ(m_db->GetPropsTypes(Bstr(table).get(), untouched.ptr(), untouched.ptr()), S_OK);
  }
  EXPECT_EQ(untouched.type(), VT_I4);

  Variant parameters;
  ASSERT_EQ(m_db->GetSearchParamNames(Bstr(u"TAP").get(), parameters.ptr()), S_OK);
  EXPECT_THAT(Strings(parameters.get()), ElementsAre("Diameter", "Unit"));
  EXPECT_EQ(m_db->GetSearchParamNames(Bstr(u"MILL").get(), untouched.ptr()), S_OK);
  EXPECT_EQ(untouched.type(), VT_I4) << "no parameters";
  EXPECT_EQ(m_db->GetSearchParamNames(Bstr(u"NONE").get(), untouched.ptr()), E_FAIL);
  EXPECT_ANY_THROW(m_db->GetSearchParamNames(Bstr(u"WIDER").get(), untouched.ptr()))
      << "a table that could not be opened";
}

TEST_F(PropertyTest, FindingInArrays) {
  Properties tool;
  tool.Add("Name", "a").Add("name", "b").Add("Name", "c").Add("Null", Variant::Null());
  EXPECT_EQ(Find(u"Name", tool.Names(), tool.Values()), "0: a") << "the first of two";
  EXPECT_EQ(Find(u"name", tool.Names(), tool.Values()), "1: b");
  EXPECT_EQ(Find(u"Null", tool.Names(), tool.Values()), "3: ");
  EXPECT_EQ(Find(u"Nam", tool.Names(), tool.Values()), "");
  EXPECT_EQ(Find(u"name", tool.Names(-5), tool.Values(-5)), "-4: b");
  EXPECT_EQ(Find(u"Name", tool.Names(1), tool.Values(0)), "1: b") << "the same index";
  EXPECT_EQ(Find(u"Null", tool.Names(1), tool.Values(0)), "4: ") << "behind the values";
  Variant number = Variant::FromI4(17);
  EXPECT_EQ(Find(u"Name", number.ptr(), tool.Values()), "");
  EXPECT_EQ(Find(u"Name", tool.Values(), tool.Values()), "") << "no strings";
  EXPECT_EQ(Find(u"Name", tool.Names(), tool.Names()), "") << "no values";
  EXPECT_EQ(Find(u"Name", nullptr, tool.Values()), "");
  LONG index = 7;
  EXPECT_EQ(m_db->FindPropByNameInArray(Bstr(u"Name").get(), tool.Names(), tool.Values(),
                                        number.ptr(), &index),
            S_OK);
  EXPECT_EQ(number.get().lVal, 17) << "not looked for";
  EXPECT_EQ(index, 7);
}

TEST_F(PropertyTest, DefaultValuesLeaveNoTool) {
  OpenSeeded(
      "CREATE TABLE DRILL (ID INTEGER PRIMARY KEY AUTOINCREMENT, Name TEXT(50), Unit TEXT(4) "
      "DEFAULT 'mm', Size SHORT DEFAULT 7); INSERT INTO DRILL (Name) VALUES ('a'), ('b'), ('c');"
      "CREATE VIEW Q_DRILL AS SELECT ID AS ID, Name AS Name, Unit AS Unit, Size AS Size FROM DRILL;"
      "INSERT INTO TYPES_DATA (TOOLTABLE_NAME) VALUES ('Q_DRILL')");
  First("DRILL");
  EXPECT_EQ(Next("DRILL")["Name"], "b");
  Variant names;
  Variant values;
  const Bstr drill(u"DRILL");
  ASSERT_EQ(m_db->GetDefPropsValues(drill.get(), names.ptr(), values.ptr()), S_OK);
  EXPECT_EQ(Find(u"Unit", names.ptr(), values.ptr()), "2: mm");
  EXPECT_EQ(Find(u"Size", names.ptr(), values.ptr()), "3: 7");
  EXPECT_EQ(Find(u"ID", names.ptr(), values.ptr()), "0: 4");
  EXPECT_EQ(Find(u"Name", names.ptr(), values.ptr()), "1: AUX_TEMP_TOOLNAME_~*&^$%_");
  EXPECT_EQ(Next("DRILL")["Name"], "c");
  EXPECT_EQ(m_db->GetDefPropsValues(drill.get(), names.ptr(), values.ptr()), E_FAIL);
  EXPECT_EQ(m_db->GetDefPropsValues(Bstr(u"NONE").get(), names.put(), values.put()), S_OK);
  EXPECT_TRUE(names.empty() && values.empty());
  EXPECT_EQ(QueryRows(m_file, "SELECT ID FROM DRILL"), "1|2|3");
  EXPECT_EQ(QueryRows(m_file, "SELECT seq FROM sqlite_sequence WHERE name = 'DRILL'"), "4");
}

// A table with two tools, one of them with an empty name, for every format.
TEST_F(PropertyTest, NamesByFormat) {
  struct Case {
    const char* format;
    const char* tap;
    const char* mill;
  };
  const Case cases[] = {{"", "[]", "[]"},
                        {"Mill", "[Mill    ]", "[Mill    ]"},
                        {"D%Diameter%_%Unit%", "[D10.5_M]", "[D10.5_m]"},
                        {"D%Diameter%_%Inch%", "[D10.5_i]", "[D10.5_i]"},
                        {"%Diameter%x%Flutes%mm", "[10.5x4]", "[10.5x4]"},
                        {"T%Unit%_%Coating%_%Flutes%", "[TM_4]", "[Tm_4]"},
                        {"Ø%Coating%a%Coating%%Coating%", "[]", "[]"},
                        {"刀%Coating%é%Note%", "[é]", "[é]"},
                        {"%Coolant%/%Left%", "[Yes/No]", "[Yes/No]"},
                        {"a_%Nope%_%Empty%____%Null%_b%Nope%", "[a_b]", "[a_b]"},
                        {"%%a%b", "[a]", "[a]"},
                        {"a%", "[a]", "[a]"},
                        {"%", "[]", "[]"},
                        {"%Flutes%%Flutes%%", "[44]", "[44]"},
                        {"a%Flutes%b%Flutes%c%", "[a4b4c]", "[a4b4c]"},
                        {"_____________x", "[_x    ]", "[_x    ]"},
                        {"%flutes%-%Note%", "[-]", "[-]"},
                        {"%Text%", "[fräsen 刀]", "[fräsen 刀]"}};
  Properties tool;
  tool.Add("Diameter", 10.5).Add("Unit", "mm").Add("Inch", "in").Add("Coating", "Absent");
  tool.Add("Flutes", 4).Add("Null", Variant::Null()).Add("Empty", Variant()).Add("Note", "");
  tool.Add("Coolant", Variant::FromBool(true)).Add("Left", Variant::FromBool(false));
  tool.Add("Text", "fräsen 刀").Add("Name", "own");
  Properties nameless;
  nameless.Add("Flutes", 4).Add("Name", Variant::Null());
  for (const auto& [format, tap, mill] : cases) {
    SCOPED_TRACE(format);
    m_db.reset();
    m_db = NewObject();
    std::filesystem::remove(m_file);
    OpenSeeded(std::string("UPDATE TYPES_DATA SET DEF_NAME_FORMAT = '") + format + "'");
    VARIANT* values = tool.Values();
    EXPECT_EQ(NameOf("TAP", tool.Names(), values), tap);
    EXPECT_EQ(NameOf("MILL", tool.Names(), values), mill);
    EXPECT_EQ(Find(u"Name", tool.Names(), values), "11: own");
    values = nameless.Values();
    const std::string name = NameOf("MILL", nameless.Names(), values);
    EXPECT_EQ('[' + Find(u"Name", nameless.Names(), values).substr(3) + ']', name);
    Variant none;
    NameOf("MILL", none.ptr(), none.ptr());
  }
}

TEST_F(PropertyTest, NamesOfStoredTools) {
  OpenSeeded(
      "UPDATE TYPES_DATA SET DEF_NAME_FORMAT = 'Mill D%Diameter%';"
      "UPDATE MILL SET Name = '' WHERE ID < 3");
  EXPECT_EQ(NameOfStored("MILL", 3), "[Mill D7]");
  EXPECT_EQ(NameOfStored("MILL", 99), "[Mill D]") << "the literal text of the format";
  EXPECT_EQ(NameOfStored("NONE", 1), "");
  EXPECT_EQ(First("MILL")["Name"], "Mill D9") << "the first tool gets a name,";
  EXPECT_EQ(Next("MILL")["Name"], "") << "the others do not";
  EXPECT_EQ(QueryRows(m_file, "SELECT Name FROM MILL WHERE ID = 1"), "");
}

TEST_F(PropertyTest, NamesOfTappingHeadsAreUnique) {
  OpenSeeded(
      "CREATE TABLE TAPPING_HEAD (ID INTEGER PRIMARY KEY AUTOINCREMENT, Name TEXT(50));"
      "CREATE VIEW Q_TAPPING_HEAD AS SELECT ID AS ID, Name AS Name FROM TAPPING_HEAD;"
      "INSERT INTO TYPES_DATA (TOOLTABLE_NAME, DEF_NAME_FORMAT) VALUES ('Q_TAPPING_HEAD', "
      "'%Kind%');INSERT INTO TAPPING_HEAD (Name) VALUES ('r'), ('R_1'), ('S_1')");
  const std::pair<const char*, const char*> cases[] = {
      {"R", "[R_2]"}, {"S", "[S]"}, {"R_1", "[R_1_1]"}, {"It's", "[It's]"}};
  for (const auto& [kind, name] : cases) {
    Properties tool;
    tool.Add("Kind", kind).Add("Name", "");
    VARIANT* values = tool.Values();
    EXPECT_EQ(NameOf("TAPPING_HEAD", tool.Names(), values), name);
    EXPECT_EQ(Find(u"Name", tool.Names(), values), std::string("1: ") + kind) << "without suffix";
  }
}

}  // namespace
}  // namespace orxdb::test
