// What the contenders of all families share.
#include "benchmarks/TreeContender.h"

namespace lum::bench {

std::shared_ptr<void>& HeldSlot() {
  static std::shared_ptr<void> slot;
  return slot;
}

std::vector<CTreeBuilder>& TreeBuilders() {
  static std::vector<CTreeBuilder> builders;
  return builders;
}

}  // namespace lum::bench
