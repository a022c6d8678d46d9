// How every benchmark is made: a workload, one of its contenders, how many items a run works on,
// and the answer a run must give. The report (benchmarks/report.py) takes the names apart again.
#pragma once

#include <benchmark/benchmark.h>

#include <cstdint>
#include <functional>
#include <string>
#include <utility>

namespace lum::bench {

/// The library's own contender, and the short loop that does only the unavoidable work. All other
/// contenders are peers.
inline constexpr const char* kOurs = "LumAttributes";
inline constexpr const char* kLimit = "limit";

/// Registers "workload/contender". `run` works on `items` items (attributes, lines, values) and
/// gives its answer, which is compared with `expected` once before the time is taken: a benchmark
/// with a wrong answer reports an error and no time.
template <typename Answer, typename Run>
void AddBenchmark(const std::string& workload, const std::string& contender, std::int64_t items,
                  Answer expected, Run run) {
  const std::string name = workload + "/" + contender;
  benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
    if (!(run() == expected)) {
      state.SkipWithError("wrong answer");
      return;
    }
    for (auto _ : state) {
      benchmark::DoNotOptimize(run());
    }
    state.SetItemsProcessed(state.iterations() * items);
  });
}

}  // namespace lum::bench
