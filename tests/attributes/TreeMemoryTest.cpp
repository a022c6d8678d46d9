// Trees when memory is short.
#include <gtest/gtest.h>

#include <new>

#include "attributes/AttributeMap.h"
#include "tests/Allocations.h"

namespace {

// Far more than any call of these tests makes.
constexpr int kManyAllocations = 10'000;

CAttributeMap Tree() {
  CAttributeMap map(L"Root");
  for (int i = 0; i < 40; ++i) {
    map.Add(i % 2 == 0 ? L"Even" : L"Odd", CLumInt(i), 0).Add(L"Below", CLumName(L"text"), 0);
  }
  return map;
}

TEST(TreeMemory, ACopyThatFailsLeavesNothingBehind) {
  const CAttributeMap tree = Tree();
  int failures = 0;
  for (int allowed = 0; allowed < kManyAllocations; ++allowed) {
    LimitAllocations(allowed);
    try {
      const CAttributeMap copy(tree);
      LimitAllocations(-1);
      EXPECT_EQ(copy.Count(), 40);
      break;
    } catch (const std::bad_alloc&) {
      LimitAllocations(-1);
      ++failures;
    }
  }
  EXPECT_GT(failures, 1);
  EXPECT_LT(failures, kManyAllocations);
}

TEST(TreeMemory, SearchesGoOnWithoutAnIndex) {
  const CAttributeMap tree = Tree();
  const CString even(L"Even");
  const CString odd(L"Odd");
  for (int allowed = 0; allowed < 4; ++allowed) {
    const CAttributeMap copy(tree);
    LimitAllocations(allowed);
    int wrong = 0;
    for (int search = 0; search < 400; ++search) {
      wrong += copy.FindAttribute(even, 19) != 38 ? 1 : 0;
      wrong += copy.FindAttribute(odd, 19) != 39 ? 1 : 0;
      wrong += copy.FindAttribute(odd, 20) != -1 ? 1 : 0;
    }
    LimitAllocations(-1);
    EXPECT_EQ(wrong, 0) << allowed;
  }
}

TEST(TreeMemory, ChildrenAreFoundWhenTheIndexCannotGrow) {
  const CString even(L"Even");
  const CString more(L"More");
  for (int allowed = 0; allowed < 400; ++allowed) {
    CAttributeMap tree = Tree();
    for (int search = 0; search < 40; ++search) {
      EXPECT_TRUE(tree.Has(even, 19));
    }
    LimitAllocations(allowed);
    try {
      for (int i = 0; i < 200; ++i) {
        tree.Add(more);
      }
    } catch (const std::bad_alloc&) {
    }
    LimitAllocations(-1);
    const int added = tree.Count() - 40;
    ASSERT_EQ(tree.FindAttribute(even, 19), 38) << allowed;
    ASSERT_EQ(tree.FindAttribute(more, added), -1) << allowed;
    if (added > 0) {
      ASSERT_EQ(tree.FindAttribute(more, added - 1), tree.Count() - 1) << allowed;
    }
  }
}

}  // namespace
