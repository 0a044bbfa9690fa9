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

class LookupTest : public ComponentTest {
 protected:
  void SetUp() override {
    ComponentTest::SetUp();
    OpenSeeded(Script("Lookup"));
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
    return Row([&](auto... arrays) { return m_db->GetChosenDrillFeed(diameter, arrays...); });
  }
  /// Two arrays of values.
  template <typename Call>
  std::string Both(Call&& call) {
    Variant first;
    Variant second;
    const std::string shown = Texts(call(first.ptr(), second.ptr()), first);
    return shown == "fails" ? shown : shown + ' ' + Texts(S_OK, second);
  }
  std::string Factor(std::string_view table, double value) {
    Variant names;
    return Both([&](auto... rows) {
      return m_db->GetFactorByTable(WidenToBstr(table).get(), value, names.ptr(), rows...);
    });
  }
  std::string Values(std::string_view table, std::string_view property, double diameter) {
    Variant list;
    const HRESULT result = m_db->GetPermissibleValues(
        WidenToBstr(table).get(), WidenToBstr(property).get(), diameter, list.ptr());
    return Texts(result, list);
  }
  std::string Diameters(const char16_t* table, const char16_t* property = u"Diameter") {
    return Both([&](auto... arrays) {
      return m_db->GetPermissibleValues2(Bstr(table).get(), nullptr, nullptr, Bstr(property).get(),
                                         arrays...);
    });
  }
  std::string Heads(std::u16string_view unit, double diameter) {
    Variant names;
    Variant ids;
    EXPECT_EQ(m_db->GetTappingHeadsForTap(Bstr(unit).get(), diameter, names.ptr(), ids.ptr()),
              S_OK);
    if (names.empty()) return ids.empty() ? "nothing" : "ids only";
    EXPECT_EQ(ids.type(), VT_ARRAY | VT_I4);
    std::string heads;
    const ArrayAccess<LONG> numbers(ids.get().parray);
    std::size_t i = 0;
    for (const std::string& name : Strings(names.get())) {
      heads += (i ? "|" : "") + name + ' ' + std::to_string(numbers[i]);
      ++i;
    }
    return heads;
  }
  std::string Material(const char16_t* name) {
    return Row([&](auto... row) { return m_db->GetStockMaterialByName(Bstr(name).get(), row...); });
  }
  std::string FirstMaterial() {
    return Row([&](auto... row) { return m_db->GetFirstStockMaterial(row...); });
  }
  std::string NextMaterial() {
    Variant values;
    const HRESULT result = m_db->GetNextStockMaterial(values.ptr());
    return Texts(result, values);
  }
};

TEST_F(LookupTest, RangesByMaterialAndHardness) {
  const std::pair<double, char> steels[] = {
      // hardness and the row chosen
      {150, '1'}, {199.6, '1'}, {200, '2'}, {245, '2'}, {250.99, '2'}, {251, '4'},
      {275, '5'}, {300.5, '5'}, {301, '6'}, {50, '1'},  {-1e300, '1'}, {1e300, '6'}};
  for (const auto& [hardness, row] : steels) {
    EXPECT_EQ(Hardness("DRILLING_FS", "Steel", hardness)[0], row) << hardness;
  }
  const std::pair<const char*, const char*> materials[] = {
      {"steel", "2|Steel|200|250"}, {"Brass", "3|Brass|50|90"},
      {"Wood", "nothing"},          {"", "nothing"},
      {"O'Hara", "fails"},          {"x' OR '1'='1", "1|Steel|100|199"}};
  for (const auto& [material, row] : materials) {
    EXPECT_EQ(Hardness("DRILLING_FS", material, 200), row) << material;
  }
  for (const double hardness : {kNaN, kInfinity}) {
    EXPECT_EQ(Hardness("DRILLING_FS", "Steel", hardness), "fails");
  }
  for (const auto* table : {"Q_DRILLING_FS", "drilling_fs", "TAP", "", "x'"}) {
    EXPECT_EQ(Hardness(table, "Steel", 100), "nothing") << table;
  }
  EXPECT_EQ(Hardness("T15c", "Steel", 100), "fails") << "no such columns";
}

