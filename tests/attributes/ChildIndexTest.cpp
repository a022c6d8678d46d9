// The look-up of children and the walks over them, below, at and above the number of children that
// are scanned.
#include "attributes/ChildIndex.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace {

using lum::detail::CChildIndex;
using lum::detail::CPairWalk;
using lum::detail::CSiblingWalk;
using lum::detail::FindCreateChild;
using lum::detail::kScannedChildren;
using lum::detail::View;

const wchar_t* const kNames[] = {L"", L"A", L"B", L"C"};

CAttributeMap RandomChildren(std::mt19937& random, std::size_t count) {
  CAttributeMap map;
  for (std::size_t i = 0; i < count; ++i) {
    map.Add(kNames[random() % 4]);
  }
  return map;
}

void ExpectSameAnswers(const CAttributeMap& map, CChildIndex& index) {
  for (int pos = 0; pos < map.Count(); ++pos) {
    EXPECT_EQ(index.OccurrenceAt(static_cast<std::size_t>(pos)), map.RetrieveIndex(pos));
  }
  for (const wchar_t* name : {L"", L"A", L"B", L"C", L"none"}) {
    EXPECT_EQ(index.Count(name), map.Count(name));
    for (int occurrence = -2; occurrence <= map.Count(name) + 1; ++occurrence) {
      EXPECT_EQ(index.Find(name, occurrence), map.GetAttrMap(name, occurrence));
    }
  }
}

TEST(ChildIndex, AnswersAsTheTreeWhileChildrenAreAppended) {
  std::mt19937 random(1);
  CAttributeMap map;
  CChildIndex index(map);
  for (std::size_t count = 0; count < 3 * kScannedChildren; ++count) {
    ExpectSameAnswers(map, index);
    map.Add(kNames[random() % 4]);
  }
  ExpectSameAnswers(map, index);
}

TEST(ChildIndex, FindsEveryOneOfManyChildren) {
  constexpr int kChildNames = 500;
  CAttributeMap map;
  CChildIndex index(map);
  std::vector<const CAttributeMap*> children;
  for (int i = 0; i < 3 * kChildNames; ++i) {
    CString name;
    name.Format(L"Sensor%d", i % kChildNames);
    children.push_back(&map.Add(name));
    ASSERT_EQ(index.Find(View(name), i / kChildNames), children.back());
  }
  for (int i = 0; i < 3 * kChildNames; ++i) {
    const std::wstring_view name = View(children[static_cast<std::size_t>(i)]->Mnemonic());
    ASSERT_EQ(index.Find(name, i / kChildNames), children[static_cast<std::size_t>(i)]);
    ASSERT_EQ(index.Find(name, 3), nullptr);
    ASSERT_EQ(index.Count(name), 3);
    ASSERT_EQ(index.OccurrenceAt(static_cast<std::size_t>(i)), i / kChildNames);
  }
}

TEST(ChildIndex, FindsEveryOneOfManyOccurrences) {
  CAttributeMap map;
  CChildIndex index(map);
  for (int i = 0; i < 1000; ++i) {
    const CAttributeMap* child = &map.Add(L"A");
    ASSERT_EQ(index.Count(L"A"), i + 1);
    ASSERT_EQ(index.Find(L"A", i), child);
  }
  for (int i = 0; i < 1000; ++i) {
    ASSERT_EQ(index.Find(L"A", i), &map[i]);
  }
}

TEST(ChildIndex, MissingOccurrencesAreCreated) {
  for (const int occurrence : {0, 1, 7, 8, 9, 30}) {
    CAttributeMap map;
    map.Add(L"B");
    CChildIndex index(map);
    CAttributeMap& child = FindCreateChild(map, index, L"A", occurrence);
    EXPECT_EQ(map.Count(), occurrence + 2);
    EXPECT_EQ(&child, map.GetAttrMap(L"A", occurrence));
    EXPECT_EQ(&FindCreateChild(map, index, L"A", occurrence), &child);
    EXPECT_EQ(map.Count(), occurrence + 2);
  }
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
    const CAttributeMap walked = RandomChildren(random, random() % 30);
    const CAttributeMap other = RandomChildren(random, random() % 30);
    ASSERT_NO_FATAL_FAILURE(ExpectPartnersAsTheTree(walked, other, random)) << run;
  }
}

TEST(PairWalk, FindsThePartnersBehindADifferenceAnywhere) {
  std::mt19937 random(4);
  for (const int count : {1, 5, 8, 9, 30}) {
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
  for (const int common : {0, 1, 7, 8, 9, 20}) {
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
