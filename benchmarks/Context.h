// What a report tells about a run beside its times: the compiler and the peers' versions. Keys that
// begin with "peer " are libraries; "absent" in place of a version: its contenders are left out.
#pragma once

#include <benchmark/benchmark.h>

#include <string>

namespace lum::bench {

inline void TellCompiler() {
#if defined(__clang__)
  benchmark::AddCustomContext("compiler", __VERSION__);
#else
  benchmark::AddCustomContext("compiler", std::string("GCC ") + __VERSION__);
#endif
}

inline void TellPeer(const std::string& library, const std::string& version) {
  benchmark::AddCustomContext("peer " + library, version);
}

/// Runs what has been added, as the command line says. The result is the program's.
inline int RunBenchmarks(int argc, char** argv) {
  TellCompiler();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
    return 2;
  }
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}

}  // namespace lum::bench
