// The look-up of children and the sibling walk, below, at and above the number of children that are
// scanned.
#include "attributes/ChildIndex.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using lum::detail::CChildIndex;
using lum::detail::CSiblingWalk;
using lum::detail::FindCreateChild;
using lum::detail::kScannedChildren;
using lum::detail::View;

void ExpectSameAnswers(const CAttributeMap& map, CChildIndex& index) {
  for (const wchar_t* name : {L"", L"A", L"B", L"C", L"none"}) {
    EXPECT_EQ(index.Count(name), map.Count(name));
    for (int occurrence = -2; occurrence <= map.Count(name) + 1; ++occurrence) {
      EXPECT_EQ(index.Find(name, occurrence), map.GetAttrMap(name, occurrence));
    }
  }
}

TEST(ChildIndex, AnswersAsTheTreeWhileChildrenAreAppended) {
  std::mt19937 random(1);
  const wchar_t* const names[] = {L"", L"A", L"B", L"C"};
  CAttributeMap map;
  CChildIndex index(map);
  for (std::size_t count = 0; count < 3 * kScannedChildren; ++count) {
    ExpectSameAnswers(map, index);
    map.Add(names[random() % 4]);
  }
  ExpectSameAnswers(map, index);
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
  const wchar_t* const names[] = {L"", L"A", L"B", L"C"};
  for (std::size_t count = 0; count < 3 * kScannedChildren; ++count) {
    CAttributeMap map;
    for (std::size_t i = 0; i < count; ++i) {
      map.Add(names[random() % 4]);
    }
    CSiblingWalk walk(map);
    for (int pos = 0; pos < map.Count(); ++pos) {
      EXPECT_EQ(walk.Next(), &map[pos]);
      EXPECT_EQ(walk.Occurrence(), map.RetrieveIndex(pos));
    }
    EXPECT_EQ(walk.Next(), nullptr);
    EXPECT_EQ(walk.Next(), nullptr);
  }
}

}  // namespace
