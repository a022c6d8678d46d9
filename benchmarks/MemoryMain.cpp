// Prints, as JSON, how many bytes of the heap each contender's tree takes for an attribute.
#include <malloc.h>

#include <cstdio>
#include <memory>

#include "benchmarks/TreeContender.h"
#include "benchmarks/TreeFamilies.h"

namespace {

double HeapInUse() {
  const struct mallinfo2 info = mallinfo2();
  return static_cast<double>(info.uordblks + info.hblkhd);
}

double BytesPerAttribute(const lum::bench::CTreeBuilder& builder) {
  const double before = HeapInUse();
  const std::shared_ptr<void> tree = builder.build();
  return (HeapInUse() - before) / lum::bench::kAttributes;
}

}  // namespace

int main() {
  lum::bench::AddTrees();
  const char* separator = "[\n";
  for (const lum::bench::CTreeBuilder& builder : lum::bench::TreeBuilders()) {
    std::printf(
        "%s  {\"workload\": \"heap per attribute\", \"unit\": \"bytes\", \"contender\": \"%s\", "
        "\"value\": %.1f}",
        separator, builder.contender.c_str(), BytesPerAttribute(builder));
    separator = ",\n";
  }
  std::printf("\n]\n");
  return 0;
}