// Which rows are chosen is in the next test.
TEST_F(LookupTest, NumbersHaveSixDecimals) {
  const std::pair<double, const char*> feeds[] = {
      {3.0000004, "1|1|3"}, {3.000001, "2|3|6"}, {kInfinity, "fails"}, {kNaN, "fails"}};
  for (const auto& [diameter, row] : feeds) EXPECT_EQ(DrillFeed(diameter), row) << diameter;
  const std::pair<double, const char*> factors[] = {
      {20.0000004, "2|20 2|20"}, {20.000001, "2|20 3|30"}, {kNaN, "fails"}, {-kInfinity, "fails"}};
  for (const auto& [value, rows] : factors) EXPECT_EQ(Factor("T15c", value), rows) << value;
  EXPECT_EQ(Factor("T33", 1), "fails");
  EXPECT_EQ(Factor("REAMING_FS", 1), "fails");
  EXPECT_EQ(Factor("NOPE", 1), "nothing nothing");
}

// Random rows, written anew, and a few lines that say which of them is right.
TEST_F(LookupTest, RangesAndNeighboursOfRandomRows) {
  std::mt19937 random(3);  // NOLINT(cert-msc32-c,cert-msc51-cpp): the same rows every time
  const auto number = [&](unsigned below) { return static_cast<int>(random() % below); };
  for (int round = 0; round < 12; ++round) {
    std::vector<std::pair<int, int>> ranges(1 + random() % 9);
    for (auto& [low, high] : ranges) high = (low = number(40)) + number(10);
    std::ranges::sort(ranges);
    std::vector<std::string> keys;
    std::string sql = "DELETE FROM FEEDS; DELETE FROM T15c;";
    for (const auto& [low, high] : ranges) {
      const std::string id = std::to_string(keys.size() + 1);
      const std::string key = std::to_string(low);
      keys.push_back(id + '|' + key);
      sql += "INSERT INTO T15c VALUES (" + id + ", " + key + ");";
      sql += "INSERT INTO FEEDS VALUES (" + id + ", " + key + ", " + std::to_string(high) + ");";
    }
    RunSql(m_file, sql);
    m_db.reset();
    m_db = NewObject();
    ASSERT_EQ(SetMdbFile(*m_db, m_file), S_OK);
    for (int half = -2; half < 104; ++half) {
      const double value = half / 2.0;
      const auto holds = [&](auto& r) { return r.first <= value && value <= r.second; };
      const auto above = [&](auto& r) { return r.first > value; };
      auto found = std::ranges::find_if(ranges, holds);
      if (found == ranges.end()) found = std::ranges::find_if(ranges, above);
      if (found == ranges.end()) --found;
      const std::string& key = keys[static_cast<std::size_t>(found - ranges.begin())];
      EXPECT_EQ(DrillFeed(value), key + '|' + std::to_string(found->second)) << value;

      std::size_t upper = 0;
      while (upper + 1 < keys.size() && ranges[upper].first < value) ++upper;
      const std::size_t lower = upper > 0 && ranges[upper].first > value ? upper - 1 : upper;
      EXPECT_EQ(Factor("T15c", value), keys[lower] + ' ' + keys[upper]) << value;
    }
  }
}

