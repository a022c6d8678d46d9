// Attribute trees made and changed by the input, beside the naive tree; and what must hold of any
// two of them.
#include <gtest/gtest.h>

#include "fuzz/FuzzInput.h"
#include "tests/attributes/SideBySide.h"

namespace {

void Step(CSideBySide& trees, int choice) {
  switch (choice) {
    case 0:
      return trees.Merge();
    case 1:
      return trees.Compare();
    case 2:
      return trees.MergeFromWithin();
    case 3:
      return trees.CopyBack();
    default:
      return trees.Step();
  }
}

void ExpectNoDifference(const CAttributeMap& a, const CAttributeMap& b) {
  CAttributeMap diff;
  EXPECT_FALSE(a.Compare(b, diff, 7)) << Describe(diff);
  EXPECT_EQ(diff.Count(), 0);
}

void CheckPair(const CAttributeMap& first, const CAttributeMap& second) {
  const CAttributeMap copy(first);
  EXPECT_EQ(DescribeNode(copy), DescribeNode(first));
  ExpectNoDifference(first, first);
  ExpectNoDifference(first, copy);
  CAttributeMap replaced(first);
  replaced.Overload(second, CAttributeMap::OVERLOAD_REPLACE);
  EXPECT_EQ(DescribeNode(replaced), DescribeNode(second));
  ExpectNoDifference(replaced, second);
  // A tree laid over itself changes nothing.
  CAttributeMap same(first);
  same.Overload(first, CAttributeMap::OVERLOAD_ADD_NEW | CAttributeMap::OVERLOAD_COPY_FLAGS |
                           CAttributeMap::OVERLOAD_ORDER_INFO);
  EXPECT_EQ(DescribeNode(same), DescribeNode(first));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  lum::fuzz::CChoices choices(data, size);
  CRandomTrees random([&choices] { return choices(); });
  const int steps = random.Below(48);
  const CNaiveNode first = random.Tree(random.Below(24));
  const CNaiveNode second = random.Tree(random.Below(24));
  CheckPair(ToMap(first), ToMap(second));
  CSideBySide trees(random);
  for (int step = 0; step < steps; ++step) {
    Step(trees, random.Below(8));
    trees.ExpectEqual();
  }
  return 0;
}
