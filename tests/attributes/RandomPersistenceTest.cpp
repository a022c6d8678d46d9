// Saving and loading of random trees beside the naive tree, and round trips through files.
#include <gtest/gtest.h>

#include <utility>

#include "tests/TemporaryFolder.h"
#include "tests/attributes/RandomTrees.h"
#include "tests/attributes/TreeTesting.h"

namespace {

/// Adds what the random trees of the other tests avoid: names that mean something in a key, texts
/// that items cannot carry, nodes that are not stored.
void AddOddities(CNaiveNode& tree, CRandomTrees& random) {
  static const wchar_t* const kNames[] = {L"X.Y",   L"Z(3)",        L"Z(x)",     L"()",
                                          L"W(-1)", L"MyOrderInfo", L"DefArray", L"V."};
  static const wchar_t* const kTexts[] = {L"two\r\nlines", L"\n",    L"  leading",
                                          L"trailing  ",   L"1,2,3", L"a=b"};
  for (int i = 0; i < 12; ++i) {
    CNaiveNode& node = random.Pick(tree);
    node.children.emplace_back(kNames[random.Below(8)], CLumName(kTexts[random.Below(6)]),
                               random.OneIn(4) ? 0x8000u : random.Flags());
  }
}

void SetVersion(CNaiveNode& tree, int version) {
  CNaiveNode& node = tree.FindCreate(L"AttrVersion", 0);
  node.value = std::make_unique<CLumInt>(version);
  node.flags = 0;
  node.children.clear();
}

class RandomPersistence : public testing::TestWithParam<unsigned int> {
 protected:
  void SetUp() override { LoadTestDefinitions(); }
};

TEST_P(RandomPersistence, SavesAndLoadsAsTheNaiveTree) {
  CRandomTrees random(GetParam());
  for (int round = 0; round < 60; ++round) {
    CNaiveNode tree = random.Tree(60);
    AddOddities(tree, random);
    SetVersion(tree, random.Below(4));
    FileObject file = FileWithItems("Title=Survey|Keep=1;2|Old=0,1|@trOld=0,2");
    FileObject naiveFile = file;
    const CAttributeMap map = ToMap(tree);
    ASSERT_EQ(SaveAttributes(map, file, L"S"), NaiveSave(tree, naiveFile, L"S"));
    ASSERT_EQ(Items(file, L"S"), Items(naiveFile, L"S"));

    CAttributeMap loaded = ToMap(random.Tree(20));
    CNaiveNode naiveLoaded;
    const bool merge = random.OneIn(2);
    if (merge) {
      naiveLoaded = random.Tree(20);
      loaded = ToMap(naiveLoaded);
    }
    ASSERT_EQ(LoadAttributes(loaded, file, L"S", merge), NaiveLoad(naiveLoaded, file, L"S", merge));
    ASSERT_EQ(Describe(loaded), Describe(naiveLoaded));
  }
}

TEST_P(RandomPersistence, StoresANodeByItselfAsTheNaiveTree) {
  CRandomTrees random(GetParam());
  for (int round = 0; round < 60; ++round) {
    CNaiveNode tree = random.Tree(40);
    AddOddities(tree, random);
    FileObject file;
    FileObject naiveFile;
    const CString prefix = L"@tr." + tree.name + L".";
    ASSERT_EQ(ToMap(tree).SaveToFObj(&file, L"S"), NaiveSaveWithKey(tree, naiveFile, L"S", prefix));
    ASSERT_EQ(Items(file, L"S"), Items(naiveFile, L"S"));

    CNaiveNode target = random.OneIn(3) ? CNaiveNode(tree.name) : tree;
    for (int i = 0; i < 6; ++i) {
      random.Pick(target).value = random.Value();
    }
    target.name = tree.name;
    CAttributeMap map = ToMap(target);
    const bool addNew = random.OneIn(2);
    const bool copyFlags = random.OneIn(2);
    const bool orderInfo = random.OneIn(2);
    ASSERT_TRUE(map.LoadFromFObj(&file, L"S", addNew, copyFlags, orderInfo));
    if (!target.children.empty()) {
      CNaiveNode copy = target;
      NaiveLoadWithKey(copy, file, L"S", prefix, addNew);
      target.Overload(copy, addNew, copyFlags, orderInfo, false);
    } else if (addNew) {
      NaiveLoadWithKey(target, file, L"S", prefix, false);
    }
    ASSERT_EQ(DescribeNode(map), DescribeNode(target));
  }
}

/// Makes a tree one that comes back whole: texts that defined kinds accept, and among siblings one
/// "OrderInfo" only, because a key "OrderInfo(1)" is written without flags and read with them.
void MakeLoadable(CNaiveNode& node, bool plainTexts) {
  bool hasOrderInfo = false;
  for (CNaiveNode& child : node.children) {
    if (child.name == L"OrderInfo" && std::exchange(hasOrderInfo, true)) {
      child.name = L"B";
    }
    if (child.name == L"DefInt") {
      child.value = std::make_unique<CLumInt>(3);
    } else if (plainTexts) {
      child.value = std::make_unique<CLumAnything>(L"text");
    }
    MakeLoadable(child, plainTexts);
  }
}

TEST_P(RandomPersistence, RoundTripsThroughFilesByteByByte) {
  const CTemporaryFolder folder;
  CRandomTrees random(GetParam());
  for (int round = 0; round < 20; ++round) {
    CNaiveNode tree = random.Tree(80);
    MakeLoadable(tree, false);
    SetVersion(tree, 1 + round % 2);
    const CAttributeMap map = ToMap(tree);
    FileObject file;
    ASSERT_TRUE(SaveAttributes(map, file, L"S"));
    ASSERT_TRUE(file.Save(PathText(folder.File("first.ini"))));

    FileObject reread;
    ASSERT_TRUE(reread.Load(PathText(folder.File("first.ini"))));
    ASSERT_EQ(Items(reread, L"S"), Items(file, L"S"));
    CAttributeMap loaded;
    ASSERT_TRUE(LoadAttributes(loaded, reread, L"S", false));
    FileObject again;
    ASSERT_TRUE(SaveAttributes(loaded, again, L"S"));
    ASSERT_TRUE(again.Save(PathText(folder.File("second.ini"))));
    ASSERT_EQ(ReadBytes(folder.File("second.ini")), ReadBytes(folder.File("first.ini")));

    CAttributeMap reloaded;
    ASSERT_TRUE(LoadAttributes(reloaded, again, L"S", false));
    ASSERT_EQ(Describe(reloaded), Describe(loaded));
  }
}

TEST_P(RandomPersistence, ReloadedTreeDoesNotDiffer) {
  CRandomTrees random(GetParam());
  for (int round = 0; round < 20; ++round) {
    CNaiveNode tree = random.Tree(80);
    MakeLoadable(tree, true);
    SetVersion(tree, 1 + round % 2);
    const CAttributeMap map = ToMap(tree);
    FileObject file;
    ASSERT_TRUE(SaveAttributes(map, file, L"S"));
    CAttributeMap loaded;
    ASSERT_TRUE(LoadAttributes(loaded, file, L"S", false));
    CAttributeMap diff;
    EXPECT_FALSE(map.Compare(loaded, diff, 7)) << Describe(diff);
    EXPECT_FALSE(loaded.Compare(map, diff, 7)) << Describe(diff);
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomPersistence, testing::Range(1u, 6u));

}  // namespace
