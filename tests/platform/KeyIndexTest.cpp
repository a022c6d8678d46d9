// The index of keys, beside the standard library's map.
#include "platform/portable/KeyIndex.h"

#include <gtest/gtest.h>

#include <cwchar>
#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace {

using lum::detail::CKeyHash;
using lum::detail::CKeyIndex;
using lum::detail::CPoolIndex;
using lum::detail::HashKey;
using lum::detail::kNoIndex;

/// An index of numbers as keys, whose objects are given by the test. Few hashes make many keys
/// stand in each other's way, at the end of the table too.
struct CNumberIndex {
  explicit CNumberIndex(CKeyHash hashes) : hashCount(hashes) {}

  /// Hashes right below and above zero, so that those next to the table's end come first.
  CKeyHash HashOf(int key) const { return static_cast<CKeyHash>(key) % hashCount - hashCount / 2; }

  /// What the index asks for when keys crowd.
  auto TextOf(int key) const {
    return [this, key] {
      ++texts;
      return std::to_string(key);
    };
  }
  CPoolIndex Find(int key) const {
    const auto hasKey = [&](CPoolIndex object) {
      ++comparisons;
      return keys[object] == key;
    };
    return index.Find(HashOf(key), hasKey, TextOf(key));
  }
  void Add(int key) {
    index.Add(HashOf(key), static_cast<CPoolIndex>(keys.size()), TextOf(key));
    keys.push_back(key);
  }
  void Replace(int key) {
    index.Replace(HashOf(key), Find(key), static_cast<CPoolIndex>(keys.size()), TextOf(key));
    keys.push_back(key);
  }
  void Remove(int key) { index.Remove(HashOf(key), Find(key), TextOf(key)); }
  void Rename(int key, int newKey) {
    const CPoolIndex object = Find(key);
    index.Rename(HashOf(key), HashOf(newKey), object, TextOf(key), TextOf(newKey));
    keys[object] = newKey;
  }

  CKeyHash hashCount;
  CKeyIndex index;
  std::vector<int> keys;
  mutable std::size_t texts = 0;
  mutable std::size_t comparisons = 0;
};

constexpr int kKeys = 64;
constexpr int kLongestRun = static_cast<int>(CKeyIndex::kLongestRun);

void ExpectSame(const CNumberIndex& numbers, const std::map<int, CPoolIndex>& expected,
                int keys = kKeys) {
  for (int key = 0; key < keys; ++key) {
    const auto found = expected.find(key);
    ASSERT_EQ(numbers.Find(key), found == expected.end() ? kNoIndex : found->second) << key;
  }
}

TEST(KeyIndex, EmptyFindsNothing) { EXPECT_EQ(CNumberIndex(1).Find(0), kNoIndex); }

/// Changes an index of so many keys beside a map that says what it must find.
void ChangeAtRandom(CKeyHash hashes, int keys, int steps, int checkEvery) {
  std::mt19937 random(hashes);
  CNumberIndex numbers(hashes);
  std::map<int, CPoolIndex> expected;
  for (int step = 0; step < steps; ++step) {
    const int key = static_cast<int>(random() % static_cast<unsigned int>(keys));
    const int other = static_cast<int>(random() % static_cast<unsigned int>(keys));
    const auto next = static_cast<CPoolIndex>(numbers.keys.size());
    if (!expected.contains(key)) {
      numbers.Add(key);
      expected[key] = next;
    } else if (random() % 4 == 0) {
      numbers.Replace(key);
      expected[key] = next;
    } else if (random() % 4 == 0 && !expected.contains(other)) {
      numbers.Rename(key, other);
      expected[other] = expected.at(key);
      expected.erase(key);
    } else {
      numbers.Remove(key);
      expected.erase(key);
    }
    if (step % checkEvery == 0) {
      ASSERT_NO_FATAL_FAILURE(ExpectSame(numbers, expected, keys))
          << hashes << " hashes, step " << step;
    }
  }
}

TEST(KeyIndex, FindsWhatWasAddedReplacedRenamedAndRemoved) {
  for (const CKeyHash hashes : {1U, 2U, 5U, 16U, 64U}) {
    ASSERT_NO_FATAL_FAILURE(ChangeAtRandom(hashes, kKeys, 3000, 1));
  }
}

