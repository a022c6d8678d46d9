// Times attribute trees: saving, loading, look-up, copying, comparing, merging, definition files.
#include "benchmarks/Context.h"
#include "benchmarks/TreeFamilies.h"

int main(int argc, char** argv) {
  lum::bench::AddTrees();
  lum::bench::AddDefinitions();
  lum::bench::TellTreePeers();
  return lum::bench::RunBenchmarks(argc, argv);
}
