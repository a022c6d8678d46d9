// Files whose keys are chosen to be slow: the time to load them stays in proportion to their size.
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <utility>
#include <vector>

#include "attributes/AttributeMap.h"
#include "tests/CollidingNames.h"

namespace {

using lum::test::CCollidingNames;
using lum::test::Growth;

/// With eight times the input: four times what linear work takes, a third of what quadratic does.
constexpr std::size_t kTimes = 8;
constexpr double kMostGrowth = 24.0;

FileObject FileOf(const std::vector<CString>& keys, std::size_t count) {
  FileObject file;
  file.SetItem(L"S", L"AttrVersion", L"0,2", true);
  for (std::size_t i = 0; i < count; ++i) {
    CString value;
    value.Format(L"0,%u", static_cast<unsigned int>(i));
    file.SetItem(L"S", keys[i], value, true);
  }
  return file;
}

CString TextOf(const CLumType& value) {
  CString text;
  value.GetValueStr(text);
  return text;
}

TEST(HostileKeys, CollideAndDiffer) {
  const std::vector<CString> names = CCollidingNames::Make(3000);
  EXPECT_EQ(std::set<CString>(names.begin(), names.end()).size(), names.size());
  for (const CString& name : names) {
    ASSERT_EQ(lum::detail::HashText(lum::detail::View(name)), CCollidingNames::kHash);
  }
}

TEST(HostileKeys, EveryCollidingNameIsFoundWithAllItsOccurrences) {
  const std::vector<CString> names = CCollidingNames::Make(3000);
  CAttributeMap tree;
  for (int occurrence = 0; occurrence < 2; ++occurrence) {
    for (const CString& name : names) {
      tree.FindCreate(name, occurrence);
    }
  }
  const int count = static_cast<int>(names.size());
  ASSERT_EQ(tree.Count(), 2 * count);
  for (int i = 0; i < count; ++i) {
    const CString& name = names[static_cast<std::size_t>(i)];
    ASSERT_EQ(tree.Count(name), 2);
    ASSERT_EQ(tree.FindAttribute(name, 0), i);
    ASSERT_EQ(tree.FindAttribute(name, 1), count + i);
    ASSERT_EQ(tree.FindAttribute(name, 2), -1);
    ASSERT_EQ(tree.RetrieveIndex(count + i), 1);
  }
  EXPECT_EQ(tree.FindAttribute(L"Absent"), -1);
}

TEST(HostileKeys, CollidingNamesAreRenamedAndRemoved) {
  const std::vector<CString> names = CCollidingNames::Make(3000);
  CAttributeMap tree;
  for (const CString& name : names) {
    tree.FindCreate(name);
  }
  EXPECT_EQ(tree.FindAttribute(names.back(), 1), -1);
  tree.GetAttrMap(names.back())->SetMnemonic(L"Renamed");
  tree.GetAttrMap(names.front())->SetMnemonic(names.back());
  EXPECT_EQ(tree.FindAttribute(L"Renamed"), 2999);
  EXPECT_EQ(tree.FindAttribute(names.back()), 0);
  EXPECT_FALSE(tree.Has(names.front()));
  EXPECT_TRUE(tree.Remove(names[1]));
  EXPECT_EQ(tree.FindAttribute(names[2]), 1);
  EXPECT_FALSE(tree.Has(names[1]));
}

// ---- Where the index has no more room within a run of names that collide

constexpr std::size_t kRun = 1024;

CString NameAt(std::uint32_t slots, std::uint32_t home) {
  const auto hash = [](const CString& name) {
    return lum::detail::HashText(lum::detail::View(name));
  };
  return lum::test::NameAt(hash, slots, home);
}

/// Children of these names that have an index.
CAttributeMap IndexedTree(const std::vector<CString>& names) {
  CAttributeMap tree;
  for (const CString& name : names) {
    tree.Add(name);
  }
  for (int search = 0; search < 100; ++search) {
    tree.Find(L"Absent");
  }
  return tree;
}

void ExpectEachAtItsPlace(const CAttributeMap& tree, const std::vector<CString>& names) {
  for (std::size_t i = 0; i < names.size(); ++i) {
    ASSERT_EQ(tree.FindAttribute(names[i]), static_cast<int>(i)) << i;
  }
}

TEST(HostileKeys, AChildIsFoundByANewNameThatFitsNoRun) {
  std::vector<CString> names = CCollidingNames::Make(kRun + 1);
  const CString newName = std::exchange(names.back(), L"Plain");
  CAttributeMap tree = IndexedTree(names);
  tree.GetAttrMap(L"Plain")->SetMnemonic(newName);
  EXPECT_FALSE(tree.Has(L"Plain"));
  names.back() = newName;
  ExpectEachAtItsPlace(tree, names);
}

TEST(HostileKeys, NamesBehindALongRunAreFoundAfterTheOneBeforeItHasChanged) {
  constexpr std::uint32_t kSlots = 2048;
  std::vector<CString> names = CCollidingNames::Make(kRun);
  names.push_back(NameAt(kSlots, CCollidingNames::kHash - 1));
  // Its home is in the run, so it stands behind it.
  names.push_back(NameAt(kSlots, CCollidingNames::kHash + kRun / 2));
  CAttributeMap tree = IndexedTree(names);
  tree.GetAttrMap(names[kRun])->SetMnemonic(L"Renamed");
  EXPECT_FALSE(tree.Has(names[kRun]));
  names[kRun] = L"Renamed";
  ExpectEachAtItsPlace(tree, names);
}

TEST(HostileKeys, CollidingNamesAreLoadedInLinearTime) {
  constexpr std::size_t kFew = 2000;
  const std::vector<CString> names = CCollidingNames::Make(kTimes * kFew);
  const FileObject few = FileOf(names, kFew);
  const FileObject many = FileOf(names, kTimes * kFew);
  CAttributeMap tree;
  const auto load = [&tree](const FileObject& file) {
    EXPECT_TRUE(LoadAttributes(tree, file, L"S", false));
  };
  EXPECT_LT(Growth([&] { load(few); }, [&] { load(many); }), kMostGrowth);
  ASSERT_EQ(tree.Count(), static_cast<int>(names.size()) + 1);
  EXPECT_EQ(TextOf(tree.FindValue(names.front())), L"0");
  EXPECT_EQ(TextOf(tree.FindValue(names.back())), L"15999");
}

/// An item at the end of so many groups, and one that leaves them halfway.
FileObject DeepThenHalfway(std::size_t depth) {
  std::wstring deep;
  for (std::size_t i = 0; i < depth; ++i) {
    deep += L"A.";
  }
  // As long as the other one: a shorter path shares no group further down.
  const std::wstring halfway = deep.substr(0, depth) + std::wstring(depth + 1, L'B');
  FileObject file;
  file.SetItem(L"S", (deep + L"Leaf").c_str(), L"0,1", true);
  file.SetItem(L"S", halfway.c_str(), L"0,2", true);
  return file;
}

TEST(HostileKeys, AnItemThatLeavesManyGroupsIsPlacedInLinearTime) {
  constexpr std::size_t kShallow = 20'000;
  const FileObject shallow = DeepThenHalfway(kShallow);
  const FileObject deep = DeepThenHalfway(kTimes * kShallow);
  CAttributeMap tree;
  const auto load = [&tree](const FileObject& file) {
    EXPECT_TRUE(LoadAttributesWithKey(tree, file, L"S", CString(), false));
  };
  EXPECT_LT(Growth([&] { load(shallow); }, [&] { load(deep); }), kMostGrowth);
  const CAttributeMap* node = &tree;
  for (std::size_t level = 0; level < kTimes * kShallow / 2; ++level) {
    node = &(*node)[0];
  }
  ASSERT_EQ(node->Count(), 2);
  EXPECT_EQ((*node)[1].Mnemonic().GetLength(), static_cast<int>(kTimes * kShallow) + 1);
  EXPECT_EQ(TextOf((*node)[1].Value()), L"2");
}

}  // namespace
