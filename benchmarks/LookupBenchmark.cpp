// Look-ups of machining data, each against a prepared SELECT that builds the same arrays.
#include <algorithm>
#include <string>
#include <vector>

#include "benchmarks/BenchDatabase.h"
#include "benchmarks/Hosting.h"
#include "benchmarks/PlainQuery.h"
#include "platform/automation/Variant.h"
#include "platform/framework/Text.h"

using orxdb::Bstr;
using orxdb::Variant;
using orxdb::WidenToBstr;

namespace {

constexpr double kLimit = 3.0;

/// The two sides, and keys all over the feed tables that are the same for both.
struct Sides {
  explicit Sides(benchmark::State& state)
      : rows(state.range(0)),
        plain(OpenPlain(BenchDatabase(rows > 10 ? 100000 : 1000))),
        object(OpenObject(BenchDatabase(rows > 10 ? 100000 : 1000))) {}

  std::int64_t Next(std::int64_t& previous) const { return previous = (previous * 31 + 17) % rows; }

  std::int64_t rows;
  PlainDatabase plain;
  orxdb::ComPtr<IOrxDbObj> object;
  std::int64_t plainKey = 0;
  std::int64_t key = 0;
};

std::int64_t Size(const Variant& array) {
  return array.empty() ? 0 : static_cast<std::int64_t>(array.get().parray->rgsabound[0].cElements);
}

Variant Text(sqlite3_stmt* row, int column) {
  return Variant::FromBstr(TextOf(row, column));
}

/// The values as an array, moved.
Variant ToArray(std::vector<Variant>& values) {
  orxdb::SafeArray array = orxdb::SafeArray::Vector(VT_VARIANT, static_cast<ULONG>(values.size()));
  {
    const orxdb::ArrayAccess<VARIANT> elements(array.get());
    std::ranges::transform(values, elements.begin(), [](Variant& value) { return value.detach(); });
  }
  return Variant::FromArray(VT_VARIANT, std::move(array));
}

void HardnessRow(benchmark::State& state) {
  Sides sides(state);
  PlainQuery query(sides.plain.get(),
                   "SELECT * FROM Q_DRILLING_FS WHERE MinHB <= ?1 AND MaxHB >= ?1 AND "
                   "Material = ?2 COLLATE NOCASE ORDER BY ID LIMIT 1");
  const Bstr table(u"DRILLING_FS");
  const auto hardness = [](std::int64_t row) { return static_cast<double>(row % 10 * 20 + 7); };
  const auto material = [](std::int64_t row) { return "Material " + std::to_string(row / 10); };
  Compare(
      state, kLimit,
      [&] {
        const std::int64_t row = sides.Next(sides.plainKey);
        return query(BuildArrays, hardness(row), material(row));
      },
      [&] {
        const std::int64_t row = sides.Next(sides.key);
        Variant names;
        Variant values;
        Check(sides.object->GetRowByMaterialHardness(table.get(), WidenToBstr(material(row)).get(),
                                                     hardness(row), names.put(), values.put()));
        return Size(values);
      });
}

/// The answer is the first row in key order. The plus keeps the twin from the index, whose hits it
/// would have to sort: a scan in key order ends at the first hit.
void DrillFeed(benchmark::State& state) {
  Sides sides(state);
  PlainQuery query(sides.plain.get(),
                   "SELECT * FROM Q_DRILL_FEED WHERE +MinDiameter <= ?1 AND MaxDiameter >= ?1 "
                   "ORDER BY ID LIMIT 1");
  const auto diameter = [](std::int64_t row) { return static_cast<double>(row) + 0.5; };
  Compare(
      state, kLimit, [&] { return query(BuildArrays, diameter(sides.Next(sides.plainKey))); },
      [&] {
        Variant names;
        Variant values;
        Check(sides.object->GetChosenDrillFeed(diameter(sides.Next(sides.key)), names.put(),
                                               values.put()));
        return Size(values);
      });
}

void FactorNeighbours(benchmark::State& state) {
  Sides sides(state);
  sqlite3* plain = sides.plain.get();
  PlainQuery exact(plain, "SELECT * FROM Q_T15c WHERE MinDiameter = ? ORDER BY ID LIMIT 1");
  PlainQuery above(plain, "SELECT * FROM Q_T15c WHERE +MinDiameter > ? ORDER BY ID LIMIT 1");
  PlainQuery below(plain, "SELECT * FROM Q_T15c WHERE +MinDiameter < ? ORDER BY ID DESC LIMIT 1");
  const Bstr table(u"T15c");
  const auto value = [&](std::int64_t row) {
    return static_cast<double>(row % (sides.rows - 1)) + 0.5;
  };
  Compare(
      state, kLimit,
      [&] {
        const double wanted = value(sides.Next(sides.plainKey));
        return exact(BuildArrays, wanted) + above(BuildArrays, wanted) + below(BuildArrays, wanted);
      },
      [&] {
        Variant names;
        Variant lower;
        Variant upper;
        Check(sides.object->GetFactorByTable(table.get(), value(sides.Next(sides.key)), names.put(),
                                             lower.put(), upper.put()));
        return Size(lower) + Size(upper);
      });
}

void StockMaterial(benchmark::State& state) {
  Sides sides(state);
  PlainQuery query(
      sides.plain.get(),
      "SELECT * FROM Q_STOCK_MATERIAL WHERE DispType = ? COLLATE NOCASE ORDER BY ID LIMIT 1");
  const auto name = [](std::int64_t row) { return "Steel " + std::to_string(row); };
  Compare(
      state, kLimit, [&] { return query(BuildArrays, name(sides.Next(sides.plainKey))); },
      [&] {
        Variant names;
        Variant values;
        Check(sides.object->GetStockMaterialByName(WidenToBstr(name(sides.Next(sides.key))).get(),
                                                   names.put(), values.put()));
        return Size(values);
      });
}

void PermissibleValues(benchmark::State& state) {
  Sides sides(state);
  const PlainStatement query =
      Prepare(sides.plain.get(), "SELECT DispType FROM FEEDS ORDER BY DispType COLLATE NOCASE");
  const Bstr table(u"OTHER_2");
  const Bstr property(u"Material");
  Compare(
      state, kLimit,
      [&] {
        std::vector<Variant> texts;
        while (sqlite3_step(query.get()) == SQLITE_ROW) texts.push_back(Text(query.get(), 0));
        sqlite3_reset(query.get());
        return Size(ToArray(texts));
      },
      [&] {
        Variant values;
        Check(sides.object->GetPermissibleValues(table.get(), property.get(), 0, values.put()));
        return Size(values);
      });
}

void TappingHeads(benchmark::State& state) {
  Sides sides(state);
  PlainQuery query(sides.plain.get(),
                   "SELECT * FROM Q_TAPPING_HEAD WHERE AUX_Metric_Min_Diameter <= ?1 AND "
                   "AUX_Metric_Max_Diameter >= ?1");
  const auto diameter = [](std::int64_t row) { return static_cast<double>(row) + 0.5; };
  const Bstr unit(u"mm");
  Compare(
      state, kLimit,
      [&] {
        std::vector<Variant> names;
        std::vector<Variant> ids;
        query(
            [&](sqlite3_stmt* row) {
              do {
                ids.push_back(Variant::FromI4(sqlite3_column_int(row, 0)));
                names.push_back(Text(row, 1));
              } while (sqlite3_step(row) == SQLITE_ROW);
              return 0;
            },
            diameter(sides.Next(sides.plainKey)));
        return Size(ToArray(names)) + Size(ToArray(ids));
      },
      [&] {
        Variant names;
        Variant ids;
        Check(sides.object->GetTappingHeadsForTap(unit.get(), diameter(sides.Next(sides.key)),
                                                  names.put(), ids.put()));
        return Size(names) + Size(ids);
      });
}

void Sizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->ArgName("rows")->Arg(10)->Arg(100000)->UseManualTime()->Unit(benchmark::kMicrosecond);
}

BENCHMARK(HardnessRow)->Apply(Sizes);
BENCHMARK(DrillFeed)->Apply(Sizes);
BENCHMARK(FactorNeighbours)->Apply(Sizes);
BENCHMARK(StockMaterial)->Apply(Sizes);
BENCHMARK(PermissibleValues)->Apply(Sizes);
BENCHMARK(TappingHeads)->Apply(Sizes);

}  // namespace
