// Walking a tool table of 38 fields through GetFirstTool and GetNextTool.
#include <algorithm>
#include <malloc.h>
#include <string>

#include "benchmarks/BenchDatabase.h"
#include "benchmarks/Hosting.h"

namespace {

/// `plain` is the twin's condition where it is not the same: a plus keeps it from an index whose
/// hits it would visit in random order, or would have to sort by key, as the component gives them.
struct Walk {
  const char* where = "";
  const char* order = "";
  double limit = 0;
  const char* plain = where;
};

constexpr Walk kPlain = {"", "", 2.0};
constexpr Walk kFiltered = {"[Diameter] >= 5 AND [Unit] = 'mm'", "", 2.5,
                            "+[Diameter] >= 5 AND [Unit] = 'mm'"};
constexpr Walk kByName = {"[Name] LIKE 'bench*' AND [Name] > 'BENCH_MILL D19'", "", 2.5,
                          "+[Name] LIKE 'bench%' AND +[Name] > 'BENCH_MILL D19'"};
constexpr Walk kByDiameter = {"[Diameter] >= 19", "", 2.5};
constexpr Walk kOrdered = {"", "[Name]", 2.5};
constexpr Walk kFilteredOrdered = {"[Diameter] >= 5 AND [Unit] = 'mm'", "[Diameter] DESC, [Name]",
                                   2.5};

std::string PlainSql(const Walk& walk) {
  std::string sql = std::string("SELECT * FROM ") + kBenchQuery;
  if (*walk.plain != '\0') sql += std::string(" WHERE ") + walk.plain;
  return sql + " ORDER BY " + (*walk.order ? walk.order + std::string(" COLLATE NOCASE") : "ID");
}

/// `read` sees every row.
std::int64_t PlainWalk(sqlite3* database, const Walk& walk,
                       std::int64_t (*read)(sqlite3_stmt* row)) {
  const PlainStatement rows = Prepare(database, PlainSql(walk));
  std::int64_t count = 0;
  std::int64_t sum = 0;
  for (; sqlite3_step(rows.get()) == SQLITE_ROW; ++count) sum += read(rows.get());
  benchmark::DoNotOptimize(sum);
  return count;
}

void WalkTable(benchmark::State& state, const Walk& walk) {
  const std::string& path = BenchDatabase(state.range(0));
  const PlainDatabase plain = OpenPlain(path);
  // An ordering stays with an object; each benchmark has its own.
  const auto object = OpenObject(path);
  Compare(
      state, walk.limit, [&] { return PlainWalk(plain.get(), walk, BuildValues); },
      [&] { return WalkTools(*object, walk.where, walk.order); });
  state.counters["bare_ms"] =
      MedianMilliseconds([&] { return PlainWalk(plain.get(), walk, ReadRow); });
}

void Sizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->Arg(1000)->Arg(100000)->Arg(1000000)->UseManualTime()->Unit(benchmark::kMillisecond);
}

BENCHMARK_CAPTURE(WalkTable, plain, kPlain)->Apply(Sizes);
BENCHMARK_CAPTURE(WalkTable, filtered, kFiltered)->Apply(Sizes);
BENCHMARK_CAPTURE(WalkTable, by_name, kByName)->Apply(Sizes);
BENCHMARK_CAPTURE(WalkTable, by_diameter, kByDiameter)->Apply(Sizes);
BENCHMARK_CAPTURE(WalkTable, ordered, kOrdered)->Apply(Sizes);
BENCHMARK_CAPTURE(WalkTable, filtered_ordered, kFilteredOrdered)->Apply(Sizes);

/// Memory that a walk keeps beyond SQLite's own, in bytes for each tool of the table.
void WalkMemory(benchmark::State& state, const Walk& walk) {
  const std::string& path = BenchDatabase(state.range(0));
  const auto object = OpenObject(path);
  const auto held = [] {
    return static_cast<double>(mallinfo2().uordblks) + static_cast<double>(mallinfo2().hblkhd) -
           static_cast<double>(sqlite3_memory_used());
  };
  double most = 0;
  for (auto _ : state) {
    const double before = held();
    WalkTools(*object, walk.where, walk.order);
    most = std::max(most, held() - before);
  }
  state.counters["bytes_per_tool"] = most / static_cast<double>(state.range(0));
  state.counters["limit"] = 16;
}

BENCHMARK_CAPTURE(WalkMemory, plain, kPlain)->Arg(1000000)->Iterations(1);
BENCHMARK_CAPTURE(WalkMemory, filtered_ordered, kFilteredOrdered)->Arg(1000000)->Iterations(1);

}  // namespace
