// The parts of lum_bench_texts, in the order of the report.
#pragma once

namespace lum::bench {

void AddDoubleToText();
void AddTextToDouble();
void AddListToText();
void AddTextToList();

}  // namespace lum::bench
