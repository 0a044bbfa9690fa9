// Machining data through the interface: which row is chosen, what a list holds.
#include <cmath>
#include <limits>
#include <random>

#include "platform/framework/Text.h"
#include "tests/component/ComponentFixture.h"

namespace orxdb::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// Two materials with ranges that overlap, touch and leave gaps; factor tables; lookup lists.
std::string LookupTables() {
  std::string sql =
      "DROP VIEW Q_STOCK_MATERIAL; DROP VIEW Q_DRILLING_FS; DROP VIEW Q_DRILL_FEED;"
      "DROP VIEW Q_REAMING_FS;"
      "CREATE TABLE STEELS (ID INTEGER PRIMARY KEY, DispType TEXT(30), HB LONG);"
      "INSERT INTO STEELS VALUES (1, 'Steel-soft', 120), (2, 'Steel/soft', 150), (3, NULL, NULL);"
      "CREATE VIEW Q_STOCK_MATERIAL AS SELECT ID AS ID, DispType AS DispType, HB AS HB FROM STEELS;"
      "CREATE TABLE RANGES (ID INTEGER PRIMARY KEY, Material TEXT(30), MinHB DOUBLE, MaxHB DOUBLE);"
      "INSERT INTO RANGES (Material, MinHB, MaxHB) VALUES ('Steel', 100, 199), ('Steel', 200, 250),"
      " ('Brass', 50, 90), ('Steel', 240, 260), ('Steel', 300, 300), ('Steel', 350, 400);"
      "CREATE VIEW Q_DRILLING_FS AS SELECT ID AS ID, Material AS Material, MinHB AS MinHB, "
      "MaxHB AS MaxHB FROM RANGES;"
      "CREATE TABLE FEEDS (ID INTEGER PRIMARY KEY, MinDiameter DOUBLE, MaxDiameter DOUBLE);"
      "INSERT INTO FEEDS VALUES (1, 1, 3), (2, 3, 6), (3, 8, 12.5);"
      "CREATE VIEW Q_DRILL_FEED AS SELECT ID AS ID, MinDiameter AS MinDiameter, "
      "MaxDiameter AS MaxDiameter FROM FEEDS;"
      "CREATE VIEW Q_REAMING_FS AS SELECT ID AS ID FROM STEELS;"
      "INSERT INTO T15c VALUES (1, 10), (2, 20), (3, 30); INSERT INTO T25 VALUES (1, 5);"
      "CREATE TABLE TAPPING_HEAD (ID INTEGER PRIMARY KEY AUTOINCREMENT, Name TEXT(50), "
      "AUX_Metric_Min_Diameter DOUBLE, AUX_Metric_Max_Diameter DOUBLE);"
      "INSERT INTO TAPPING_HEAD VALUES (4, 'big', 8, 12), (7, 'small', 3, 8), (9, 'none', NULL, 5);"
      "CREATE VIEW Q_TAPPING_HEAD AS SELECT ID AS \"TAPPING_HEAD.ID\", Name AS Name, "
      "AUX_Metric_Min_Diameter AS AUX_Metric_Min_Diameter, "
      "AUX_Metric_Max_Diameter AS AUX_Metric_Max_Diameter FROM TAPPING_HEAD;"
      "CREATE TABLE T_FEM_TEMPL (METRIC DOUBLE, IMP_DECIM DOUBLE, LET_NUM_FRACT TEXT(9), "
      "CCNO LONG, CCYES LONG);"
      "INSERT INTO T_FEM_TEMPL VALUES (6, 0.25, '1/4', 1, NULL), (3, 0.125, '1/8', NULL, 1), "
      "(9, 0.5, '1/2', NULL, NULL), (5, NULL, 'A', 1, 1), (7, 0.375, NULL, 2, 2);"
      "DROP VIEW TOOL_TYPES; ALTER TABLE TYPES_DATA ADD COLUMN PRIMARY_OP TEXT(20);"
      "ALTER TABLE TYPES_DATA ADD COLUMN ICON LONGBINARY;"
      "CREATE VIEW TOOL_TYPES AS SELECT * FROM TYPES_DATA;"
      "UPDATE TYPES_DATA SET PRIMARY_OP = 'GEWINDE Ø', ICON = x'00ff10' WHERE ID = 1;"
      "INSERT INTO TYPES_DATA (TOOLTABLE_NAME) VALUES ('Q_TAPPING_HEAD'), ('Q_PIPE_TAP'), "
      "('Q_DRILL');";
  for (const std::string table : {"PIPE_TAP", "DRILL"}) {
    sql += "CREATE TABLE " + table + " (ID INTEGER PRIMARY KEY AUTOINCREMENT, Name TEXT(50), " +
           "TappingHead LONG, Coating LONG); CREATE VIEW Q_" + table + " AS SELECT " + table +
           ".ID AS ID, " + table + ".Name AS Name, TAPPING_HEAD.Name AS TappingHead, " +
           "MATERIAL.Text AS Coating, MATERIAL.Text AS Extra_Depth, 1 + 1 AS Two FROM (" + table +
           " LEFT JOIN TAPPING_HEAD ON TAPPING_HEAD.ID = " + table + ".TappingHead) " +
           "LEFT JOIN MATERIAL ON MATERIAL.ID = " + table + ".Coating;";
  }
  return sql;
}

