#pragma once

#include <benchmark/benchmark.h>
#include <cstdint>
#include <functional>
#include <string>

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

/// Runs the plain work and the component's in turn, so that both meet the same conditions, and
/// reports these counters: `plain_ms`, `ratio` of the two times, `limit`, `sync_ms`, and `peak_kb`,
/// the memory that one more run of the component takes beyond what was in use. A time is the median
/// outside synchronisations, and for each of these, whichever side asked for it, the median of all
/// (`sync_ms`): as if the disk were the same throughout.
/// Both must give the same count, which is the number of items processed.
void Compare(benchmark::State& state, double limit, const std::function<std::int64_t()>& plain,
             const std::function<std::int64_t()>& component);
