// Searching children through additions, removals and renames, with few of them and with many, which
// get an index.
#include "attributes/ChildList.h"

#include <gtest/gtest.h>

#include <random>
#include <thread>
#include <vector>

#include "attributes/NodeAccess.h"

namespace {

using lum::detail::kScannedChildren;
using lum::detail::View;

// What the map must answer, found by walking from the first child on.

int NaiveFind(const CAttributeMap& map, const CString& name, int occurrence) {
  for (int pos = 0; pos < map.Count(); ++pos) {
    if (map[pos].Mnemonic() == name && occurrence-- == 0) {
      return pos;
    }
  }
  return -1;
}

int NaiveCount(const CAttributeMap& map, const CString& name, int end) {
  int count = 0;
  for (int pos = 0; pos < end; ++pos) {
    count += map[pos].Mnemonic() == name ? 1 : 0;
  }
  return count;
}

CString Numbered(unsigned int number) {
  CString name;
  name.Format(L"Sensor%u", number);
  return name;
}

void ExpectRightAnswers(const CAttributeMap& map, unsigned int names) {
  for (unsigned int i = 0; i <= names; ++i) {
    const CString name = Numbered(i);
    const int count = NaiveCount(map, name, map.Count());
    ASSERT_EQ(map.Count(name), count);
    for (int occurrence = -1; occurrence <= count; ++occurrence) {
      ASSERT_EQ(map.FindAttribute(name, occurrence), NaiveFind(map, name, occurrence));
    }
  }
  for (int pos = 0; pos < map.Count(); ++pos) {
    ASSERT_EQ(map.RetrieveIndex(pos), NaiveCount(map, map[pos].Mnemonic(), pos));
  }
}

/// One change of a map whose children have some of so many names.
void ChangeAtRandom(CAttributeMap& map, unsigned int names, std::mt19937& random) {
  const CString name = Numbered(static_cast<unsigned int>(random() % names));
  const auto count = static_cast<unsigned int>(map.Count());
  const int pos = count == 0 ? 0 : static_cast<int>(random() % count);
  CAttributeRec& child = map.FindCreateIndex(pos);
  switch (random() % 9) {
    case 0:
      map.Remove(pos);
      break;
    case 1:
      map.Remove(name, 0);
      break;
    case 2:
      child.SetMnemonic(name);
      break;
    case 3:
      map.FindCreateIndex(pos).SetGroup(name);
      break;
    case 4:
      map.FindCreateIndex(pos) = CAttributeMap(name);
      break;
    case 5:
      child = CAttributeRec(name, CLumInt(1), 0);
      break;
    case 6:
      if (map.Has(name)) {
        map.Insert(0, name, CLumInt(2), 0);
      }
      break;
    default:
      map.FindCreate(name, static_cast<int>(random() % 3));
      break;
  }
}

TEST(ChildList, AnswersRightlyThroughEveryChange) {
  std::mt19937 random(1);
  for (const unsigned int names : {1U, 3U, 40U, 400U}) {
    CAttributeMap map;
    for (int change = 0; change < 300; ++change) {
      ChangeAtRandom(map, names, random);
      if (change % 3 == 0) {
        ASSERT_NO_FATAL_FAILURE(ExpectRightAnswers(map, names)) << names << ' ' << change;
      }
    }
    map.RemoveAll(Numbered(0));
    ASSERT_NO_FATAL_FAILURE(ExpectRightAnswers(map, names));
  }
}

TEST(ChildList, RenamesAreFoundAmongIndexedChildren) {
  CAttributeMap map;
  for (unsigned int i = 0; i < 300; ++i) {
    map.Add(Numbered(i));
  }
  ASSERT_NO_FATAL_FAILURE(ExpectRightAnswers(map, 300));
  for (unsigned int i = 0; i < 300; i += 7) {
    map.GetAttrMap(Numbered(i))->SetMnemonic(Numbered(1000 + i));
    EXPECT_FALSE(map.Has(Numbered(i)));
    EXPECT_EQ(map.FindAttribute(Numbered(1000 + i)), static_cast<int>(i));
  }
  // Names that others have already.
  map.FindCreateIndex(10).SetMnemonic(Numbered(11));
  map.FindCreateIndex(11).SetMnemonic(Numbered(10));
  EXPECT_EQ(map.FindAttribute(Numbered(11)), 10);
  EXPECT_EQ(map.FindAttribute(Numbered(10)), 11);
  ASSERT_NO_FATAL_FAILURE(ExpectRightAnswers(map, 300));
}

// Names whose hashes are equal, where characters have 32 bits.
TEST(ChildList, NamesOfTheSameHashAreToldApart) {
  CAttributeMap map;
  map.Add(L"Name37098");
  for (unsigned int i = 0; i < 40; ++i) {
    map.Add(Numbered(i));
  }
  ASSERT_NO_FATAL_FAILURE(ExpectRightAnswers(map, 40));
  EXPECT_EQ(map.FindAttribute(L"Name48867"), -1);
  map.Add(L"Name48867");
  EXPECT_EQ(map.FindAttribute(L"Name37098"), 0);
  EXPECT_EQ(map.FindAttribute(L"Name48867"), 41);
}

TEST(ChildList, RenamesOfNamesThatStandSeveralTimesAreFound) {
  CAttributeMap map;
  for (unsigned int i = 0; i < 60; ++i) {
    map.Add(i % 2 == 0 ? CString(L"Twin") : Numbered(i));
  }
  for (int search = 0; search < 20; ++search) {
    EXPECT_EQ(map.FindAttribute(L"Twin", 29), 58);
  }
  map.FindCreateIndex(0).SetMnemonic(L"Twin");
  EXPECT_EQ(map.FindAttribute(L"Twin", 29), 58);
  map.FindCreateIndex(0).SetMnemonic(L"First");
  EXPECT_EQ(map.FindAttribute(L"First"), 0);
  EXPECT_EQ(map.FindAttribute(L"Twin"), 2);
  EXPECT_EQ(map.FindAttribute(L"Twin", 29), -1);
}

TEST(ChildList, ARecordKeepsTheIndexRightWhenItIsRenamedThroughItsBase) {
  CAttributeMap map;
  for (unsigned int i = 0; i < 100; ++i) {
    map.AppendNew(Numbered(i), CLumInt(0));
  }
  ASSERT_NO_FATAL_FAILURE(ExpectRightAnswers(map, 100));
  CAttributeRec* added = map.AppendNew(L"New", CLumInt(1));
  added->SetMnemonic(L"Newer");
  EXPECT_EQ(map.FindAttribute(L"Newer"), 100);
  EXPECT_FALSE(map.Has(L"New"));
}

TEST(ChildList, ChildrenThatMoveToAnotherNodeAreFoundThere) {
  CAttributeMap map;
  for (unsigned int i = 0; i < 100; ++i) {
    map.Add(Numbered(i)).Add(L"Below", CLumInt(static_cast<int>(i)), 0);
  }
  ASSERT_NO_FATAL_FAILURE(ExpectRightAnswers(map, 100));
  CAttributeMap moved(std::move(map));
  ASSERT_NO_FATAL_FAILURE(ExpectRightAnswers(moved, 100));
  moved.GetAttrMap(Numbered(5))->SetMnemonic(L"Renamed");
  EXPECT_EQ(moved.FindAttribute(L"Renamed"), 5);
  EXPECT_EQ(map.Count(), 0);
  map.Add(L"Other").Add(L"Below");
  // A child takes over what another child has below it, and leaves its own.
  CAttributeMap& child = *moved.GetAttrMap(Numbered(6));
  child = std::move(*moved.GetAttrMap(Numbered(7)));
  EXPECT_EQ(moved.Count(Numbered(7)), 2);
  ASSERT_NO_FATAL_FAILURE(ExpectRightAnswers(moved, 100));
  child.GetAttrMap(L"Below")->SetMnemonic(L"Deep");
  EXPECT_TRUE(child.Has(L"Deep"));
}

TEST(ChildList, ThreadsMaySearchOneTreeAtOnce) {
  CAttributeMap map;
  for (unsigned int i = 0; i < 1000; ++i) {
    map.Add(Numbered(i));
  }
  std::vector<int> wrong(4);
  std::vector<std::thread> threads;
  for (int& count : wrong) {
    threads.emplace_back([&map, &count] {
      for (unsigned int i = 0; i < 1000; ++i) {
        count += map.FindAttribute(Numbered(i)) != static_cast<int>(i) ? 1 : 0;
      }
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(wrong, std::vector<int>(4));
}

TEST(ChildList, MissingOccurrencesAreCreated) {
  for (const int occurrence : {0, 1, 15, 16, 17, 50}) {
    CAttributeMap map;
    map.Add(L"B");
    CAttributeMap& child = map.FindCreate(L"A", occurrence);
    EXPECT_EQ(map.Count(), occurrence + 2);
    EXPECT_EQ(&child, map.GetAttrMap(L"A", occurrence));
    EXPECT_EQ(&map.FindCreate(L"A", occurrence), &child);
    EXPECT_EQ(map.Count(), occurrence + 2);
  }
}

}  // namespace
