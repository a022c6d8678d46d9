// Times how doubles become text and text doubles.
#include "benchmarks/TextBenchmarks.h"

#include "benchmarks/Context.h"

namespace {

#if !defined(HAS_FMT)
#define HAS_FMT "absent"
#endif
#if !defined(HAS_DOUBLE_CONVERSION)
#define HAS_DOUBLE_CONVERSION "absent"
#endif
#if !defined(HAS_QT)
#define HAS_QT "absent"
#endif

void TellPeers() {
  lum::bench::TellPeer("fmt", HAS_FMT);
  lum::bench::TellPeer("double-conversion", HAS_DOUBLE_CONVERSION);
  lum::bench::TellPeer("Qt", HAS_QT);
}

}  // namespace

int main(int argc, char** argv) {
  lum::bench::AddDoubleToText();
  lum::bench::AddTextToDouble();
  lum::bench::AddListToText();
  lum::bench::AddTextToList();
  TellPeers();
  return lum::bench::RunBenchmarks(argc, argv);
}