TEST(KeyIndex, FindsWhatWasAddedReplacedRenamedAndRemovedWhereKeysCrowd) {
  for (const CKeyHash hashes : {1U, 2U, 5U, 100U, 700U}) {
    ASSERT_NO_FATAL_FAILURE(ChangeAtRandom(hashes, 4 * kLongestRun, 20'000, 500));
  }
}

TEST(KeyIndex, KeysCrowdWhenARunOfThemIsFull) {
  CNumberIndex numbers(1);
  for (int key = 0; key < kLongestRun; ++key) {
    numbers.Add(key);
  }
  EXPECT_EQ(numbers.Find(kLongestRun - 1), static_cast<CPoolIndex>(kLongestRun - 1));
  EXPECT_EQ(numbers.Find(kLongestRun), kNoIndex);
  EXPECT_EQ(numbers.texts, 0U);
  numbers.Add(kLongestRun);
  EXPECT_EQ(numbers.texts, 1U);
  EXPECT_EQ(numbers.Find(kLongestRun), static_cast<CPoolIndex>(kLongestRun));
  EXPECT_EQ(numbers.Find(kLongestRun + 1), kNoIndex);
}

TEST(KeyIndex, EqualHashesCostNoMoreComparisonsThanARunHas) {
  CNumberIndex numbers(1);
  for (int key = 0; key < 20 * kLongestRun; ++key) {
    numbers.Add(key);
  }
  for (int key = 0; key < 21 * kLongestRun; ++key) {
    numbers.comparisons = 0;
    const bool isThere = key < 20 * kLongestRun;
    ASSERT_EQ(numbers.Find(key), isThere ? static_cast<CPoolIndex>(key) : kNoIndex);
    ASSERT_LE(numbers.comparisons, CKeyIndex::kLongestRun);
  }
}

TEST(KeyIndex, FindsWhatStandsInReservedRoomAndBeyond) {
  for (const std::size_t room : {0U, 1U, 7U, 40U, 1000U}) {
    CNumberIndex numbers(64);
    numbers.Add(0);
    numbers.index.Reserve(room);
    std::map<int, CPoolIndex> expected{{0, 0}};
    for (int key = 1; key < kKeys; ++key) {
      expected[key] = static_cast<CPoolIndex>(key);
      numbers.Add(key);
      ExpectSame(numbers, expected);
    }
  }
}

TEST(KeyIndex, CopiesAreIndependent) {
  CNumberIndex numbers(8);
  for (int key = 0; key < 20; ++key) {
    numbers.Add(key);
  }
  const CNumberIndex copy = numbers;
  numbers.Remove(3);
  EXPECT_EQ(numbers.Find(3), kNoIndex);
  EXPECT_EQ(copy.Find(3), 3U);
}

TEST(KeyHash, TellsNearlyAllTextsApart) {
  std::set<CKeyHash> hashes;
  std::size_t texts = 0;
  const auto add = [&](const CString& text) {
    hashes.insert(HashKey(text));
    ++texts;
  };
  add(L"");
  for (wchar_t first = L'!'; first <= L'~'; ++first) {
    add(CString(first));
    for (wchar_t second = L'!'; second <= L'~'; ++second) {
      add(CString(first) + second);
      add(CString(L"Value.") + first + second);
      add(CString(first) + L"." + second + L"Value");
    }
  }
  for (int number = 0; number < 20000; ++number) {
    CString text;
    text.Format(L"Sensor%d", number);
    add(text);
    text.Format(L"Sensor(%d)", number);
    add(text);
  }
  // 66,603 texts among 2^32 hashes: less than one pair of equal ones is to be expected.
  EXPECT_GE(hashes.size(), texts - 10);
}

TEST(KeyHash, NumberedTextsDoNotCrowd) {
  for (const wchar_t* form : {L"Name%d", L"Sensor%d", L"Item%04d", L"Sensor%d.Offset", L"%x"}) {
    CKeyIndex index;
    int crowded = 0;
    for (int number = 0; number < 100'000; ++number) {
      CString text;
      text.Format(form, number);
      index.Add(HashKey(text), static_cast<CPoolIndex>(number), [&crowded] {
        ++crowded;
        return std::string();
      });
    }
    EXPECT_EQ(crowded, 0) << std::wcslen(form) << " characters in the form";
  }
}

TEST(KeyHash, NumberedTextsAreSpread) {
  for (const wchar_t* form : {L"Sensor%d", L"Sensor(%d)", L"Group%d.Part.Offset"}) {
    std::set<CKeyHash> homes;
    for (int number = 0; number < 1000; ++number) {
      CString text;
      text.Format(form, number);
      homes.insert(HashKey(text) % 2048);
    }
    // Chance alone leaves about 791 of them.
    EXPECT_GT(homes.size(), 740U) << std::wcslen(form) << " characters in the form";
  }
}

}  // namespace
