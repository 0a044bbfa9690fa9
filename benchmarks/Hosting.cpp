#include "benchmarks/Hosting.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <numeric>
#include <stdexcept>
#include <utility>
#include <vector>

#include "benchmarks/BenchDatabase.h"
#include "benchmarks/SyncTime.h"
#include "platform/automation/Bstr.h"
#include "platform/automation/ClassObject.h"
#include "platform/automation/Variant.h"
#include "platform/framework/Text.h"

using orxdb::ComPtr;
using orxdb::Variant;
using orxdb::WidenToBstr;

namespace {

using Clock = std::chrono::steady_clock;

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

/// One side of a comparison: how long each run took outside synchronisations, and those.
struct Side {
  std::int64_t Run(const Work& work) {
    if (work.prepare) work.prepare();
    TakeSyncTimes();
    const auto begin = Clock::now();
    const std::int64_t items = work.run();
    const double time = std::chrono::duration<double>(Clock::now() - begin).count();
    const std::vector<double> waited = TakeSyncTimes();
    times.push_back(time - std::reduce(waited.begin(), waited.end()));
    syncs += waited.size();
    return work.result ? work.result() : items;
  }
  /// How often a run synchronised.
  double Syncs() const { return static_cast<double>(syncs) / static_cast<double>(times.size()); }

  std::vector<double> times;
  std::size_t syncs = 0;
};

/// A line of the process's status, in kilobytes.
double StatusKilobytes(const std::string& name) {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with(name + ':')) return std::strtod(line.c_str() + name.size() + 1, nullptr);
  }
  return 0;
}

double PeakKilobytes(const Work& work) {
  if (work.prepare) work.prepare();
  std::ofstream("/proc/self/clear_refs") << 5;  // the peak begins anew
  const double before = StatusKilobytes("VmRSS");
  work.run();
  return std::max(0.0, StatusKilobytes("VmHWM") - before);
}

}  // namespace

void Check(HRESULT result) {
  if (result != S_OK) throw std::runtime_error("a method of the component failed");
}

ComPtr<IOrxDbObj> CreateObject() {
  ComPtr<IClassFactory> factory;
  Check(CoGetClassObjectFromFile(ORXDB_LIBRARY, CLSID_OrxDbObj, IID_IClassFactory,
                                 factory.putVoid()));
  ComPtr<IOrxDbObj> object;
  Check(factory->CreateInstance(nullptr, IID_IOrxDbObj, object.putVoid()));
  return object;
}

ComPtr<IOrxDbObj> OpenObject(const std::string& path) {
  ComPtr<IOrxDbObj> object = CreateObject();
  Check(object->SetMdbFile(WidenToBstr(path).get()));
  Variant types;
  Check(object->GetToolTypes(types.put()));
  ULONG count = 0;
  if (types.get().parray != nullptr) count = types.get().parray->rgsabound[0].cElements;
  if (count != 3 * kToolTables) throw std::runtime_error("the database did not open");
  return object;
}

std::int64_t WalkTools(IOrxDbObj& object, const std::string& where, const std::string& order) {
  const auto table = WidenToBstr(kBenchTable);
  Check(object.SetTabFilter(table.get(), WidenToBstr(where).get(), WidenToBstr(order).get()));
  Variant names;
  Variant values;
  std::int64_t tools = 0;
  Check(object.GetFirstTool(table.get(), names.put(), values.put()));
  for (; !values.empty(); ++tools) Check(object.GetNextTool(table.get(), values.put()));
  return tools;
}

double MedianMilliseconds(const std::function<std::int64_t()>& work) {
  Side side;
  for (double total = 0; total < 0.5; total += side.times.back()) side.Run(work);
  return Median(side.times) * 1000;
}

void Compare(benchmark::State& state, double limit, const Work& plain, const Work& component,
             Durable durable) {
  Side().Run(plain);
  Side().Run(component);
  Side plainSide;
  Side side;
  std::int64_t items = 0;
  for (auto _ : state) {
    const std::int64_t expected = plainSide.Run(plain);
    const std::int64_t count = side.Run(component);
    if (count != expected) {
      state.SkipWithError("the component and its plain twin disagree");
      return;
    }
    items += count;
    state.SetIterationTime(side.times.back());
  }
  if (durable == Durable::Yes && (plainSide.syncs == 0 || side.syncs == 0)) {
    state.SkipWithError("a durable change was not seen to synchronise");
    return;
  }
  const double plainTime = Median(plainSide.times);
  state.SetItemsProcessed(items);
  state.counters["plain_ms"] = plainTime * 1000;
  state.counters["ratio"] = Median(side.times) / plainTime;
  state.counters["plain_syncs"] = plainSide.Syncs();
  state.counters["syncs"] = side.Syncs();
  state.counters["limit"] = limit;
  state.counters["peak_kb"] = PeakKilobytes(component);
}
