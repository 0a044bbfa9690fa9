// Machining data through the interface: which row is chosen, what a list holds.
#include <cmath>
#include <limits>

#include "tests/component/ComponentFixture.h"

namespace orxdb::test {
namespace {

using testing::ElementsAre;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

class LookupTest : public ComponentTest {
 protected:
  void SetUp() override {
    ComponentTest::SetUp();
    OpenSeeded(Script("Lookup"));
  }
  /// What a method gives behind the names of the columns.
  template <typename Method, typename... Given>
  std::string Row(Method method, const Given&... given) {
    const std::string all = Gives(method, given...);
    return all.substr(all.find('/') + 1);
  }
};

// Rows in any order, written anew, and queries that say which of them are right.
TEST_F(LookupTest, RangesAndNeighboursOfRandomRows) {
  OtherProgram other(m_file);
  std::mt19937 random = Random(3);
  for (int round = 0; round < 10; ++round) {
    std::string sql = "DELETE FROM RANGES; DELETE FROM FEEDS; DELETE FROM T15c;";
    for (auto rows = 1 + random() % 9; rows > 0; --rows) {
      const auto low = random() % 40;
      const auto high = low + random() % 10;
      sql += "INSERT INTO RANGES (Material, MinHB, MaxHB) VALUES ('" +
             std::string(random() % 4 ? "Steel" : "Brass") + "', " + std::to_string(low) + ", " +
             std::to_string(high) + ");";
    }
    other.Execute(sql +
                  "INSERT INTO FEEDS SELECT ID, MinHB, MaxHB FROM RANGES;"
                  "INSERT INTO T15c SELECT ID, MinHB FROM RANGES");
    Reopen();
    for (int half = -2; half < 104; ++half) {
      const double value = half / 2.0;
      SCOPED_TRACE(value);
      // In halves: the text of a real would follow the locale.
      const auto first = [&](int halves, const std::string& shown, const std::string& order) {
        return other.Ask("WITH n(v) AS (SELECT " + std::to_string(halves) +
                         " / 2.0) SELECT coalesce((SELECT printf(" + shown + ") FROM RANGES, n " +
                         order + " LIMIT 1), 'nothing')");
      };
      const std::string nearest =
          " ORDER BY (MinHB > v) + 2 * (MaxHB < v), iif(MaxHB < v, -ID, ID)";
      EXPECT_EQ(Row(&Db::GetChosenDrillFeed, value),
                first(half, "'%d|%g|%g', ID, MinHB, MaxHB", nearest));
      EXPECT_EQ(Row(&Db::GetRowByMaterialHardness, "DRILLING_FS", "steel", value),
                first(half - (half & 1), "'%d|%s|%g|%g', ID, Material, MinHB, MaxHB",
                      "WHERE Material = 'Steel'" + nearest));
      const auto neighbour = [&](const std::string& side) {
        return first(half, "'%d|%g', ID, MinHB",
                     "ORDER BY MinHB <> v, " + side + ", iif(MinHB < v, -ID, ID)");
      };
      EXPECT_EQ(Row(&Db::GetFactorByTable, "T15c", value),
                neighbour("MinHB >= v") + '/' + neighbour("MinHB <= v"));
    }
  }
}

TEST_F(LookupTest, OddNumbersNamesAndTables) {
  const std::pair<const char*, const char*> materials[] = {
      {"Wood", "nothing"}, {"O'Hara", "fails"}, {"x' OR '1'='1", "1|Steel|100|199"}};
  for (const auto& [material, row] : materials) {
    EXPECT_EQ(Row(&Db::GetRowByMaterialHardness, "DRILLING_FS", material, 200.0), row);
  }
  for (const auto* table : {"Q_DRILLING_FS", "drilling_fs", "TAP", "", "x'"}) {
    EXPECT_EQ(Row(&Db::GetRowByMaterialHardness, table, "Steel", 100.0), "nothing") << table;
    EXPECT_EQ(Row(&Db::GetFactorByTable, table, 1.0), "nothing/nothing") << table;
  }
  EXPECT_EQ(Row(&Db::GetRowByMaterialHardness, "T15c", "Steel", 100.0), "fails") << "no columns";
  // Six decimals count.
  EXPECT_EQ(Row(&Db::GetChosenDrillFeed, 3.0000004), "1|1|3");
  EXPECT_EQ(Row(&Db::GetChosenDrillFeed, 3.000001), "2|3|6");
  EXPECT_EQ(Row(&Db::GetFactorByTable, "T15c", 20.0000004), "2|20/2|20");
  EXPECT_EQ(Row(&Db::GetFactorByTable, "T15c", 20.000001), "2|20/3|30");
  EXPECT_EQ(Row(&Db::GetFactorByTable, "T33", 1.0), "fails") << "no rows";
  EXPECT_EQ(Row(&Db::GetFactorByTable, "REAMING_FS", 1.0), "fails") << "one column";
  for (const double odd : {kNaN, kInfinity}) {
    EXPECT_EQ(Row(&Db::GetRowByMaterialHardness, "DRILLING_FS", "Steel", odd), "fails");
    EXPECT_EQ(Row(&Db::GetChosenDrillFeed, odd), "fails");
    EXPECT_EQ(Row(&Db::GetFactorByTable, "T15c", -odd), "fails");
  }
}

TEST_F(LookupTest, PermissibleValues) {
  Sql("INSERT INTO MATERIAL (Text) SELECT Text FROM MATERIAL WHERE ID = 1");
  using Case = std::tuple<const char*, const char*, double, const char*>;
  for (const auto& [table, field, diameter, values] :
       {Case("TAP", "Name", 0, "nothing"), Case("DRILL", "Two", 0, "nothing"),
        Case("DRILL", "Extra_Depth", 0, "nothing"), Case("DRILL", "coating", 6, "Carbide|HSS|HSS"),
        Case("DRILL", "TappingHead", 6, "big|groß|none|small"),
        Case("PIPE_TAP", "TappingHead", 0, "big|groß|none|small"),
        Case("PIPE_TAP", "TappingHead", kNaN, "big|groß|none|small"),
        Case("PIPE_TAP", "TappingHead", 8, "big|small|null"),
        Case("PIPE_TAP", "TappingHead", 12.0000004, "big|null"),
        Case("PIPE_TAP", "TappingHead", 20, "nothing"), Case("PIPE_TAP", "Nope", 0, "fails"),
        Case("NOPE", "Name", 0, "fails")}) {
    EXPECT_EQ(Gives(&Db::GetPermissibleValues, table, field, diameter), values)
        << table << '.' << field << ' ' << diameter;
  }
  const auto diameters = [this](const char* table, const char* field = "Diameter") {
    return Gives(&Db::GetPermissibleValues2, table, nullptr, nullptr, field);
  };
  EXPECT_EQ(diameters("BALL_END_MILL"),
            "null|null|0.125|0.25|0.375/(A)|(A)(B)|0.125(1/8)|0.25(1/4)|0.375");
  Sql("UPDATE T_FEM_TEMPL SET CCNO = NULL, CCYES = NULL WHERE METRIC > 6");
  EXPECT_EQ(diameters("FLAT_END_MILL"), "null|null|0.125|0.25/(A)|(A)(B)|0.125(1/8)|0.25(1/4)");
  EXPECT_EQ(diameters("MILL"), "nothing/nothing");
  EXPECT_EQ(diameters("FLAT_END_MILL", "Flutes_#"), "nothing/nothing");
  Sql("DROP TABLE T_FEM_TEMPL");
  EXPECT_EQ(diameters("FLAT_END_MILL"), "fails");
}

TEST_F(LookupTest, HeadsPicturesAndOperations) {
  EXPECT_EQ(Gives(&Db::GetTappingHeadsForTap, "MM", 8 / 25.4), "big|small/4|7") << "no mm";
  EXPECT_EQ(Gives(&Db::GetTappingHeadsForTap, "mm", kNaN), "nothing/nothing");
  using Case = std::array<const char*, 3>;
  for (const auto& [table, picture, operation] :
       {Case{"TAP", "0|255|16", "GEWINDE Ø"}, Case{"MILL", "nothing", ""},
        Case{"NONE", "nothing", "nothing"}, Case{"it's", "fails", "fails"}}) {
    EXPECT_EQ(Gives(&Db::GetToolSubtypePreview, table), picture) << table;
    EXPECT_EQ(Gives(&Db::GetPrimaryOpByTable, table), operation) << table;
  }
  Variant full = Variant::FromI4(5);
  EXPECT_EQ(m_db->GetToolSubtypePreview(Bstr(u"TAP").get(), full.ptr()), S_OK);
  EXPECT_EQ(full.get().lVal, 5);
}

// Which look-ups share a position, and which leave the others' alone.
TEST_F(LookupTest, PositionsThatAreSharedAndThoseThatAreNot) {
  const auto named = [this](const char* n) { return Row(&Db::GetStockMaterialByName, n); };
  EXPECT_EQ(Row(&Db::GetFirstStockMaterial), "1|Steel-soft|120");
  EXPECT_EQ(Row(&Db::GetRowByMaterialHardness, "DRILLING_FS", "Steel", 150.0), "1|Steel|100|199");
  EXPECT_EQ(named("steel.soft"), "1|Steel-soft|120") << "the first of two that match";
  EXPECT_EQ(Gives(&Db::GetNextStockMaterial), "2|Steel/soft|150");
  EXPECT_EQ(named("*/*"), "1|Steel-soft|120") << "any text, one character, any text";
  EXPECT_EQ(named("[SP]teel-soft"), "1|Steel-soft|120");
  EXPECT_EQ(Gives(&Db::GetNextStockMaterial), "2|Steel/soft|150");
  EXPECT_EQ(named("nothing like it"), "nothing");
  for (const auto* next : {"3|null|null", "nothing", "fails"}) {
    EXPECT_EQ(Gives(&Db::GetNextStockMaterial), next) << "from where it was, and on behind the end";
  }
  EXPECT_EQ(Row(&Db::GetFirstStockMaterial), "1|Steel-soft|120");

  EXPECT_EQ(SetFilter("TAPPING_HEAD", "", "[TAPPING_HEAD.ID] DESC"), S_OK);
  EXPECT_THAT(Walk("TAPPING_HEAD"), ElementsAre("groß", "none", "small", "big"));
  First("TAP");
  EXPECT_EQ(Gives(&Db::GetTappingHeadsForTap, "mm", 8.0), "small|big/7|4") << "the order stays";
  EXPECT_EQ(Next("TAP")["Name"], "M10") << "other tables stay where they are";
  EXPECT_THAT(Next("TAPPING_HEAD"), testing::IsEmpty()) << "at the end of its walk";
  Gives(&Db::GetPermissibleValues, "PIPE_TAP", "TappingHead", 8.0);
  EXPECT_THAT(Walk("TAPPING_HEAD"), ElementsAre("small", "big")) << "the filter stays";
  EXPECT_THAT(Gives(&Db::GetToolTypes), testing::EndsWith("|TAPPING_HEAD|||PIPE_TAP|||DRILL"))
      << "whichever row of the catalogue is current";
}

TEST_F(LookupTest, WithoutDatabase) {
  m_db.reset();
  m_db = NewObject();
  EXPECT_EQ(Gives(&Db::GetFirstStockMaterial), "fails");
  EXPECT_EQ(Gives(&Db::GetNextStockMaterial), "fails");
  EXPECT_EQ(Gives(&Db::GetStockMaterialByName, "x"), "fails");
  EXPECT_EQ(Row(&Db::GetRowByMaterialHardness, "DRILLING_FS", "Steel", 1.0), "nothing");
  EXPECT_EQ(Row(&Db::GetChosenDrillFeed, 1.0), "nothing");
  EXPECT_EQ(Gives(&Db::GetPermissibleValues, "TAP", "Name", 1.0), "fails");
  EXPECT_EQ(Gives(&Db::GetTappingHeadsForTap, "mm", 8.0), "fails");
  EXPECT_EQ(Gives(&Db::GetToolSubtypePreview, "TAP"), "nothing");
  EXPECT_EQ(Gives(&Db::GetPrimaryOpByTable, "TAP"), "nothing");
}

}  // namespace
}  // namespace orxdb::test
