// The parts of lum_bench_decoders, in the order of the report.
#pragma once

namespace lum::bench {

void AddCanVal();
void AddJ1939Val();
void AddJ1939BitsVal();
void AddBinValOfRecords();
void AddBinValOfHexText();
void AddAdamVal();
void AddNmeaPos();
void AddTimeConv();
void AddVal();

}  // namespace lum::bench
