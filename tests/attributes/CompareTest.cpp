// Comparing two trees.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>

#include "attributes/AttributeMap.h"
#include "tests/attributes/TreeTesting.h"

namespace {

/// What Compare finds, or "none"; its answer and the difference tree must agree.
std::string Difference(const CAttributeMap& own, const CAttributeMap& other, unsigned int flags) {
  CAttributeMap diff(L"diff", CLumInt(3), 4);
  diff.Add(L"Left over").Add(L"from before");
  const bool differs = own.Compare(other, diff, flags);
  EXPECT_EQ(differs, diff.Count() > 0);
  EXPECT_EQ(DescribeNode(diff).substr(0, 12), "diff:101:3:4");
  return differs ? Describe(diff) : "none";
}

/// Whether two values, the second in the other tree, count as changed.
bool Differ(const CLumType& own, const CLumType& other, unsigned int ownFlags = 0) {
  CAttributeMap a;
  a.Add(L"V", own, ownFlags);
  CAttributeMap b;
  b.Add(L"V", other, 0);
  CAttributeMap diff;
  return a.Compare(b, diff, 1);
}

TEST(Compare, WithoutFlagsClearsAndFindsNothing) {
  CAttributeMap own;
  CAttributeMap other;
  other.Add(L"A", CLumInt(1), 0);
  EXPECT_EQ(Difference(own, other, 0), "none");
  EXPECT_EQ(Difference(own, other, 8), "none");
}

TEST(Compare, ReportsValuesAndFlagsOfTheOtherTree) {
  CAttributeMap own;
  own.Add(L"A", CLumInt(1), 1);
  own.Add(L"B", CLumInt(2), 2);
  CAttributeMap other;
  other.Add(L"B", CLumInt(2), 99);
  other.Add(L"A", CLumName(L"x"), 7).SetLastSelected(true);
  EXPECT_EQ(Difference(own, other, 1), "A:501:x:7");
  EXPECT_EQ(Difference(other, own, 1), "A:101:1:1");
}

TEST(Compare, ReportsWhatOnlyOneTreeHas) {
  CAttributeMap own;
  own.Add(L"Both", CLumInt(1), 0);
  own.Add(L"Own", CLumInt(2), 5).Add(L"Below", CLumInt(3), 6).SetLastSelected(true);
  CAttributeMap other;
  other.Add(L"Both", CLumInt(1), 0);
  other.Add(L"Other", CLumInt(4), 7).Add(L"Below", CLumInt(5), 8).SetLastSelected(true);
  EXPECT_EQ(Difference(own, other, 1), "none");
  EXPECT_EQ(Difference(own, other, 2), "Other:101:4:7{Below:101:5:8*}");
  EXPECT_EQ(Difference(own, other, 4), "Own:101:2:5{Below:101:3:6*}");
  EXPECT_EQ(Difference(own, other, 7), "Other:101:4:7{Below:101:5:8*} Own:101:2:5{Below:101:3:6*}");
}

TEST(Compare, PairsOccurrencesAndKeepsTheirNumbers) {
  CAttributeMap own;
  own.Add(L"A", CLumInt(1), 0);
  own.Add(L"A", CLumInt(2), 0);
  CAttributeMap other;
  other.Add(L"B", CLumInt(0), 0);
  other.Add(L"A", CLumInt(1), 0);
  other.Add(L"A", CLumInt(3), 4);
  other.Add(L"A", CLumInt(5), 6);
  EXPECT_EQ(Difference(own, other, 1), "A:0:-:0 A:101:3:4");
  EXPECT_EQ(Difference(own, other, 2), "B:101:0:0 A:0:-:0 A:0:-:0 A:101:5:6");
  EXPECT_EQ(Difference(other, own, 4), "B:101:0:0 A:0:-:0 A:0:-:0 A:101:5:6");
}

TEST(Compare, EntryOfAChildThatDiffersOnlyBelowKeepsTheName) {
  CAttributeMap own;
  own.Add(L"G", CLumInt(1), 3).Add(L"In", CLumInt(1), 0);
  CAttributeMap other;
  CAttributeMap& group = other.Add(L"G", CLumInt(1), 5);
  group.SetLastSelected(true);
  group.Add(L"In", CLumInt(2), 0);
  EXPECT_EQ(Difference(own, other, 1), "G:0:-:0{In:101:2:0}");
  group.SetValue(CLumInt(9));
  EXPECT_EQ(Difference(own, other, 1), "G:101:9:5{In:101:2:0}");
  EXPECT_EQ(Difference(own, other, 2), "none");
}

TEST(Compare, RemovalsBelowMeetChangesBelow) {
  CAttributeMap own;
  CAttributeMap& ownGroup = own.Add(L"G");
  ownGroup.Add(L"Changed", CLumInt(1), 0);
  ownGroup.Add(L"Removed", CLumInt(2), 3);
  CAttributeMap other;
  CAttributeMap& otherGroup = other.Add(L"G");
  otherGroup.Add(L"Changed", CLumInt(9), 0);
  otherGroup.Add(L"Added", CLumInt(8), 0);
  EXPECT_EQ(Difference(own, other, 7), "G:0:-:0{Changed:101:9:0 Added:101:8:0 Removed:101:2:3}");
  EXPECT_EQ(Difference(own, other, 4), "G:0:-:0{Removed:101:2:3}");
}

TEST(Compare, RemovedOrderInfoIsReportedOnTheFirstLevelOnly) {
  CAttributeMap own;
  own.Add(L"OrderInfo", CLumName(L"o"), 0);
  own.Add(L"G").Add(L"H").Add(L"OrderInfo", CLumName(L"o"), 0);
  own.Add(L"K").Add(L"Whole").Add(L"OrderInfo", CLumName(L"o"), 0);
  CAttributeMap other;
  other.Add(L"G").Add(L"H");
  other.Add(L"K");
  EXPECT_EQ(Difference(own, other, 4),
            "OrderInfo:501:o:0 G:0:-:0{H:0:-:0} K:0:-:0{Whole:0:-:0{OrderInfo:501:o:0}}");
  // What was added is reported on every level.
  EXPECT_EQ(Difference(other, own, 2),
            "OrderInfo:501:o:0 G:0:-:0{H:0:-:0{OrderInfo:501:o:0}} "
            "K:0:-:0{Whole:0:-:0{OrderInfo:501:o:0}}");
}

TEST(Compare, ValueOfAGroupWithoutOtherChildrenIsComparedToo) {
  CAttributeMap own;
  own.Add(L"G", CLumInt(1), 0).Add(L"In", CLumInt(1), 0);
  CAttributeMap other;
  other.Add(L"G", CLumInt(2), 6);
  EXPECT_EQ(Difference(own, other, 1), "G:101:2:6");
  EXPECT_EQ(Difference(own, other, 7), "G:101:2:6{In:101:1:0}");
}

struct ValueRow {
  const wchar_t* own;
  const wchar_t* other;
  bool differ;
};

TEST(Compare, TextsThatAreNumbersCompareAsNumbers) {
  const ValueRow rows[] = {
      {L"1.0", L"1", false},   {L"1", L"1.0", false},    {L"1", L"2", true},
      {L"1,2", L"1, 2", true}, {L"1,2", L"1,2", false},  {L"a", L"A", true},
      {L"a", L"a", false},     {L"", L"", false},        {L"", L"0", true},
      {L"1,0", L"1", true},    {L"1e3", L"1000", false}, {L"5 m", L"5 ft", false},
      {L"nan", L"nan", true},  {L"inf", L"inf", true},   {L"0", L"-0", false},
      {L"x 5", L"5", true},
  };
  for (const ValueRow& row : rows) {
    EXPECT_EQ(Differ(CLumAnything(row.own), CLumAnything(row.other)), row.differ)
        << Narrow(row.own) << " " << Narrow(row.other);
  }
}

TEST(Compare, NumbersAreEqualWithinTheTolerance) {
  EXPECT_GT(Epsilon(10000.0), 1e-12);
  EXPECT_FALSE(Differ(CLumDouble(1000.0), CLumDouble(1000.0 + 1e-12)));
  EXPECT_TRUE(Differ(CLumDouble(1000.0), CLumDouble(1000.0 + 1e-10)));
  // The larger magnitude decides, whichever side it is on.
  const double large = 1e6;
  const double near = large + 8e6 * std::numeric_limits<double>::epsilon();
  EXPECT_FALSE(Differ(CLumDouble(-large), CLumDouble(-near)));
  EXPECT_FALSE(Differ(CLumDouble(-near), CLumDouble(-large)));
  EXPECT_FALSE(Differ(CLumDouble(0.0), CLumDouble(0.0)));
  EXPECT_TRUE(Differ(CLumDouble(0.0), CLumDouble(1e-300)));
}

TEST(Compare, KindsWithoutADoubleCompareAsTexts) {
  EXPECT_FALSE(Differ(CLumInt(1), CLumAnything(L"1")));
  EXPECT_TRUE(Differ(CLumInt(1), CLumAnything(L"1.0")));
  EXPECT_FALSE(Differ(CLumUndefined(), CLumName(L"")));
  EXPECT_TRUE(Differ(CLumUndefined(), CLumName(L"x")));
  EXPECT_FALSE(Differ(CLumIoName("a"), CLumIoName("b")));
}

TEST(Compare, ProtectionHidesTextDifferencesOnly) {
  EXPECT_FALSE(Differ(CLumName(L"a"), CLumName(L"b"), 0x0400));
  EXPECT_TRUE(Differ(CLumName(L"a"), CLumName(L"b"), 0x1000));
  EXPECT_TRUE(Differ(CLumDouble(1.0), CLumDouble(2.0), 0x0400));
  EXPECT_FALSE(Differ(CLumInt(1), CLumInt(2), 0x0400));
  // Only this tree's flag counts.
  CAttributeMap own;
  own.Add(L"V", CLumName(L"a"), 0);
  CAttributeMap other;
  other.Add(L"V", CLumName(L"b"), 0x0400);
  EXPECT_EQ(Difference(own, other, 1), "V:501:b:1024");
}

TEST(Compare, TreeEqualsItself) {
  CAttributeMap tree;
  tree.Add(L"A", CLumInt(1), 1).Add(L"B", CLumDouble(2.5), 2);
  tree.Add(L"A");
  EXPECT_EQ(Difference(tree, tree, 7), "none");
  EXPECT_EQ(Difference(tree, CAttributeMap(tree), 7), "none");
}

TEST(Compare, DifferencesCanBeLaidOverTheTree) {
  CAttributeMap own;
  own.Add(L"A", CLumInt(1), 0);
  own.Add(L"G").Add(L"In", CLumName(L"x"), 0);
  CAttributeMap other = own;
  other.GetAttrMap(L"G")->FindValue(L"In").SetName(CString(L"y"));
  other.Add(L"New", CLumInt(3), 0);
  CAttributeMap diff;
  ASSERT_TRUE(own.Compare(other, diff, 3));
  own.Overload(diff, true, false, false, false);
  EXPECT_EQ(Describe(own), Describe(other));
}

}  // namespace
