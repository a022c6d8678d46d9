// The walks over children, below, at and above the number of children that are scanned.
#include "attributes/SiblingWalk.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using lum::detail::CPairWalk;
using lum::detail::CSiblingWalk;
using lum::detail::kScannedChildren;

const wchar_t* const kNames[] = {L"", L"A", L"B", L"C"};

CAttributeMap RandomChildren(std::mt19937& random, std::size_t count) {
  CAttributeMap map;
  for (std::size_t i = 0; i < count; ++i) {
    map.Add(kNames[random() % 4]);
  }
  return map;
}

TEST(SiblingWalk, CountsOccurrencesAsTheTree) {
  std::mt19937 random(2);
  for (std::size_t count = 0; count < 3 * kScannedChildren; ++count) {
    const CAttributeMap map = RandomChildren(random, count);
    CSiblingWalk walk(map);
    for (int pos = 0; pos < map.Count(); ++pos) {
      EXPECT_EQ(walk.Next(), &map[pos]);
      EXPECT_EQ(walk.Occurrence(), map.RetrieveIndex(pos));
    }
    EXPECT_EQ(walk.Next(), nullptr);
    EXPECT_EQ(walk.Next(), nullptr);
  }
}

/// Asks for the partner of some children only, as a merge does.
void ExpectPartnersAsTheTree(const CAttributeMap& walked, const CAttributeMap& other,
                             std::mt19937& random) {
  CPairWalk walk(walked, other);
  for (int pos = 0; pos < walked.Count(); ++pos) {
    ASSERT_EQ(walk.Next(), &walked[pos]);
    if (random() % 4 != 0) {
      const int occurrence = walked.RetrieveIndex(pos);
      ASSERT_EQ(walk.Partner(), other.GetAttrMap(walked[pos].Mnemonic(), occurrence));
      ASSERT_EQ(walk.Occurrence(), occurrence);
    }
  }
  EXPECT_EQ(walk.Next(), nullptr);
  EXPECT_EQ(walk.Next(), nullptr);
}

TEST(PairWalk, FindsThePartnersInAnyOtherOrder) {
  std::mt19937 random(3);
  for (int run = 0; run < 200; ++run) {
    const CAttributeMap walked = RandomChildren(random, random() % 50);
    const CAttributeMap other = RandomChildren(random, random() % 50);
    ASSERT_NO_FATAL_FAILURE(ExpectPartnersAsTheTree(walked, other, random)) << run;
  }
}

TEST(PairWalk, FindsThePartnersBehindADifferenceAnywhere) {
  std::mt19937 random(4);
  for (const int count : {1, 5, 16, 17, 40}) {
    const CAttributeMap walked = RandomChildren(random, static_cast<std::size_t>(count));
    ASSERT_NO_FATAL_FAILURE(ExpectPartnersAsTheTree(walked, walked, random));
    for (int pos = 0; pos < count; ++pos) {
      CAttributeMap shorter = walked;
      shorter.Remove(pos);
      ASSERT_NO_FATAL_FAILURE(ExpectPartnersAsTheTree(walked, shorter, random)) << pos;
      ASSERT_NO_FATAL_FAILURE(ExpectPartnersAsTheTree(shorter, walked, random)) << pos;
      CAttributeMap renamed = walked;
      renamed.FindCreateIndex(pos).SetMnemonic(L"D");
      ASSERT_NO_FATAL_FAILURE(ExpectPartnersAsTheTree(walked, renamed, random)) << pos;
    }
  }
}

TEST(PairWalk, FindsPartnersThatAreAppendedMeanwhile) {
  for (const int common : {0, 1, 7, 15, 16, 17, 30}) {
    CAttributeMap other;
    CAttributeMap walked;
    for (int i = 0; i < common; ++i) {
      walked.Add(L"A");
      other.Add(L"A");
    }
    for (int i = 0; i < 10; ++i) {
      walked.Add(L"B");
    }
    CPairWalk walk(walked, other);
    for (int i = 0; i < common; ++i) {
      walk.Next();
      EXPECT_EQ(walk.Partner(), &other[i]);
    }
    for (int i = 0; i < 10; ++i) {
      walk.Next();
      EXPECT_EQ(walk.Partner(), nullptr);
      const CAttributeMap* added = &other.Add(L"B");
      EXPECT_EQ(walk.Partner(), added);
      EXPECT_EQ(walk.Occurrence(), i);
    }
  }
}

}  // namespace
