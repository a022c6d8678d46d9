// Differences of trees, held against CAttributeMap::Compare.
#include "tools/lumattr/TreeDifference.h"

#include <gtest/gtest.h>

#include <random>

namespace lum::tool {
namespace {

using Change = TreeDifference::Change;

std::vector<TreeDifference> Find(const CAttributeMap& before, const CAttributeMap& after,
                                 bool withFlags = true) {
  return FindTreeDifferences({before, before}, {after, after}, withFlags);
}

void Put(CAttributeMap& parent, const wchar_t* name, int occurrence, const wchar_t* text,
         unsigned int flags = 0) {
  CAttributeMap& node = parent.FindCreate(name, occurrence);
  node.SetValue(CLumAnything(text));
  node.SetFlags(flags);
}

TEST(TreeDifferences, EmptyForEqualTreesWhateverTheOrderOfTheirNames) {
  CAttributeMap a;
  Put(a, L"A", 0, L"1");
  Put(a, L"B", 1, L"2");
  CAttributeMap b;
  Put(b, L"B", 1, L"2");
  Put(b, L"A", 0, L"1");
  EXPECT_TRUE(Find(a, b).empty());
}

TEST(TreeDifferences, PlaceholdersOfLaterOccurrencesAreNoChanges) {
  CAttributeMap a;
  Put(a, L"A", 0, L"1");
  Put(a, L"A", 1, L"1");
  Put(a, L"A", 2, L"1");
  CAttributeMap b(a);
  Put(b, L"A", 2, L"2");
  const std::vector<TreeDifference> found = Find(a, b);
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0].path, L"A(2)");
  EXPECT_EQ(found[0].change, Change::Value);
}

TEST(TreeDifferences, AValueThatWentAwayFromAGroupIsAChange) {
  CAttributeMap a;
  Put(a, L"G", 0, L"x");
  Put(a.FindCreate(L"G", 0), L"A", 0, L"1");
  CAttributeMap b;
  Put(b.FindCreate(L"G", 0), L"A", 0, L"1");
  const std::vector<TreeDifference> found = Find(a, b);
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0].path, L"G");
  EXPECT_EQ(found[0].oldValue, CString(L"x"));
  EXPECT_FALSE(found[0].newValue.has_value());
  a.FindCreate(L"G", 0).SetFlag(CAttributeRec::FLAG_KEEP_VALUE, true);
  b.FindCreate(L"G", 0).SetFlag(CAttributeRec::FLAG_KEEP_VALUE, true);
  EXPECT_TRUE(Find(a, b).empty());
}

TEST(TreeDifferences, FlagsCountOnlyWhenAskedFor) {
  CAttributeMap a;
  Put(a, L"A", 0, L"1", 1);
  CAttributeMap b;
  Put(b, L"A", 0, L"1", 2);
  ASSERT_EQ(Find(a, b).size(), 1U);
  EXPECT_EQ(Find(a, b)[0].change, Change::Flags);
  EXPECT_TRUE(Find(a, b, false).empty());
}

TEST(TreeDifferences, AVeryDeepTreeUsesNoCallStack) {
  CAttributeMap a;
  CAttributeMap* node = &a;
  for (int depth = 0; depth < 100000; ++depth) {
    node = &node->Add(L"n");
  }
  CAttributeMap b(a);
  Put(*node, L"A", 0, L"1");
  EXPECT_EQ(Find(a, b).size(), 1U);
  EXPECT_EQ(Find(b, a).size(), 1U);
}

CAttributeMap RandomTree(std::mt19937& random, int nodes) {
  static const wchar_t* const kNames[] = {L"A", L"B", L"OrderInfo"};
  static const wchar_t* const kTexts[] = {L"1", L"1.0", L"2", L"x", L""};
  CAttributeMap root;
  std::vector<CAttributeMap*> all{&root};
  for (int count = 0; count < nodes; ++count) {
    CAttributeMap& parent = *all[random() % all.size()];
    CAttributeMap& node = parent.Add(kNames[random() % 3]);
    if (random() % 4 != 0) {
      node.SetValue(CLumAnything(kTexts[random() % 5]));
      node.SetFlags(random() % 5 == 0 ? CAttributeRec::FLAG_KEEP_VALUE : 0U);
    }
    all.push_back(&node);
  }
  return root;
}

bool OnlyPlaceholders(const CAttributeMap& node) {
  for (int pos = 0; pos < node.Count(); ++pos) {
    if (node[pos].Value().Type() != CLumType::TYPE_UNDEFINED || !OnlyPlaceholders(node[pos])) {
      return false;
    }
  }
  return true;
}

// What Compare reports as added must be found, one entry for each node with a value; and nothing is
// found where Compare finds nothing.
TEST(TreeDifferences, AgreeWithCompareOnRandomTrees) {
  std::mt19937 random(1);
  int different = 0;
  for (int round = 0; round < 3000; ++round) {
    const CAttributeMap a = RandomTree(random, static_cast<int>(random() % 6));
    const CAttributeMap b =
        random() % 2 == 0 ? RandomTree(random, static_cast<int>(random() % 6)) : a;
    CAttributeMap changed;
    CAttributeMap removed;
    const bool isChanged = a.Compare(b, changed, 3);
    const bool isRemoved = b.Compare(a, removed, 2);
    const bool found = !Find(a, b, false).empty();
    different += found ? 1 : 0;
    if (!isChanged && !isRemoved) {
      EXPECT_FALSE(found) << round;
    } else if (!OnlyPlaceholders(changed) || !OnlyPlaceholders(removed)) {
      EXPECT_TRUE(found) << round;
    }
  }
  EXPECT_GT(different, 500);
}

}  // namespace
}  // namespace lum::tool