class LookupTest : public ComponentTest {
 protected:
  void SetUp() override {
    ComponentTest::SetUp();
    OpenSeeded(LookupTables());
  }
  /// The elements of an array as texts; "fails" for a failure, "nothing" for an empty answer.
  std::string Texts(HRESULT result, const Variant& array) {
    EXPECT_EQ(TakeError(), result == S_OK ? "" : kReportedError);
    if (result != S_OK) return "fails";
    if (array.empty()) return "nothing";
    EXPECT_EQ(array.type(), VT_ARRAY | VT_VARIANT);
    std::string texts;
    for (VARIANT& value : ArrayAccess<VARIANT>(array.get().parray)) {
      Bstr text;
      EXPECT_EQ(m_db->VariantToUIString(&value, text.put(), -1), S_OK);
      texts += (texts.empty() ? "" : "|") + (value.vt == VT_NULL ? "null" : NarrowBstr(text.get()));
    }
    return texts;
  }
  template <typename Call>
  std::string Row(Call&& call) {
    Variant names;
    Variant values;
    const HRESULT result = call(names.ptr(), values.ptr());
    EXPECT_EQ(names.empty(), values.empty());
    return Texts(result, values);
  }
  std::string Hardness(std::string_view table, std::string_view material, double hardness) {
    return Row([&](VARIANT* names, VARIANT* values) {
      return m_db->GetRowByMaterialHardness(WidenToBstr(table).get(), WidenToBstr(material).get(),
                                            hardness, names, values);
    });
  }
  std::string DrillFeed(double diameter) {
    return Row([&](VARIANT* names, VARIANT* values) {
      return m_db->GetChosenDrillFeed(diameter, names, values);
    });
  }
  std::string Factor(std::string_view table, double value) {
    Variant names;
    Variant lower;
    Variant upper;
    const HRESULT result = m_db->GetFactorByTable(WidenToBstr(table).get(), value, names.ptr(),
                                                  lower.ptr(), upper.ptr());
    const std::string below = Texts(result, lower);
    return below == "fails" ? below : below + " " + Texts(S_OK, upper);
  }
  std::string Values(std::string_view table, std::string_view property, double diameter) {
    Variant list;
    const HRESULT result = m_db->GetPermissibleValues(
        WidenToBstr(table).get(), WidenToBstr(property).get(), diameter, list.ptr());
    return Texts(result, list);
  }
  std::string Heads(std::u16string_view unit, double diameter) {
    Variant names;
    Variant ids;
    EXPECT_EQ(m_db->GetTappingHeadsForTap(Bstr(unit).get(), diameter, names.ptr(), ids.ptr()),
              S_OK);
    if (names.empty()) return ids.empty() ? "nothing" : "ids only";
    std::string heads;
    const std::vector<std::string> texts = Strings(names.get());
    EXPECT_EQ(ids.type(), VT_ARRAY | VT_I4);
    const ArrayAccess<LONG> numbers(ids.get().parray);
    for (std::size_t i = 0; i < texts.size(); ++i) {
      heads += (i ? "|" : "") + texts[i] + ' ' + std::to_string(numbers[i]);
    }
    return heads;
  }
  std::string Material(const char16_t* name) {
    return Row([&](VARIANT* names, VARIANT* values) {
      return m_db->GetStockMaterialByName(Bstr(name).get(), names, values);
    });
  }
  std::string FirstMaterial() {
    return Row([&](VARIANT* names, VARIANT* values) {
      return m_db->GetFirstStockMaterial(names, values);
    });
  }
  std::string NextMaterial() {
    Variant values;
    const HRESULT result = m_db->GetNextStockMaterial(values.ptr());
    return Texts(result, values);
  }
};

