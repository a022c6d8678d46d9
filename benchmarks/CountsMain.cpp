// Counts the allocations of the library's hot operations and prints them as JSON; under callgrind,
// which scripts/check-counts starts, also dumps the instructions of each. What is counted is one
// run of the benchmark of that name: the same data, the same calls.
#include <valgrind/callgrind.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "benchmarks/Context.h"
#include "benchmarks/DecoderBenchmarks.h"
#include "benchmarks/TextBenchmarks.h"
#include "benchmarks/TreeFamilies.h"
#include "tests/Allocations.h"

namespace {

using lum::bench::CRun;

constexpr const char* kOperations[] = {
    "double to text",
    "text to double",
    "list of doubles to text",
    "text to list of doubles",
    "CanVal",
    "J1939Val",
    "J1939BitsVal",
    "BinVal of binary records",
    "BinVal of hexadecimal text",
    "AdamVal",
    "NMEAPos",
    "TimeConv",
    "Val",
    "look-up among 10 siblings",
    "look-up among 1,000 siblings",
    "deep copy",
    "compare equal trees",
    "overload",
    "tree to file text, 1k",
    "file text to tree, 1k",
    "tree to file text, siblings of one name, 1k",
    "file text to tree, siblings of one name, 1k",
    "tree to file text, distinct names in one parent, 1k",
    "file text to tree, distinct names in one parent, 1k",
    "definition file",
};

void AddAll() {
  using namespace lum::bench;
  AddDoubleToText();
  AddTextToDouble();
  AddListToText();
  AddTextToList();
  AddCanVal();
  AddJ1939Val();
  AddJ1939BitsVal();
  AddBinValOfRecords();
  AddBinValOfHexText();
  AddAdamVal();
  AddNmeaPos();
  AddTimeConv();
  AddVal();
  AddOurTree();
  AddDefinitions();
}

const CRun& OurRun(const char* workload) {
  const std::vector<CRun>& runs = lum::bench::Runs();
  const auto found = std::find_if(runs.begin(), runs.end(), [workload](const CRun& run) {
    return run.workload == workload && run.contender == lum::bench::kOurs;
  });
  if (found == runs.end()) {
    std::fprintf(stderr, "there is no benchmark \"%s\"\n", workload);
    std::exit(1);
  }
  return *found;
}

/// The first run makes the data and checks the answer; the second finds everything as all later
/// ones do.
void WarmUp(const CRun& run) {
  for (int time = 0; time < 2; ++time) {
    if (!run.isRight()) {
      std::fprintf(stderr, "%s: wrong answer\n", run.workload.c_str());
      std::exit(1);
    }
  }
}

int CountRun(const CRun& run) {
  const int before = CountedAllocations();
  CALLGRIND_START_INSTRUMENTATION;
  CALLGRIND_ZERO_STATS;
  run.run();
  CALLGRIND_DUMP_STATS_AT(run.workload.c_str());
  CALLGRIND_STOP_INSTRUMENTATION;
  return CountedAllocations() - before;
}

}  // namespace

int main() {
  AddAll();
  std::printf("{\n  \"compiler\": \"%s\",\n  \"operations\": {", lum::bench::Compiler().c_str());
  const char* separator = "\n";
  for (const char* operation : kOperations) {
    const CRun& run = OurRun(operation);
    WarmUp(run);
    std::printf("%s    \"%s\": {\"items\": %d, \"allocations\": %d}", separator, operation,
                static_cast<int>(run.items), CountRun(run));
    separator = ",\n";
  }
  std::printf("\n  }\n}\n");
  return 0;
}
