// Trees that are very deep or have very many siblings: every operation on whole trees gets through
// them without exhausting the stack and with the right answer.
#include <gtest/gtest.h>

#include <string>

#include "attributes/AttributeMap.h"
#include "tests/DeepTree.h"
#include "tests/TemporaryFolder.h"
#include "tests/attributes/TreeTesting.h"

namespace {

constexpr int kDepth = lum::test::kDeepestLevel;
constexpr int kSiblings = 100'000;

/// Groups "G" in each other, with a leaf in the last one.
CAttributeMap Chain(const wchar_t* text) {
  CAttributeMap root;
  CAttributeMap* node = &root;
  for (int level = 0; level < kDepth; ++level) {
    node = &node->Add(L"G");
  }
  node->Add(L"Leaf", CLumAnything(text), 1);
  return root;
}

/// The only node at the end of a chain of only children, and how deep it stands.
const CAttributeMap& End(const CAttributeMap& root, int& depth) {
  const CAttributeMap* node = &root;
  for (depth = 0; node->Count() == 1; ++depth) {
    node = &(*node)[0];
  }
  return *node;
}

void ExpectChain(const CAttributeMap& root, const char* leaf) {
  int depth = 0;
  EXPECT_EQ(DescribeNode(End(root, depth)), leaf);
  EXPECT_EQ(depth, kDepth + 1);
}

TEST(DeepTree, IsCopiedAssignedMovedAndDestroyed) {
  CAttributeMap root = Chain(L"1");
  CAttributeMap copy(root);
  ExpectChain(copy, "Leaf:999:1:1");
  CAttributeMap assigned = Chain(L"2");
  assigned = copy;
  ExpectChain(assigned, "Leaf:999:1:1");
  const CAttributeMap moved(std::move(copy));
  ExpectChain(moved, "Leaf:999:1:1");
  assigned = *assigned.GetAttrMap(L"G");
  int depth = 0;
  EXPECT_EQ(DescribeNode(End(assigned, depth)), "Leaf:999:1:1");
  EXPECT_EQ(depth, kDepth);
  root.Remove(0);
  EXPECT_EQ(root.Count(), 0);
}

TEST(DeepTree, IsCompared) {
  const CAttributeMap root = Chain(L"1");
  CAttributeMap other = Chain(L"2");
  CAttributeMap diff;
  EXPECT_FALSE(root.Compare(root, diff, 7));
  EXPECT_TRUE(root.Compare(other, diff, 7));
  ExpectChain(diff, "Leaf:999:2:1");
  CAttributeMap* last = &other;
  while (last->Find(L"G").Count() != 0) {
    last = last->GetAttrMap(L"G");
  }
  last->RemoveAll();
  EXPECT_TRUE(root.Compare(other, diff, 4));
  ExpectChain(diff, "Leaf:999:1:1");
  EXPECT_TRUE(other.Compare(root, diff, 2));
  ExpectChain(diff, "Leaf:999:1:1");
}

TEST(DeepTree, IsMerged) {
  CAttributeMap root = Chain(L"1");
  root.Overload(Chain(L"2"), true, true, false, false);
  ExpectChain(root, "Leaf:999:2:1");
  CAttributeMap empty;
  empty.Overload(root, true, true, false, false);
  ExpectChain(empty, "Leaf:999:2:1");
}

TEST(DeepTree, IsSearchedForEditableAttributes) {
  CAttributeMap root;
  CAttributeMap* node = &root;
  for (int level = 0; level < kDepth; ++level) {
    node = &node->Add(L"G", CLumUndefined(), 0x0011);
  }
  EXPECT_FALSE(root.HasEditableAttributes());
  node->Add(L"Leaf", CLumUndefined(), 0x0001);
  EXPECT_TRUE(root.HasEditableAttributes());
}

TEST(DeepTree, IsSavedAndLoaded) {
  CAttributeMap root = Chain(L"1");
  root.SetGroup(L"Root");
  FileObject file;
  ASSERT_TRUE(SaveAttributesWithKey(root, file, L"S", L"p."));
  EXPECT_EQ(file.ItemCount(L"S"), 1);
  CAttributeMap loaded;
  ASSERT_TRUE(LoadAttributesWithKey(loaded, file, L"S", L"p.", false));
  ExpectChain(loaded, "Leaf:999:1:1");
  ASSERT_TRUE(SaveAttributes(root, file, L"T"));
  ASSERT_TRUE(LoadAttributes(loaded, file, L"T", true));
  ExpectChain(loaded, "Leaf:999:1:1");
  ASSERT_TRUE(root.SaveToFObj(&file, L"U"));
  ASSERT_TRUE(root.LoadFromFObj(&file, L"U", true, true, true));
  ExpectChain(root, "Leaf:999:1:1");
  EXPECT_TRUE(RemoveAttributes(file, L"T"));
  EXPECT_EQ(file.ItemCount(L"T"), 0);
}

TEST(DeepTree, IsLoadedFromTheLinesOfAFile) {
  std::string key;
  for (int level = 0; level < kDepth; ++level) {
    key += "G.";
  }
  const CTemporaryFolder folder;
  WriteBytes(folder.File("deep.ini"), "[S]\n@tr" + key + "Leaf=1,x\n");
  const CString path = PathText(folder.File("deep.ini"));
  CAttributeMap loaded;
  ASSERT_TRUE(LoadAttributesOrdered(loaded, path, L"S", false));
  ExpectChain(loaded, "Leaf:999:x:1");
}

/// Whether all siblings have one name, or each its own.
class WideTree : public testing::TestWithParam<bool> {
 protected:
  static CString NameOf(int number) {
    CString name(L"N");
    if (!GetParam()) {
      name.AppendFormat(L"%d", number);
    }
    return name;
  }

