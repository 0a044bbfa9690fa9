#pragma once

#include <benchmark/benchmark.h>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>

#include "interface/IOrxDbObj.h"
#include "platform/automation/ComPtr.h"

/// A new object of the component, loaded from its library as a host does it.
orxdb::ComPtr<IOrxDbObj> CreateObject();
/// The same with the database open; throws when it does not open.
orxdb::ComPtr<IOrxDbObj> OpenObject(const std::string& path);

/// Throws when a method did not succeed.
void Check(HRESULT result);

/// Sets the filter and the ordering ("" for none), walks the table and gives the number of tools.
std::int64_t WalkTools(IOrxDbObj& object, const std::string& where, const std::string& order);

/// What one side does, timed, and what it needs before and tells after, which is not timed.
struct Work {
  template <typename Run>
  Work(Run work, std::function<void()> before = nullptr,
       std::function<std::int64_t()> after = nullptr)
      : run(std::move(work)), prepare(std::move(before)), result(std::move(after)) {}

  /// Gives the number of items processed, unless `result` does.
  std::function<std::int64_t()> run;
  std::function<void()> prepare;
  std::function<std::int64_t()> result;
};

/// Whether each run makes something durable; then both sides must be seen to synchronise.
enum class Durable { No, Yes };

/// Runs the plain work and the component's in turn, so that both meet the same conditions, and
/// reports these counters: `plain_ms`, `ratio` of the two times, `limit`, `syncs` and
/// `plain_syncs`, how often a run of each synchronised, and `peak_kb`, the memory that one more run
/// of the component takes beyond what was in use. A time is the median outside synchronisations.
/// Both must give the same count, which is the number of items processed.
void Compare(benchmark::State& state, double limit, const Work& plain, const Work& component,
             Durable durable = Durable::No);

/// The median time of that work alone, in milliseconds.
double MedianMilliseconds(const std::function<std::int64_t()>& work);
