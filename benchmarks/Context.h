// Runs what was added under Google Benchmark, and tells about the run beside its times: the
// compiler and the peers' versions. Keys that begin with "peer " are libraries; "absent" in place
// of a version: its contenders are left out.
#pragma once

#include <benchmark/benchmark.h>

#include <string>

#include "benchmarks/Workload.h"

namespace lum::bench {

inline std::string Compiler() {
#if defined(__clang__)
  return __VERSION__;
#else
  return std::string("GCC ") + __VERSION__;
#endif
}

inline void TellPeer(const std::string& library, const std::string& version) {
  benchmark::AddCustomContext("peer " + library, version);
}

/// Takes the time of "workload/contender". A wrong answer reports an error and no time.
inline void Register(const CRun& run) {
  benchmark::RegisterBenchmark((run.workload + "/" + run.contender).c_str(),
                               [run](benchmark::State& state) {
                                 if (!run.isRight()) {
                                   state.SkipWithError("wrong answer");
                                   return;
                                 }
                                 for (auto _ : state) {
                                   run.run();
                                 }
                                 state.SetItemsProcessed(state.iterations() * run.items);
                               });
}

/// Runs what has been added, as the command line says. The result is the program's.
inline int RunBenchmarks(int argc, char** argv) {
  benchmark::AddCustomContext("compiler", Compiler());
  for (const CRun& run : Runs()) {
    Register(run);
  }
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
    return 2;
  }
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}

}  // namespace lum::bench
