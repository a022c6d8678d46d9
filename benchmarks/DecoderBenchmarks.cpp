// Times the formula operations that read numbers out of what devices send.
#include "benchmarks/DecoderBenchmarks.h"

#include "benchmarks/Context.h"

#if !defined(HAS_QT)
#define HAS_QT "absent"
#endif

int main(int argc, char** argv) {
  lum::bench::AddCanVal();
  lum::bench::AddJ1939Val();
  lum::bench::AddJ1939BitsVal();
  lum::bench::AddBinValOfRecords();
  lum::bench::AddBinValOfHexText();
  lum::bench::AddAdamVal();
  lum::bench::AddNmeaPos();
  lum::bench::AddTimeConv();
  lum::bench::AddVal();
  lum::bench::TellPeer("Qt", HAS_QT);
  return lum::bench::RunBenchmarks(argc, argv);
}