TEST_F(LookupTest, RangesByMaterialAndHardness) {
  const struct {
    const char* material;
    double hardness;
    const char* row;
  } cases[] = {{"Steel", 150, "1|Steel|100|199"},
               {"Steel", 199.6, "1|Steel|100|199"},
               {"Steel", 200, "2|Steel|200|250"},
               {"Steel", 245, "2|Steel|200|250"},
               {"Steel", 250.99, "2|Steel|200|250"},
               {"Steel", 251, "4|Steel|240|260"},
               {"Steel", 275, "5|Steel|300|300"},
               {"Steel", 300.5, "5|Steel|300|300"},
               {"Steel", 301, "6|Steel|350|400"},
               {"Steel", 50, "1|Steel|100|199"},
               {"Steel", -1e300, "1|Steel|100|199"},
               {"Steel", 1e300, "6|Steel|350|400"},
               {"steel", 400, "6|Steel|350|400"},
               {"Brass", 275, "3|Brass|50|90"},
               {"Wood", 100, "nothing"},
               {"", 100, "nothing"},
               {"O'Hara", 100, "fails"},
               {"x' OR '1'='1", 10, "1|Steel|100|199"},
               {"Steel", kNaN, "fails"},
               {"Steel", kInfinity, "fails"}};
  for (const auto& [material, hardness, row] : cases) {
    EXPECT_EQ(Hardness("DRILLING_FS", material, hardness), row) << material << ' ' << hardness;
  }
  for (const auto* table : {"Q_DRILLING_FS", "drilling_fs", "TAP", "", "x'"}) {
    EXPECT_EQ(Hardness(table, "Steel", 100), "nothing") << table;
  }
  EXPECT_EQ(Hardness("T15c", "Steel", 100), "fails") << "no such columns";
}

TEST_F(LookupTest, DrillFeedsByDiameter) {
  const std::pair<double, const char*> cases[] = {
      {2, "1|1|3"},    {3, "1|1|3"},         {3.0000004, "1|1|3"}, {3.000001, "2|3|6"},
      {7, "3|8|12.5"}, {12.5, "3|8|12.5"},   {99, "3|8|12.5"},     {0, "1|1|3"},
      {-5, "1|1|3"},   {kInfinity, "fails"}, {kNaN, "fails"}};
  for (const auto& [diameter, row] : cases) EXPECT_EQ(DrillFeed(diameter), row) << diameter;
}

TEST_F(LookupTest, NeighboursInFactorTables) {
  const struct {
    const char* table;
    double value;
    const char* rows;
  } cases[] = {{"T15c", 20, "2|20 2|20"},
               {"T15c", 25, "2|20 3|30"},
               {"T15c", 5, "1|10 1|10"},
               {"T15c", 35, "3|30 3|30"},
               {"T15c", 20.0000004, "2|20 2|20"},
               {"T15c", 20.000001, "2|20 3|30"},
               {"T15c", kNaN, "fails"},
               {"T15c", -kInfinity, "fails"},
               {"T25", 5, "1|5 1|5"},
               {"T25", 4, "1|5 1|5"},
               {"T25", 6, "1|5 1|5"},
               {"T33", 1, "fails"},
               {"REAMING_FS", 1, "fails"},
               {"NOPE", 1, "nothing nothing"}};
  for (const auto& [table, value, rows] : cases) EXPECT_EQ(Factor(table, value), rows) << value;
}

