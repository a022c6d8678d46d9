// Counting and finding children.
#include <gtest/gtest.h>

#include "attributes/AttributeMap.h"
#include "tests/attributes/TreeTesting.h"

namespace {

CAttributeMap MapOf(std::initializer_list<const wchar_t*> names) {
  CAttributeMap map(L"root");
  int number = 0;
  for (const wchar_t* name : names) {
    map.Add(name, CLumInt(number++), 0);
  }
  return map;
}

struct FindRow {
  const wchar_t* name;
  int occurrence;
  int pos;
};

TEST(AttributeLookup, FindsByNameAndOccurrence) {
  CAttributeMap map = MapOf({L"A", L"B", L"A", L"", L"a", L"A"});
  const FindRow rows[] = {
      {L"A", 0, 0},
      {L"A", 1, 2},
      {L"A", 2, 5},
      {L"A", 3, -1},
      {L"B", 0, 1},
      {L"B", 1, -1},
      {L"", 0, 3},
      {L"a", 0, 4},
      {L"C", 0, -1},
      {L"A", -1, -1},
      {L"B", -7, -1},
      {L"AB", 0, -1},
      {L"A", 2147483647, -1},
      {L"A", -2147483647 - 1, -1},
  };
  const CAttributeMap& constMap = map;
  for (const FindRow& row : rows) {
    SCOPED_TRACE(Narrow(row.name) + "#" + std::to_string(row.occurrence));
    EXPECT_EQ(map.FindAttribute(row.name, row.occurrence), row.pos);
    EXPECT_EQ(map.Has(row.name, row.occurrence), row.pos >= 0);
    const CAttributeMap* expected = row.pos >= 0 ? &constMap[row.pos] : nullptr;
    EXPECT_EQ(map.GetAttrMap(row.name, row.occurrence), expected);
    EXPECT_EQ(constMap.GetAttrMap(row.name, row.occurrence), expected);
    if (expected != nullptr) {
      EXPECT_EQ(&map.Find(row.name, row.occurrence), expected);
      EXPECT_EQ(&map.FindCreate(row.name, row.occurrence), expected);
      EXPECT_EQ(&map.FindValue(row.name, row.occurrence), &expected->Value());
      EXPECT_EQ(&constMap.FindValue(row.name, row.occurrence), &expected->Value());
    }
  }
  EXPECT_EQ(map.Count(), 6);
}

TEST(AttributeLookup, CountsByName) {
  const CAttributeMap map = MapOf({L"A", L"B", L"A"});
  EXPECT_EQ(map.Count(), 3);
  EXPECT_EQ(map.Count(L"A"), 2);
  EXPECT_EQ(map.Count(L"B"), 1);
  EXPECT_EQ(map.Count(L"C"), 0);
  EXPECT_EQ(map.RetrieveIndex(0), 0);
  EXPECT_EQ(map.RetrieveIndex(1), 0);
  EXPECT_EQ(map.RetrieveIndex(2), 1);
}

TEST(AttributeLookup, PlacePastTheEndIsTheEmptyNode) {
  const CAttributeMap map = MapOf({L"A"});
  EXPECT_EQ(TextOf(map[0].Value()), "0");
  EXPECT_EQ(DescribeNode(map[1]), ":0:-:0");
  EXPECT_EQ(&map[1], &map[2147483647]);
  EXPECT_EQ(&map[1], &map.Find(L"none"));
}

TEST(AttributeLookup, ChainsThroughMissingNamesEndAtTheEmptyNode) {
  const CAttributeMap map = MapOf({L"A"});
  const CAttributeMap& end = map.Find(L"none").Find(L"A").Find(L"B", 3);
  EXPECT_EQ(end.Count(), 0);
  EXPECT_EQ(end.Value().Type(), CLumType::TYPE_UNDEFINED);
  EXPECT_EQ(&map.FindValue(L"none"), &end.Value());
  EXPECT_EQ(Names(map), "A");
}

TEST(AttributeLookup, MissingValueRefusesWritesAndCreatesNothing) {
  CAttributeMap map = MapOf({L"A"});
  CLumType& missing = map.FindValue(L"none");
  EXPECT_EQ(missing.SetInt(1), 0);
  EXPECT_EQ(missing.SetName(CString(L"x")), 0);
  EXPECT_FALSE(missing.SetValueStr(CString(L"1")));
  EXPECT_EQ(Names(map), "A");
  EXPECT_EQ(&missing, &CAttributeMap().FindValue(L"other", 4));
  EXPECT_NE(&missing, &map.Find(L"none").Value());
}

TEST(AttributeLookup, FindCreateAppendsUpToTheOccurrence) {
  CAttributeMap map = MapOf({L"A"});
  CAttributeMap& third = map.FindCreate(L"X", 2);
  EXPECT_EQ(Names(map), "A X X X");
  EXPECT_EQ(&third, &map[3]);
  EXPECT_EQ(DescribeNode(third), "X:0:-:0");
  EXPECT_EQ(&map.FindCreate(L"A"), &map[0]);
  const CAttributeMap& second = map.FindCreate(L"A", 1);
  EXPECT_EQ(&second, &map[4]);
  EXPECT_EQ(Names(map), "A X X X A");
}

TEST(AttributeLookup, FindCreateIndexAppendsUnnamedChildren) {
  CAttributeMap map;
  CAttributeMap& last = map.FindCreateIndex(3);
  EXPECT_EQ(map.Count(), 4);
  EXPECT_EQ(&last, &map[3]);
  EXPECT_EQ(Describe(map), ":0:-:0 :0:-:0 :0:-:0 :0:-:0");
  EXPECT_EQ(&map.FindCreateIndex(1), &map[1]);
  EXPECT_EQ(map.Count(), 4);
}

}  // namespace
