// Opening a tool database: 40 tool tables, stock materials and eighteen machining-data tables.
#include <string>
#include <vector>

#include "benchmarks/BenchDatabase.h"
#include "benchmarks/Hosting.h"

namespace {

/// The twin opens the file and every stored query, and reads the first row of each.
std::int64_t PlainOpen(const std::string& path) {
  const PlainDatabase database = OpenPlain(path);
  std::vector<std::string> queries;
  const PlainStatement names =
      Prepare(database.get(), "SELECT name FROM sqlite_schema WHERE type = 'view'");
  while (sqlite3_step(names.get()) == SQLITE_ROW) {
    queries.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(names.get(), 0)));
  }
  std::vector<PlainStatement> open;
  std::int64_t sum = 0;
  for (const std::string& query : queries) {
    open.push_back(Prepare(database.get(), "SELECT * FROM \"" + query + "\""));
    if (sqlite3_step(open.back().get()) == SQLITE_ROW) sum += ReadRow(open.back().get());
    sqlite3_reset(open.back().get());
  }
  benchmark::DoNotOptimize(sum);
  return 1;
}

void Open(benchmark::State& state) {
  const std::string path = BenchDatabase(state.range(0));
  Compare(
      state, 3.0, [&] { return PlainOpen(path); },
      [&] {
        const auto object = OpenObject(path);
        return object ? 1 : 0;
      });
}

BENCHMARK(Open)->Arg(1000)->Arg(100000)->Arg(1000000)->UseManualTime()->Unit(
    benchmark::kMillisecond);

}  // namespace