// Random rows, written anew, and a few lines that say which of them is right.
TEST_F(LookupTest, RangesAndNeighboursOfRandomRows) {
  std::mt19937 random(3);  // NOLINT(cert-msc32-c,cert-msc51-cpp): the same rows every time
  const auto number = [&](int below) {
    return static_cast<int>(random() % static_cast<unsigned>(below));
  };
  for (int round = 0; round < 12; ++round) {
    std::vector<std::pair<int, int>> ranges(1 + random() % 9);
    for (auto& [low, high] : ranges) high = (low = number(40)) + number(10);
    std::ranges::sort(ranges);
    std::string sql = "DELETE FROM FEEDS; DELETE FROM T15c;";
    for (const auto& [low, high] : ranges) {
      const std::string row = std::to_string(low) + ", " + std::to_string(high) + ");";
      sql += "INSERT INTO FEEDS (MinDiameter, MaxDiameter) VALUES (" + row;
      sql += "INSERT INTO T15c (Factor) VALUES (" + std::to_string(low) + ");";
    }
    RunSql(m_file, sql);
    m_db.reset();
    m_db = NewObject();
    ASSERT_EQ(SetMdbFile(*m_db, m_file), S_OK);
    for (double value = -1; value < 52; value += 0.5) {
      const auto find = [&](auto first, auto last, auto&& meets) {
        const auto found = std::find_if(first, last, meets);
        return found == last ? std::string()
                             : std::to_string(found->first) + "|" + std::to_string(found->second);
      };
      std::string range = find(ranges.begin(), ranges.end(), [&](const auto& r) {
        return r.first <= value && value <= r.second;
      });
      if (range.empty())
        range = find(ranges.begin(), ranges.end(), [&](const auto& r) { return r.first > value; });
      if (range.empty())
        range =
            find(ranges.rbegin(), ranges.rend(), [&](const auto& r) { return r.second < value; });
      const std::string row = DrillFeed(value);
      EXPECT_EQ(row.substr(row.find('|') + 1), range) << value;

      int lower = ranges.front().first;
      int upper = ranges.back().first;
      for (const auto& [key, unused] : ranges) {
        if (key <= value) lower = key;
      }
      for (auto r = ranges.rbegin(); r != ranges.rend(); ++r) {
        if (r->first >= value) upper = r->first;
      }
      if (lower > value) upper = lower;
      if (upper < value) lower = upper;
      const std::string rows = Factor("T15c", value);
      const std::size_t between = rows.find(' ');
      EXPECT_EQ(rows.substr(rows.find('|') + 1, between - rows.find('|') - 1),
                std::to_string(lower));
      EXPECT_EQ(rows.substr(rows.rfind('|') + 1), std::to_string(upper)) << value;
    }
  }
}

