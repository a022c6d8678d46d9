// How every benchmark is made: a workload, one of its contenders, how many items a run works on,
// and the answer a run must give. What is added is timed by the programs that include Context.h and
// counted by lum_bench_counts. The report (benchmarks/report.py) takes the names apart again.
#pragma once

#include <benchmark/benchmark.h>

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace lum::bench {

/// The library's own contender, and the short loop that does only the unavoidable work. All other
/// contenders are peers.
inline constexpr const char* kOurs = "LumAttributes";
inline constexpr const char* kLimit = "limit";

/// `run` works on `items` items (attributes, lines, values); `isRight` does the same and says
/// whether the answer is the expected one.
struct CRun {
  std::string workload;
  std::string contender;
  std::int64_t items = 0;
  std::function<bool()> isRight;
  std::function<void()> run;
};

/// All that was added, in order.
inline std::vector<CRun>& Runs() {
  static std::vector<CRun> runs;
  return runs;
}

template <typename Answer, typename Run>
void AddBenchmark(const std::string& workload, const std::string& contender, std::int64_t items,
                  Answer expected, Run run) {
  Runs().push_back({workload, contender, items, [=] { return run() == expected; },
                    [=] { benchmark::DoNotOptimize(run()); }});
}

}  // namespace lum::bench
