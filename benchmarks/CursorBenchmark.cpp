// Counting, and going to records by their bookmarks.
#include <string>
#include <vector>

#include "benchmarks/BenchDatabase.h"
#include "benchmarks/Hosting.h"
#include "benchmarks/PlainQuery.h"
#include "platform/automation/Variant.h"
#include "platform/framework/Text.h"

using orxdb::Variant;
using orxdb::WidenToBstr;

namespace {

/// The twin counts the table: the joins of the query, on keys, change nothing.
void Count(benchmark::State& state) {
  const std::string& path = BenchDatabase(state.range(0));
  const PlainDatabase plain = OpenPlain(path);
  const auto object = OpenObject(path);
  const auto table = WidenToBstr(kBenchTable);
  const PlainStatement count =
      Prepare(plain.get(), std::string("SELECT count(*) FROM ") + kBenchTable);
  Compare(
      state, 3.0,
      [&] {
        sqlite3_step(count.get());
        const std::int64_t tools = sqlite3_column_int64(count.get(), 0);
        sqlite3_reset(count.get());
        return tools;
      },
      [&] {
        LONG tools = 0;
        Check(object->GetSelectedRecordCount(table.get(), &tools));
        return std::int64_t{tools};
      });
}

/// Goes to one of a hundred records, far from each other, and takes its bookmark again; the twin
/// finds the record by its key.
void Bookmark(benchmark::State& state) {
  constexpr std::size_t kMarked = 100;
  const std::string& path = BenchDatabase(state.range(0));
  const PlainDatabase plain = OpenPlain(path);
  const auto object = OpenObject(path);
  const auto table = WidenToBstr(kBenchTable);
  const std::int64_t distance = state.range(0) / static_cast<std::int64_t>(kMarked);
  std::vector<Variant> bookmarks(kMarked);
  std::vector<std::int64_t> keys;
  for (Variant& bookmark : bookmarks) {
    keys.push_back(static_cast<std::int64_t>(keys.size()) * distance + 1);
    const std::string filter = "ID = " + std::to_string(keys.back());
    WalkTools(*object, filter, "");
    Check(object->GetToolTableBookmark(table.get(), bookmark.put()));
  }
  PlainQuery find(plain.get(), std::string("SELECT ID FROM ") + kBenchTable + " WHERE ID = ?");
  std::size_t plainNext = 0;
  std::size_t next = 0;
  Compare(
      state, 2.0,
      [&] {
        plainNext = (plainNext + 37) % kMarked;
        const auto key = [](sqlite3_stmt* row) { return sqlite3_column_int64(row, 0); };
        return find(key, keys[plainNext]) == keys[plainNext] ? 1 : 0;
      },
      [&] {
        Variant bookmark;
        next = (next + 37) % kMarked;
        Check(object->SetToolTableBookmark(table.get(), bookmarks[next].get()));
        Check(object->GetToolTableBookmark(table.get(), bookmark.put()));
        return 1;
      });
}

void Sizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->Arg(1000)->Arg(100000)->Arg(1000000)->UseManualTime()->Unit(benchmark::kMicrosecond);
}

BENCHMARK(Count)->Apply(Sizes);
BENCHMARK(Bookmark)->Apply(Sizes);

}  // namespace