TEST_F(LookupTest, PermissibleValues) {
  const struct {
    const char* table;
    const char* property;
    double diameter;
    const char* values;
  } cases[] = {{"DRILL", "Name", 0, "nothing"},
               {"DRILL", "Two", 0, "nothing"},
               {"DRILL", "Extra_Depth", 0, "nothing"},
               {"DRILL", "Coating", 6, "Carbide|HSS"},
               {"DRILL", "coating", 6, "Carbide|HSS"},
               {"DRILL", "TappingHead", 6, "big|none|small"},
               {"PIPE_TAP", "TappingHead", 0, "big|none|small"},
               {"PIPE_TAP", "TappingHead", kNaN, "big|none|small"},
               {"PIPE_TAP", "TappingHead", 8, "big|small|null"},
               {"PIPE_TAP", "TappingHead", 12.0000004, "big|null"},
               {"PIPE_TAP", "TappingHead", 20, "nothing"},
               {"PIPE_TAP", "Nope", 0, "fails"},
               {"NOPE", "Name", 0, "fails"}};
  RunSql(m_file, "INSERT INTO MATERIAL (Text) SELECT Text FROM MATERIAL WHERE ID = 1");
  for (const auto& [table, property, diameter, values] : cases) {
    std::string expected = values;
    if (expected == "Carbide|HSS") expected += "|HSS";
    EXPECT_EQ(Values(table, property, diameter), expected) << table << '.' << property;
  }
  Variant full = Variant::FromI4(1);
  EXPECT_EQ(m_db->GetPermissibleValues(Bstr(u"DRILL").get(), Bstr(u"Name").get(), 0, full.ptr()),
            E_FAIL);
  TakeError();

  Variant values;
  Variant texts;
  const auto diameters = [&](const char16_t* table, const char16_t* property) {
    values.clear();
    texts.clear();
    const HRESULT result = m_db->GetPermissibleValues2(
        Bstr(table).get(), nullptr, nullptr, Bstr(property).get(), values.ptr(), texts.ptr());
    const std::string shown = Texts(result, values);
    return shown == "fails" ? shown : shown + " " + Texts(S_OK, texts);
  };
  EXPECT_EQ(diameters(u"BALL_END_MILL", u"Diameter"),
            "null|0.125|0.25|0.375 (A)|0.125(1/8)|0.25(1/4)|0.375");
  RunSql(m_file,
         "UPDATE T_FEM_TEMPL SET CCNO = NULL WHERE METRIC > 6; UPDATE T_FEM_TEMPL SET "
         "CCYES = NULL WHERE METRIC > 6");
  EXPECT_EQ(diameters(u"FLAT_END_MILL", u"Diameter"), "null|0.125|0.25 (A)|0.125(1/8)|0.25(1/4)");
  EXPECT_EQ(diameters(u"MILL", u"Diameter"), "nothing nothing");
  EXPECT_EQ(diameters(u"FLAT_END_MILL", u"Flutes_#"), "nothing nothing");
  RunSql(m_file, "DROP TABLE T_FEM_TEMPL");
  EXPECT_EQ(diameters(u"FLAT_END_MILL", u"Diameter"), "fails");
}

TEST_F(LookupTest, HeadsPicturesAndOperations) {
  EXPECT_EQ(Heads(u"mm", 8), "big 4|small 7");
  EXPECT_EQ(Heads(u"mm", 10), "big 4");
  EXPECT_EQ(Heads(u"in", 0.25), "small 7");
  EXPECT_EQ(Heads(u"MM", 0.25), "small 7");
  EXPECT_EQ(Heads(u"mm", 20), "nothing");
  EXPECT_EQ(Heads(u"mm", kNaN), "nothing");
  TakeError();

  Variant picture;
  ASSERT_EQ(m_db->GetToolSubtypePreview(Bstr(u"TAP").get(), picture.ptr()), S_OK);
  ASSERT_EQ(picture.type(), VT_ARRAY | VT_UI1);
  EXPECT_THAT(ArrayAccess<BYTE>(picture.get().parray).elements(), ElementsAre(0, 255, 16));
  for (const auto* table : {u"MILL", u"NONE", u""}) {
    Variant none;
    EXPECT_EQ(m_db->GetToolSubtypePreview(Bstr(table).get(), none.ptr()), S_OK);
    EXPECT_TRUE(none.empty());
  }
  Variant taken = Variant::FromI4(5);
  EXPECT_EQ(m_db->GetToolSubtypePreview(Bstr(u"TAP").get(), taken.ptr()), S_OK);
  EXPECT_EQ(taken.get().lVal, 5);
  EXPECT_EQ(m_db->GetToolSubtypePreview(Bstr(u"it's").get(), picture.put()), E_FAIL);

  const std::pair<const char16_t*, const char*> operations[] = {
      {u"TAP", "GEWINDE Ø"}, {u"MILL", ""}, {u"NONE", "before"}, {u"it's", "before"}};
  for (const auto& [table, operation] : operations) {
    Bstr text(u"before");
    BSTR answer = text.get();
    EXPECT_EQ(m_db->GetPrimaryOpByTable(Bstr(table).get(), &answer),
              View(Bstr(table).get()) == u"it's" ? E_FAIL : S_OK);
    EXPECT_EQ(NarrowBstr(answer), operation);
    if (answer != text.get()) SysFreeString(answer);
  }
}

