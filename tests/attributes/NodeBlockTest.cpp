// Copied nodes stand together in blocks: each can go, be replaced and live on by itself.
#include "attributes/NodeBlock.h"

#include <gtest/gtest.h>

#include <random>

#include "attributes/AttributeMap.h"
#include "tests/attributes/TreeTesting.h"

namespace {

CAttributeMap Siblings(int count) {
  CAttributeMap map;
  for (int i = 0; i < count; ++i) {
    map.Add(L"A", CLumInt(i), 0).Add(L"Below", CLumName(L"text"), 0);
  }
  return map;
}

TEST(NodeBlock, CopiesOfAnyNumberOfChildrenAreWhole) {
  constexpr int kBlock = static_cast<int>(lum::detail::CNodeBlock::kMostNodes);
  for (const int count : {1, kBlock - 1, kBlock, kBlock + 1, 3 * kBlock + 2}) {
    const CAttributeMap original = Siblings(count);
    const CAttributeMap copy(original);
    EXPECT_EQ(Describe(copy), Describe(original));
  }
}

TEST(NodeBlock, CopiedChildrenGoInAnyOrder) {
  std::mt19937 random(1);
  const CAttributeMap original = Siblings(100);
  for (int run = 0; run < 20; ++run) {
    CAttributeMap expected = original;
    CAttributeMap copy(original);
    while (copy.Count() > run) {
      const auto pos = static_cast<int>(random() % static_cast<unsigned int>(copy.Count()));
      copy.Remove(pos);
      expected.Remove(pos);
    }
    EXPECT_EQ(Describe(copy), Describe(expected));
    copy.Add(original.Find(L"A"));
    EXPECT_EQ(copy.Count(), run + 1);
  }
}

TEST(NodeBlock, CopiedChildrenOutliveTheTreeTheyCameInWhenTheyMove) {
  CAttributeMap moved;
  {
    CAttributeMap copy(Siblings(10));
    moved = std::move(*copy.GetAttrMap(L"A", 3));
  }
  EXPECT_EQ(DescribeNode(moved), "A:101:3:0{Below:501:text:0}");
  {
    CAttributeMap group;
    group.Add(Siblings(5));
    moved = std::move(group);
  }
  EXPECT_EQ(moved[0].Count(), 5);
  EXPECT_EQ(Describe(moved[0]), Describe(Siblings(5)));
}

}  // namespace
