// Merging one tree over another.
#include <gtest/gtest.h>

#include "attributes/AttributeMap.h"
#include "tests/attributes/TreeTesting.h"

namespace {

CAttributeMap Target() {
  CAttributeMap map(L"target", CLumInt(1), 1);
  map.Add(L"A", CLumInt(10), 0x01);
  map.Add(L"A", CLumInt(11), 0x02);
  map.Add(L"G").Add(L"In", CLumInt(12), 0);
  return map;
}

TEST(Overload, WordFifteenMakesAnExactCopy) {
  CAttributeMap target = Target();
  CAttributeMap source(L"source", CLumName(L"s"), 9);
  source.Add(L"OrderInfo", CLumName(L"o"), 3);
  source.SetLastSelected(true);
  target.Overload(source, 15);
  EXPECT_EQ(DescribeNode(target), DescribeNode(source));
}

TEST(Overload, OtherWordsLeaveTheNodeItselfAlone) {
  CAttributeMap source(L"source", CLumInt(5), 9);
  source.SetLastSelected(true);
  source.Add(L"A", CLumInt(20), 0x10);
  for (const unsigned int word : {0u, 7u, 14u, 16u, 23u, 31u, 0xFFFFFFFFu}) {
    CAttributeMap target = Target();
    target.Overload(source, word);
    const std::string flags = (word & 1) != 0 ? "16" : "1";
    EXPECT_EQ(DescribeNode(target),
              "target:101:1:1{A:101:20:" + flags + " A:101:11:2 G:0:-:0{In:101:12:0}}")
        << word;
  }
}

TEST(Overload, WordIsDecodedIntoTheSwitches) {
  CAttributeMap source;
  source.Add(L"A", CLumInt(20), 0x10);
  source.Add(L"New", CLumInt(21), 0);
  source.Add(L"OrderInfo", CLumName(L"o"), 0);
  for (unsigned int word = 0; word < 64; ++word) {
    if (word == 15) {
      continue;
    }
    CAttributeMap byWord = Target();
    byWord.GetAttrMap(L"A")->SetFlags(0x1000);
    CAttributeMap bySwitches = byWord;
    byWord.Overload(source, word);
    bySwitches.Overload(source, (word & 4) != 0, (word & 1) != 0, (word & 2) != 0,
                        (word & 16) != 0);
    EXPECT_EQ(DescribeNode(byWord), DescribeNode(bySwitches)) << word;
    EXPECT_EQ(byWord.Has(L"New"), (word & 4) != 0);
    EXPECT_EQ(byWord.Has(L"OrderInfo"), (word & 6) == 6);
    EXPECT_EQ(TextOf(byWord.Find(L"A").Value()), (word & 16) != 0 ? "10" : "20");
  }
}

TEST(Overload, AddsWhatIsMissingAfterWhatIsThere) {
  CAttributeMap source;
  source.Add(L"New", CLumInt(1), 5).Add(L"Below", CLumInt(2), 6).SetLastSelected(true);
  source.Add(L"A");
  source.Add(L"A");
  source.Add(L"A", CLumInt(3), 7);
  CAttributeMap target = Target();
  target.Overload(source, false, false, false, false);
  EXPECT_EQ(Describe(target), Describe(Target()));
  target.Overload(source, true, false, false, false);
  EXPECT_EQ(Describe(target),
            "A:101:10:1 A:101:11:2 G:0:-:0{In:101:12:0} New:101:1:5{Below:101:2:6*} A:101:3:7");
}

TEST(Overload, AddedOccurrencesMayLackTheirPredecessors) {
  CAttributeMap source;
  source.Add(L"G").Add(L"OrderInfo");
  source.Add(L"X", CLumInt(1), 0);
  source.Add(L"X", CLumInt(2), 0);
  CAttributeMap target;
  target.Overload(source, true, false, false, false);
  EXPECT_EQ(Describe(target), "G:0:-:0{OrderInfo:0:-:0} X:101:1:0 X:101:2:0");
}

TEST(Overload, KeepsTheKindAndConvertsAsItDoes) {
  CAttributeMap source;
  source.Add(L"Int", CLumAnything(L"42"), 0);
  source.Add(L"Strict", CLumDouble(2.5), 0);
  source.Add(L"Text", CLumInt(7), 0);
  CAttributeMap target;
  target.Add(L"Int", CLumInt(1), 0);
  target.Add(L"Strict", CLumInt(1), 0);
  target.Add(L"Text", CLumAnything(L"t"), 0);
  target.Overload(source, 0);
  EXPECT_EQ(Describe(target), "Int:101:42:0 Strict:101:1:0 Text:999:7:0");
}

TEST(Overload, UndefinedSourcePassesFlagsMarkAndWhatIsBelow) {
  CAttributeMap source;
  CAttributeMap& group = source.Add(L"G", CLumUndefined(), 0x20);
  group.SetLastSelected(true);
  group.Add(L"In", CLumInt(99), 0x21);
  CAttributeMap target;
  target.Add(L"G", CLumInt(5), 1).Add(L"In", CLumInt(1), 2);
  CAttributeMap withoutFlags = target;
  withoutFlags.Overload(source, false, false, false, false);
  EXPECT_EQ(Describe(withoutFlags), "G:101:5:1*{In:101:99:2}");
  target.Overload(source, false, true, false, false);
  EXPECT_EQ(Describe(target), "G:101:5:32*{In:101:99:33}");
}

TEST(Overload, MarkIsTakenEvenWhenItIsNotSet) {
  CAttributeMap target = Target();
  target.GetAttrMap(L"A")->SetLastSelected(true);
  CAttributeMap source;
  source.Add(L"A");
  target.Overload(source, 0);
  EXPECT_FALSE(target.Find(L"A").IsLastSelected());
}

struct ProtectionRow {
  unsigned int flags;
  bool strict;
  bool firstKept;
  bool belowKept;
};

TEST(Overload, ProtectsValuesByFlags) {
  const ProtectionRow rows[] = {
      {0x0000, false, false, false}, {0x0000, true, false, false},  {0x0400, false, true, true},
      {0x0400, true, true, true},    {0x1000, false, false, false}, {0x1000, true, true, false},
      {0x1400, false, true, true},   {0xEBFF, false, false, false},
  };
  for (const ProtectionRow& row : rows) {
    CAttributeMap target;
    target.Add(L"A", CLumInt(1), row.flags).Add(L"B", CLumInt(1), row.flags);
    CAttributeMap source;
    source.Add(L"A", CLumInt(2), 0x80).Add(L"B", CLumInt(2), 0x80);
    target.Overload(source, false, true, false, row.strict);
    SCOPED_TRACE(std::to_string(row.flags) + (row.strict ? " strict" : ""));
    EXPECT_EQ(TextOf(target.Find(L"A").Value()), row.firstKept ? "1" : "2");
    EXPECT_EQ(TextOf(target.Find(L"A").Find(L"B").Value()), row.belowKept ? "1" : "2");
    EXPECT_EQ(target.Find(L"A").Flags(), 0x80u);
  }
}

TEST(Overload, OrderInfoTakesPartOnTheFirstLevelOnly) {
  CAttributeMap target;
  target.Add(L"OrderInfo", CLumName(L"old"), 0);
  target.Add(L"G").Add(L"OrderInfo", CLumName(L"old"), 0);
  CAttributeMap source;
  source.Add(L"OrderInfo", CLumName(L"new"), 0);
  source.Add(L"G").Add(L"OrderInfo", CLumName(L"new"), 0);
  CAttributeMap without = target;
  without.Overload(source, true, false, false, false);
  EXPECT_EQ(Describe(without), "OrderInfo:501:old:0 G:0:-:0{OrderInfo:501:old:0}");
  target.Overload(source, true, false, true, false);
  EXPECT_EQ(Describe(target), "OrderInfo:501:new:0 G:0:-:0{OrderInfo:501:old:0}");
}

TEST(Overload, MergesFromItsOwnTreeAsFromACopy) {
  CAttributeMap tree(L"r");
  CAttributeMap& a = tree.Add(L"A", CLumInt(1), 0);
  a.Add(L"A", CLumInt(2), 0).Add(L"B", CLumInt(3), 0);
  a.Add(L"C", CLumInt(4), 0);
  for (const bool addNew : {false, true}) {
    CAttributeMap fromBelow = tree;
    fromBelow.Overload(*fromBelow.GetAttrMap(L"A"), addNew, true, true, false);
    CAttributeMap expected = tree;
    expected.Overload(CAttributeMap(tree.Find(L"A")), addNew, true, true, false);
    EXPECT_EQ(DescribeNode(fromBelow), DescribeNode(expected));

    CAttributeMap fromFarBelow = tree;
    fromFarBelow.Overload(*fromFarBelow.GetAttrMap(L"A")->GetAttrMap(L"A"), addNew, true, true,
                          false);
    expected = tree;
    expected.Overload(CAttributeMap(tree.Find(L"A").Find(L"A")), addNew, true, true, false);
    EXPECT_EQ(DescribeNode(fromFarBelow), DescribeNode(expected));

    CAttributeMap fromAbove = tree;
    fromAbove.GetAttrMap(L"A")->Overload(fromAbove, addNew, true, true, false);
    expected = tree;
    expected.GetAttrMap(L"A")->Overload(tree, addNew, true, true, false);
    EXPECT_EQ(DescribeNode(fromAbove), DescribeNode(expected));

    CAttributeMap fromFarAbove = tree;
    fromFarAbove.GetAttrMap(L"A")->GetAttrMap(L"A")->Overload(fromFarAbove, addNew, true, true,
                                                              false);
    expected = tree;
    expected.GetAttrMap(L"A")->GetAttrMap(L"A")->Overload(tree, addNew, true, true, false);
    EXPECT_EQ(DescribeNode(fromFarAbove), DescribeNode(expected));

    CAttributeMap fromItself = tree;
    fromItself.Overload(fromItself, addNew, true, true, false);
    EXPECT_EQ(DescribeNode(fromItself), DescribeNode(tree));
  }
  tree.Overload(*tree.GetAttrMap(L"A"), 15);
  EXPECT_EQ(DescribeNode(tree), "A:101:1:0{A:101:2:0{B:101:3:0} C:101:4:0}");
}

}  // namespace
