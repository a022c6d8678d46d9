// The tree node's life: construction, copies, moves, the order of destruction, aliases.
#include "attributes/AttributeMap.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/attributes/TreeTesting.h"

namespace {

/// Notes its name when it is copied or deleted.
class CLoggedValue : public CLumInt {
 public:
  CLoggedValue(std::string name, std::string& log)
      : CLumInt(0), m_name(std::move(name)), m_log(log) {}
  CLoggedValue(const CLoggedValue&) = default;
  ~CLoggedValue() override { m_log += "~" + m_name + " "; }
  CLoggedValue* MakeCopy() const override {
    m_log += "+" + m_name + " ";
    return new CLoggedValue(*this);
  }

 private:
  std::string m_name;
  std::string& m_log;
};

CAttributeMap SmallTree() {
  CAttributeMap root(L"root", CLumInt(1), 2);
  CAttributeMap& a = root.Add(L"A", CLumName(L"x"), 4);
  a.Add(L"B", CLumDouble(1.5), 8).SetLastSelected(true);
  a.Add(L"B");
  root.Add(L"A");
  root.SetLastSelected(true);
  return root;
}

const char* const kSmallTree = "root:101:1:2*{A:501:x:4{B:103:1.500000:8* B:0:-:0} A:0:-:0}";

TEST(AttributeMap, StartsUndefinedAndEmpty) {
  EXPECT_EQ(DescribeNode(CAttributeMap()), ":0:-:0");
  EXPECT_EQ(DescribeNode(CAttributeMap(L"N")), "N:0:-:0");
  EXPECT_EQ(DescribeNode(CAttributeMap(L"N", CLumInt(3), 9)), "N:101:3:9");
}

TEST(AttributeMap, CopyIsDeepAndIndependent) {
  const CAttributeMap tree = SmallTree();
  CAttributeMap copy(tree);
  EXPECT_EQ(DescribeNode(copy), kSmallTree);
  copy.Find(L"A").Find(L"B");
  copy.GetAttrMap(L"A")->FindValue(L"B").SetDouble(7.0);
  copy.GetAttrMap(L"A")->Add(L"C");
  copy.RemoveAll(L"A");
  EXPECT_EQ(DescribeNode(tree), kSmallTree);
}

TEST(AttributeMap, CopyAssignmentReplacesEverything) {
  const CAttributeMap tree = SmallTree();
  CAttributeMap target(L"T", CLumDouble(9.0), 77);
  target.Add(L"Old").Add(L"Older");
  target = tree;
  EXPECT_EQ(DescribeNode(target), kSmallTree);
  EXPECT_EQ(DescribeNode(tree), kSmallTree);
}

TEST(AttributeMap, SelfAssignmentKeepsTheVeryNodes) {
  CAttributeMap tree = SmallTree();
  const CAttributeMap* child = &tree[0];
  CAttributeMap& same = tree;
  tree = same;
  tree = std::move(same);
  EXPECT_EQ(&tree[0], child);
  EXPECT_EQ(DescribeNode(tree), kSmallTree);
}

TEST(AttributeMap, MoveTakesTheVeryNodesAndLeavesTheName) {
  CAttributeMap tree = SmallTree();
  const CAttributeMap* child = &tree[0];
  const CAttributeMap moved(std::move(tree));
  EXPECT_EQ(&moved[0], child);
  EXPECT_EQ(DescribeNode(moved), kSmallTree);
  EXPECT_EQ(tree.Mnemonic(), L"root");
  EXPECT_EQ(tree.Count(), 0);
}

TEST(AttributeMap, MoveAssignmentDropsTheOldTree) {
  CAttributeMap tree = SmallTree();
  CAttributeMap target(L"T", CLumDouble(9.0), 77);
  target.Add(L"Old").Add(L"Older");
  target = std::move(tree);
  EXPECT_EQ(DescribeNode(target), kSmallTree);
  EXPECT_EQ(tree.Count(), 0);
  EXPECT_EQ(tree.Mnemonic(), L"root");
}

TEST(AttributeMap, CopyOfAMovedFromNodeIsUndefined) {
  CAttributeMap tree = SmallTree();
  const CAttributeMap moved(std::move(*tree.GetAttrMap(L"A")));
  EXPECT_EQ(DescribeNode(CAttributeMap(tree)), "root:101:1:2*{A:0:-:4 A:0:-:0}");
}

TEST(AttributeMap, DestroysChildrenFromTheLastAndValuesAfterWhatIsBelow) {
  std::string log;
  {
    CAttributeMap root(L"r", CLoggedValue("r", log), 0);
    CAttributeMap& a = root.Add(L"a", CLoggedValue("a", log), 0);
    a.Add(L"a0", CLoggedValue("a0", log), 0);
    CAttributeMap& a1 = a.Add(L"a1", CLoggedValue("a1", log), 0);
    a1.Add(L"a10", CLoggedValue("a10", log), 0);
    root.Add(L"b", CLoggedValue("b", log), 0).Add(L"b0", CLoggedValue("b0", log), 0);
    log.clear();
  }
  EXPECT_EQ(log, "~b0 ~b ~a10 ~a1 ~a0 ~a ~r ");
}

TEST(AttributeMap, CopiesANodeBeforeWhatIsBelowAndChildrenInOrder) {
  std::string log;
  CAttributeMap root(L"r", CLoggedValue("r", log), 0);
  CAttributeMap& a = root.Add(L"a", CLoggedValue("a", log), 0);
  a.Add(L"a0", CLoggedValue("a0", log), 0);
  root.Add(L"b", CLoggedValue("b", log), 0);
  log.clear();
  const CAttributeMap copy(root);
  EXPECT_EQ(log, "+r +a +a0 +b ");
}

TEST(AttributeMap, CanBeAssignedFromItsOwnDescendant) {
  CAttributeMap copied = SmallTree();
  copied = *copied.GetAttrMap(L"A");
  EXPECT_EQ(DescribeNode(copied), "A:501:x:4{B:103:1.500000:8* B:0:-:0}");
  CAttributeMap moved = SmallTree();
  moved = std::move(*moved.GetAttrMap(L"A"));
  EXPECT_EQ(DescribeNode(moved), "A:501:x:4{B:103:1.500000:8* B:0:-:0}");
  CAttributeMap deep = SmallTree();
  deep = *deep.GetAttrMap(L"A")->GetAttrMap(L"B");
  EXPECT_EQ(DescribeNode(deep), "B:103:1.500000:8*");
}

TEST(AttributeMap, DescendantCanBeAssignedFromItsAncestor) {
  CAttributeMap tree = SmallTree();
  *tree.GetAttrMap(L"A", 1) = tree;
  EXPECT_EQ(DescribeNode(tree),
            "root:101:1:2*{A:501:x:4{B:103:1.500000:8* B:0:-:0} " + std::string(kSmallTree) + "}");
}

TEST(AttributeMap, CanBeAddedToItselfAndToItsDescendants) {
  CAttributeMap tree(L"r");
  tree.Add(L"A");
  tree.Add(tree);
  EXPECT_EQ(DescribeNode(tree), "r:0:-:0{A:0:-:0 r:0:-:0{A:0:-:0}}");
  tree.GetAttrMap(L"A")->Add(tree);
  EXPECT_EQ(Describe(*tree.GetAttrMap(L"A")), "r:0:-:0{A:0:-:0 r:0:-:0{A:0:-:0}}");
}

TEST(AttributeMap, TakesValuesAndNamesFromItsOwnTree) {
  CAttributeMap tree = SmallTree();
  tree.SetValue(tree.Find(L"A").Value());
  EXPECT_EQ(TextOf(tree.Value()), "x");
  CAttributeMap& a = *tree.GetAttrMap(L"A");
  a.SetValue(a.Find(L"B").Value());
  EXPECT_EQ(TextOf(a.Value()), "1.500000");
  tree.Add(a.Mnemonic(), a.Value(), 1);
  tree.Insert(0, a.Mnemonic(), a.Value(), 2);
  EXPECT_EQ(Names(tree), "A A A A");
  tree.FindCreate(tree[0].Mnemonic(), 5);
  EXPECT_EQ(tree.Count(L"A"), 6);
  tree.SetGroup(tree.Mnemonic());
  EXPECT_EQ(tree.Mnemonic(), L"root");
}

}  // namespace