// Which look-ups share a position, and which leave the others' alone.
TEST_F(LookupTest, PositionsThatAreSharedAndThoseThatAreNot) {
  EXPECT_EQ(FirstMaterial(), "1|Steel-soft|120");
  EXPECT_EQ(Hardness("DRILLING_FS", "Steel", 150), "1|Steel|100|199");
  EXPECT_EQ(Material(u"steel.soft"), "1|Steel-soft|120") << "the first of two that match";
  EXPECT_EQ(NextMaterial(), "2|Steel/soft|150");
  EXPECT_EQ(Material(u"*/*"), "1|Steel-soft|120") << "any text, one character, any text";
  EXPECT_EQ(Material(u"[SP]teel-soft"), "1|Steel-soft|120");
  EXPECT_EQ(NextMaterial(), "2|Steel/soft|150");
  EXPECT_EQ(Material(u"nothing like it"), "nothing");
  EXPECT_EQ(NextMaterial(), "3|null|null") << "the position stays without a match";
  EXPECT_EQ(NextMaterial(), "nothing");
  EXPECT_EQ(NextMaterial(), "fails") << "behind the end";
  EXPECT_EQ(FirstMaterial(), "1|Steel-soft|120");

  EXPECT_EQ(SetFilter("TAPPING_HEAD", "", "[TAPPING_HEAD.ID] DESC"), S_OK);
  EXPECT_THAT(Walk("TAPPING_HEAD"), ElementsAre("none", "small", "big"));
  First("TAP");
  EXPECT_EQ(Heads(u"mm", 8), "small 7|big 4") << "the order stays";
  EXPECT_EQ(Next("TAP")["Name"], "M10") << "other tables stay where they are";
  EXPECT_THAT(Next("TAPPING_HEAD"), IsEmpty()) << "at the end of its walk";
  EXPECT_THAT(Walk("TAPPING_HEAD"), ElementsAre("small", "big")) << "the filter stays";
  Values("PIPE_TAP", "TappingHead", 8);
  EXPECT_THAT(Walk("TAPPING_HEAD"), ElementsAre("small", "big"));
  EXPECT_THAT(ToolTypes(), testing::SizeIs(18)) << "whichever row of the catalogue is current";
}

TEST_F(LookupTest, MissingTablesFailWhereTheyAreUsed) {
  m_db.reset();
  m_db = NewObject();
  EXPECT_EQ(FirstMaterial(), "fails");
  EXPECT_EQ(NextMaterial(), "fails");
  EXPECT_EQ(Material(u"x"), "fails");
  EXPECT_EQ(Hardness("DRILLING_FS", "Steel", 1), "nothing");
  EXPECT_EQ(DrillFeed(1), "nothing");
  EXPECT_EQ(Factor("T15c", 1), "nothing nothing");
  EXPECT_EQ(Values("TAP", "Name", 1), "fails");
  Variant names;
  Variant ids;
  EXPECT_EQ(m_db->GetTappingHeadsForTap(Bstr(u"mm").get(), 8, names.ptr(), ids.ptr()), E_FAIL);
  EXPECT_EQ(m_db->GetToolSubtypePreview(Bstr(u"TAP").get(), names.ptr()), S_OK);
  Bstr none;
  EXPECT_EQ(m_db->GetPrimaryOpByTable(Bstr(u"TAP").get(), none.put()), S_OK);
  EXPECT_FALSE(none);
}

}  // namespace
}  // namespace orxdb::test
