// Properties of tools and their fields, default values and default names, through the interface.
#include "platform/framework/Text.h"
#include "tests/component/ComponentFixture.h"

namespace orxdb::test {
namespace {

using testing::ElementsAre;

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

TEST_F(PropertyTest, FieldTypes) {
  constexpr int kBytes = VT_ARRAY | VT_UI1;
  const std::pair<std::string, int> fields[] = {
      {"BOOLEAN", VT_BOOL},   {"BYTE", VT_UI1},      {"SHORT", VT_I2},       {"LONG", VT_I4},
      {"CURRENCY", VT_CY},    {"SINGLE", VT_R4},     {"DOUBLE", VT_R8},      {"DATETIME", VT_DATE},
      {"TEXT(5)", VT_BSTR},   {"LONGTEXT", VT_BSTR}, {"LONGBINARY", kBytes}, {"GUID", VT_CLSID},
      {"BINARY(4)", VT_NULL}, {"BIGINT", VT_NULL}};
  std::string columns;
  std::vector<int> expected = {VT_I4};
  for (const auto& [declared, type] : fields) {
    columns += ", F" + std::to_string(expected.size()) + ' ' + declared;
    expected.push_back(type);
  }
  OpenSeeded("CREATE TABLE WIDE (ID INTEGER PRIMARY KEY AUTOINCREMENT" + columns +
             "); CREATE VIEW Q_WIDE AS SELECT * FROM WIDE; INSERT INTO TYPES_DATA "
             "(TOOLTABLE_NAME, SEARCH_PARAM) VALUES ('Q_WIDE', 'a;b'), ('Q_WIDER', 'a')");
  Variant names;
  Variant variantTypes;
  ASSERT_EQ(m_db->GetPropsTypes(Bstr(u"WIDE").get(), names.ptr(), variantTypes.ptr()), S_OK);
  EXPECT_EQ(TakeError(), kReportedError) << "told about the fields without a type";
  ASSERT_EQ(variantTypes.type(), VT_ARRAY | VT_I2);
  EXPECT_THAT(ArrayAccess<SHORT>(variantTypes.get().parray).elements(),
              testing::ElementsAreArray(expected));
  USHORT type = 99;
  const auto status = [&](const char16_t* table, const std::string& field) {
    return m_db->GetFieldType(Bstr(table).get(), WidenToBstr(field).get(), &type);
  };
  EXPECT_EQ(status(u"NONE", "ID"), S_OK);
  EXPECT_EQ(status(u"WIDE", "Nope"), E_FAIL);
  EXPECT_EQ(status(u"WIDER", "ID"), E_FAIL);
  EXPECT_EQ(type, 99);
  std::size_t place = 0;
  for (const std::string& name : Strings(names.get())) {
    const int wanted = expected[place++];
    EXPECT_EQ(name, place == 1 ? "ID" : "F" + std::to_string(place - 1));
    EXPECT_EQ(status(u"WIDE", name), wanted == VT_NULL ? E_FAIL : S_OK);
    EXPECT_EQ(type, wanted);
  }
  Variant untouched = Variant::FromI4(1);
  for (const auto* table : {u"NONE", u"WIDER"}) {
    EXPECT_EQ(m_db->GetPropsTypes(Bstr(table).get(), untouched.ptr(), untouched.ptr()), S_OK);
  }
  const auto parameters = [&](const char16_t* table, Variant& found) {
    return m_db->GetSearchParamNames(Bstr(table).get(), found.ptr());
  };
  EXPECT_EQ(parameters(u"MILL", untouched), S_OK) << "no parameters";
  EXPECT_EQ(parameters(u"NONE", untouched), E_FAIL);
  EXPECT_ANY_THROW(parameters(u"WIDER", untouched)) << "a table that could not be opened";
  EXPECT_EQ(untouched.type(), VT_I4);
  names.clear();
  ASSERT_EQ(parameters(u"TAP", names), S_OK);
  EXPECT_THAT(Strings(names.get()), ElementsAre("Diameter", "Unit"));
}

TEST_F(PropertyTest, FindingInArrays) {
  Properties tool;
  tool.Add("Name", "a").Add("name", "b").Add("Name", "c").Add("Null", Variant::Null());
  const auto find = [&](const char16_t* name, LONG lowest = 0, LONG lowestValue = 0) {
    return Find(name, tool.Names(lowest), tool.Values(lowestValue));
  };
  EXPECT_EQ(find(u"Name"), "0: a") << "the first of two";
  EXPECT_EQ(find(u"name"), "1: b");
  EXPECT_EQ(find(u"Null"), "3: ");
  EXPECT_EQ(find(u"Nam"), "");
  EXPECT_EQ(find(u"name", -5, -5), "-4: b");
  EXPECT_EQ(find(u"Name", 1), "1: b") << "the same index";
  EXPECT_EQ(find(u"Null", 1), "4: ") << "behind the values";
  Variant number = Variant::FromI4(17);
  for (VARIANT* noNames : {number.ptr(), tool.Values(), static_cast<VARIANT*>(nullptr)}) {
    EXPECT_EQ(Find(u"Name", noNames, tool.Values()), "");
  }
  EXPECT_EQ(Find(u"Name", tool.Names(), tool.Names()), "") << "no values";
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
  Variant names;
  Variant values;
  const Bstr drill(u"DRILL");
  ASSERT_EQ(m_db->GetDefPropsValues(drill.get(), names.ptr(), values.ptr()), S_OK);
  EXPECT_EQ(Find(u"Unit", names.ptr(), values.ptr()), "2: mm");
  EXPECT_EQ(Find(u"Size", names.ptr(), values.ptr()), "3: 7");
  EXPECT_EQ(Find(u"ID", names.ptr(), values.ptr()), "0: 4");
  EXPECT_EQ(Find(u"Name", names.ptr(), values.ptr()), "1: AUX_TEMP_TOOLNAME_~*&^$%_");
  EXPECT_EQ(m_db->GetDefPropsValues(drill.get(), names.ptr(), values.ptr()), E_FAIL);
  EXPECT_EQ(m_db->GetDefPropsValues(Bstr(u"NONE").get(), names.put(), values.put()), S_OK);
  EXPECT_TRUE(names.empty() && values.empty());
  EXPECT_EQ(QueryRows(m_file, "SELECT ID FROM DRILL"), "1|2|3");
}

// A table with two tools, one of them with an empty name, for every format.
TEST_F(PropertyTest, NamesByFormat) {
  const std::pair<std::string, std::string> cases[] = {
      // '#' is M for taps and m for others
      {"", ""},
      {"%", ""},
      {"a%", "a"},
      {"%%a%b", "a"},
      {"Mill", "Mill    "},
      {"%flutes%-%Note%", "-"},
      {"D%Diameter%_%Unit%", "D10.5_#"},
      {"D%Diameter%_%Inch%", "D10.5_i"},
      {"%Diameter%x%Flutes%mm", "10.5x4"},
      {"T%Unit%_%Coating%_%Flutes%", "T#_4"},
      {"Ø%Coating%a%Coating%%Coating%", ""},
      {"刀%Coating%é%Note%", "é"},
      {"%Coolant%/%Left%", "Yes/No"},
      {"a_%Nope%_%Empty%____%Null%_b%Nope%", "a_b"},
      {"%Flutes%%Flutes%%", "44"},
      {"a%Flutes%b%Flutes%c%", "a4b4c"},
      {"_____________x", "_x    "},
      {"%Text%", "fräsen 刀"}};
  Properties tool;
  tool.Add("Diameter", 10.5).Add("Unit", "mm").Add("Inch", "in").Add("Coating", "Absent");
  tool.Add("Flutes", 4).Add("Null", Variant::Null()).Add("Empty", Variant()).Add("Note", "");
  tool.Add("Coolant", Variant::FromBool(true)).Add("Left", Variant::FromBool(false));
  tool.Add("Text", "fräsen 刀").Add("Name", "own");
  Properties nameless;
  nameless.Add("Flutes", 4).Add("Name", Variant::Null());
  for (const auto& [format, name] : cases) {
    SCOPED_TRACE(format);
    m_db.reset();
    m_db = NewObject();
    std::filesystem::remove(m_file);
    OpenSeeded("UPDATE TYPES_DATA SET DEF_NAME_FORMAT = '" + format + "'");
    VARIANT* values = tool.Values();
    for (const auto& [table, unit] : {std::pair("TAP", 'M'), std::pair("MILL", 'm')}) {
      std::string expected = '[' + name + ']';
      std::ranges::replace(expected, '#', unit);
      EXPECT_EQ(NameOf(table, tool.Names(), values), expected);
    }
    EXPECT_EQ(Find(u"Name", tool.Names(), values), "11: own");
    values = nameless.Values();
    const std::string made = NameOf("MILL", nameless.Names(), values);
    EXPECT_EQ('[' + Find(u"Name", nameless.Names(), values).substr(3) + ']', made);
    Variant none;
    NameOf("MILL", none.ptr(), none.ptr());
  }
}

TEST_F(PropertyTest, StoredToolsAndTheirNames) {
  OpenSeeded(
      "UPDATE TYPES_DATA SET DEF_NAME_FORMAT = 'Mill D%Diameter%';"
      "UPDATE MILL SET Name = '' WHERE ID < 3");
  EXPECT_EQ(NameOfStored("MILL", 3), "[Mill D7]");
  EXPECT_EQ(NameOfStored("MILL", 99), "[Mill D]") << "the literal text of the format";
  EXPECT_EQ(NameOfStored("NONE", 1), "");
  EXPECT_EQ(Tool("TAP", 2)["Material"], "Carbide") << "two tables of the query have an ID";
  Variant names;
  Variant values;
  EXPECT_EQ(m_db->GetToolProps(Bstr(u"NONE").get(), 1, names.ptr(), values.ptr()), E_FAIL);
  values = Variant::Null();
  EXPECT_EQ(m_db->GetToolProps(Bstr(u"TAP").get(), 1, names.ptr(), values.ptr()), E_FAIL);
  EXPECT_TRUE(names.empty());
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
