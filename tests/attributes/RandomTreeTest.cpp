// Random operations on a tree and on the naive tree side by side.
#include <gtest/gtest.h>

#include "tests/attributes/SideBySide.h"

namespace {

class RandomTree : public testing::TestWithParam<unsigned int> {};

TEST_P(RandomTree, BehavesAsTheNaiveTree) {
  CSideBySide trees{CRandomTrees(GetParam())};
  for (int step = 0; step < 1500 && !HasFailure(); ++step) {
    trees.Step();
    if (step % 10 == 0) {
      trees.Merge();
      trees.Compare();
    }
    if (step % 50 == 0) {
      trees.MergeFromWithin();
      trees.CopyBack();
    }
    trees.ExpectEqual();
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomTree, testing::Range(1u, 9u));

}  // namespace