  static CAttributeMap Wide() {
    CAttributeMap root;
    for (int number = 0; number < kSiblings; ++number) {
      root.Add(NameOf(number), CLumAnything(NumberText(number)), 1).Add(L"Below");
    }
    return root;
  }

  static CString NumberText(int number) {
    CString text;
    text.Format(L"%d", number);
    return text;
  }

  /// That each child holds its own place.
  static void ExpectWide(const CAttributeMap& map) {
    ASSERT_EQ(map.Count(), kSiblings);
    int wrong = 0;
    for (int pos = 0; pos < kSiblings; ++pos) {
      int value = -1;
      map[pos].Value().GetInt(value);
      wrong += value == pos && map[pos].Mnemonic() == NameOf(pos) && map[pos].Count() == 1 ? 0 : 1;
    }
    EXPECT_EQ(wrong, 0);
  }
};

TEST_P(WideTree, IsCopiedComparedAndMerged) {
  CAttributeMap root = Wide();
  CAttributeMap copy(root);
  ExpectWide(copy);
  CAttributeMap diff;
  EXPECT_FALSE(root.Compare(copy, diff, 7));
  copy[kSiblings - 1].Count();
  copy.FindCreateIndex(kSiblings - 1).Value().SetInt(-5);
  EXPECT_TRUE(root.Compare(copy, diff, 7));
  EXPECT_EQ(diff.Count(), GetParam() ? kSiblings : 1);
  EXPECT_EQ(TextOf(diff[diff.Count() - 1].Value()), "-5");
  copy.Overload(root, true, true, false, false);
  ExpectWide(copy);
  CAttributeMap merged;
  merged.Overload(root, true, true, false, false);
  ExpectWide(merged);
  EXPECT_TRUE(root.Compare(CAttributeMap(), diff, 4));
  ExpectWide(diff);
  EXPECT_TRUE(CAttributeMap().Compare(root, diff, 2));
  ExpectWide(diff);
}

TEST_P(WideTree, IsSavedAndLoaded) {
  const CAttributeMap root = Wide();
  FileObject file;
  ASSERT_TRUE(SaveAttributes(root, file, L"S"));
  EXPECT_EQ(file.ItemCount(L"S"), 2 * kSiblings);
  CAttributeMap loaded;
  ASSERT_TRUE(LoadAttributes(loaded, file, L"S", false));
  ExpectWide(loaded);
  ASSERT_TRUE(LoadAttributes(loaded, file, L"S", true));
  ExpectWide(loaded);
  const CTemporaryFolder folder;
  ASSERT_TRUE(file.Save(PathText(folder.File("wide.ini"))));
  CAttributeMap ordered;
  ASSERT_TRUE(LoadAttributesOrdered(ordered, PathText(folder.File("wide.ini")), L"S", false));
  ExpectWide(ordered);
}

INSTANTIATE_TEST_SUITE_P(Names, WideTree, testing::Bool(),
                         [](const auto& param) { return param.param ? "OneName" : "ManyNames"; });

}  // namespace