TEST_F(LookupTest, PermissibleValues) {
  RunSql(m_file, "INSERT INTO MATERIAL (Text) SELECT Text FROM MATERIAL WHERE ID = 1");
  for (const auto* field : {"Name", "Two", "Extra_Depth"}) {
    EXPECT_EQ(Values("DRILL", field, 0), "nothing") << field;
  }
  EXPECT_EQ(Values("DRILL", "Coating", 6), "Carbide|HSS|HSS");
  EXPECT_EQ(Values("DRILL", "coating", 6), "Carbide|HSS|HSS");
  EXPECT_EQ(Values("DRILL", "TappingHead", 6), "big|none|small");
  const std::pair<double, const char*> taps[] = {{0, "big|none|small"},
                                                 {kNaN, "big|none|small"},
                                                 {8, "big|small|null"},
                                                 {12.0000004, "big|null"},
                                                 {20, "nothing"}};
  for (const auto& [diameter, heads] : taps) {
    EXPECT_EQ(Values("PIPE_TAP", "TappingHead", diameter), heads) << diameter;
  }
  EXPECT_EQ(Values("PIPE_TAP", "Nope", 0), "fails");
  EXPECT_EQ(Values("NOPE", "Name", 0), "fails");
  Variant full = Variant::FromI4(1);
  EXPECT_EQ(m_db->GetPermissibleValues(Bstr(u"DRILL").get(), Bstr(u"Name").get(), 0, full.ptr()),
            E_FAIL);
  TakeError();

  EXPECT_EQ(Diameters(u"BALL_END_MILL"), "null|0.125|0.25|0.375 (A)|0.125(1/8)|0.25(1/4)|0.375");
  RunSql(m_file, "UPDATE T_FEM_TEMPL SET CCNO = NULL, CCYES = NULL WHERE METRIC > 6");
  EXPECT_EQ(Diameters(u"FLAT_END_MILL"), "null|0.125|0.25 (A)|0.125(1/8)|0.25(1/4)");
  EXPECT_EQ(Diameters(u"MILL"), "nothing nothing");
  EXPECT_EQ(Diameters(u"FLAT_END_MILL", u"Flutes_#"), "nothing nothing");
  RunSql(m_file, "DROP TABLE T_FEM_TEMPL");
  EXPECT_EQ(Diameters(u"FLAT_END_MILL"), "fails");
}

TEST_F(LookupTest, HeadsPicturesAndOperations) {
  EXPECT_EQ(Heads(u"mm", 8), "big 4|small 7");
  EXPECT_EQ(Heads(u"mm", 10), "big 4");
  for (const auto* unit : {u"in", u"MM"}) EXPECT_EQ(Heads(unit, 0.25), "small 7");
  for (const double diameter : {20.0, kNaN}) EXPECT_EQ(Heads(u"mm", diameter), "nothing");

  Variant picture;
  ASSERT_EQ(m_db->GetToolSubtypePreview(Bstr(u"TAP").get(), picture.ptr()), S_OK);
  ASSERT_EQ(picture.type(), VT_ARRAY | VT_UI1);
  EXPECT_THAT(ArrayAccess<BYTE>(picture.get().parray).elements(), ElementsAre(0, 255, 16));
  picture.clear();
  for (const auto* table : {u"MILL", u"NONE", u""}) {
    EXPECT_EQ(m_db->GetToolSubtypePreview(Bstr(table).get(), picture.ptr()), S_OK);
    EXPECT_TRUE(picture.empty());
  }
  EXPECT_EQ(m_db->GetToolSubtypePreview(Bstr(u"it's").get(), picture.ptr()), E_FAIL);
  picture = Variant::FromI4(5);
  EXPECT_EQ(m_db->GetToolSubtypePreview(Bstr(u"TAP").get(), picture.ptr()), S_OK);
  EXPECT_EQ(picture.get().lVal, 5);

  const std::pair<std::string, const char*> operations[] = {
      {"TAP", "GEWINDE Ø"}, {"MILL", ""}, {"NONE", "before"}, {"it's", "before"}};
  for (const auto& [table, operation] : operations) {
    Bstr text(u"before");
    BSTR answer = text.get();
    EXPECT_EQ(m_db->GetPrimaryOpByTable(WidenToBstr(table).get(), &answer),
              table == "it's" ? E_FAIL : S_OK);
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
  EXPECT_EQ(FirstMaterial() + NextMaterial() + Material(u"x"), "failsfailsfails");
  EXPECT_EQ(Hardness("DRILLING_FS", "Steel", 1) + DrillFeed(1), "nothingnothing");
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
