// Adding and removing children, and their flags.
#include <gtest/gtest.h>

#include "attributes/AttributeMap.h"
#include "tests/attributes/TreeTesting.h"

namespace {

CAttributeMap MapOf(std::initializer_list<const wchar_t*> names) {
  CAttributeMap map(L"root");
  for (const wchar_t* name : names) {
    map.Add(name);
  }
  return map;
}

TEST(AttributeEdit, AddsAlwaysAtTheEnd) {
  CAttributeMap map;
  CAttributeMap& first = map.Add(L"A");
  CAttributeMap& second = map.Add(L"A", CLumInt(4), 9);
  EXPECT_EQ(&first, &map[0]);
  EXPECT_EQ(&second, &map[1]);
  EXPECT_EQ(Describe(map), "A:0:-:0 A:101:4:9");
  CAttributeMap& third = map.Add(second);
  EXPECT_EQ(&third, &map[2]);
  EXPECT_EQ(Describe(map), "A:0:-:0 A:101:4:9 A:101:4:9");
}

TEST(AttributeEdit, InsertStandsBeforeTheOccurrenceAndReturnsThePlace) {
  CAttributeMap map = MapOf({L"B", L"A"});
  CAttributeMap& answer = map.Insert(0, L"A", CLumInt(1), 5);
  EXPECT_EQ(Describe(map), "B:0:-:0 A:101:1:5 A:0:-:0");
  EXPECT_EQ(&answer, &map[0]);
  CAttributeMap& second = map.Insert(1, L"A", CLumInt(2), 0);
  EXPECT_EQ(&second, &map[1]);
  EXPECT_EQ(Describe(map), "B:0:-:0 A:101:1:5 A:101:2:0 A:0:-:0");
  EXPECT_EQ(TextOf(map.Insert(0, L"B", CLumInt(3), 0).Value()), "3");
}

TEST(AttributeEdit, AppendNewTakesTheDefinitionsDefault) {
  LoadTestDefinitions();
  CAttributeMap map;
  CAttributeRec* record = map.AppendNew(L"DefInt");
  ASSERT_NE(record, nullptr);
  EXPECT_EQ(record, map.GetAttrMap(L"DefInt"));
  record->Value().SetInt(8);
  ASSERT_NE(map.AppendNew(L"DefArray"), nullptr);
  EXPECT_EQ(Describe(map), "DefInt:101:8:0 DefArray:603:1,2,3:0");
  CAttributeMap again;
  again.AppendNew(L"DefInt");
  EXPECT_EQ(Describe(again), "DefInt:101:7:0");
}

TEST(AttributeEdit, AppendNewRefusesUnknownNamesAndNamesThatExist) {
  LoadTestDefinitions();
  CAttributeMap map = MapOf({L"A", L"DefInt"});
  EXPECT_EQ(map.AppendNew(L"Unknown"), nullptr);
  EXPECT_EQ(map.AppendNew(L"DefNone"), nullptr);
  EXPECT_EQ(map.AppendNew(L"DefInt"), nullptr);
  EXPECT_EQ(map.AppendNew(L"A", CLumInt(1)), nullptr);
  EXPECT_EQ(Describe(map), "A:0:-:0 DefInt:0:-:0");
  CAttributeRec* record = map.AppendNew(L"B", CLumInt(1));
  ASSERT_NE(record, nullptr);
  EXPECT_EQ(record, map.GetAttrMap(L"B"));
  EXPECT_EQ(Describe(map), "A:0:-:0 DefInt:0:-:0 B:101:1:0");
}

TEST(AttributeEdit, RemovesByPlaceAndByOccurrence) {
  CAttributeMap map = MapOf({L"A", L"B", L"A", L"C"});
  map.Remove(1);
  EXPECT_EQ(Names(map), "A A C");
  EXPECT_FALSE(map.Remove(L"A", 2));
  EXPECT_FALSE(map.Remove(L"A", -1));
  EXPECT_FALSE(map.Remove(L"B"));
  EXPECT_EQ(Names(map), "A A C");
  EXPECT_TRUE(map.Remove(L"A", 1));
  EXPECT_EQ(Names(map), "A C");
  EXPECT_TRUE(map.Remove(map[0].Mnemonic()));
  map.Remove(0);
  EXPECT_EQ(map.Count(), 0);
}

TEST(AttributeEdit, RemovesAllOfAName) {
  CAttributeMap map = MapOf({L"A", L"A", L"B", L"A", L"C"});
  map.RemoveAll(L"none");
  EXPECT_EQ(Names(map), "A A B A C");
  map.RemoveAll(L"A");
  EXPECT_EQ(Names(map), "B C");
  map.RemoveAll();
  EXPECT_EQ(map.Count(), 0);
  CAttributeMap leaf;
  leaf.RemoveAll(L"A");
  EXPECT_EQ(leaf.Count(), 0);
}

TEST(AttributeEdit, RemovesAllOfANameGivenByOneOfThem) {
  CAttributeMap map = MapOf({L"A long enough name", L"B", L"A long enough name"});
  map.RemoveAll(map[0].Mnemonic());
  EXPECT_EQ(Names(map), "B");
}

TEST(AttributeEdit, DisablesTheFirstOfAName) {
  CAttributeMap map = MapOf({L"A", L"A"});
  map.GetAttrMap(L"A")->SetFlags(0x0001);
  EXPECT_TRUE(map.DisableAttribute(L"A", true));
  EXPECT_EQ(Describe(map), "A:0:-:65 A:0:-:0");
  EXPECT_TRUE(map.DisableAttribute(L"A", false));
  EXPECT_EQ(Describe(map), "A:0:-:1 A:0:-:0");
  EXPECT_FALSE(map.DisableAttribute(L"B", true));
  EXPECT_EQ(map.Count(), 2);
}

struct EditableRow {
  unsigned int outer;
  unsigned int inner;
  bool editable;
};

TEST(AttributeEdit, IsEditableWhenAChildOrAGroupsChildIs) {
  const EditableRow rows[] = {
      {0x0000, 0x0001, false},  // Never looked into.
      {0x0010, 0x0001, false}, {0x0001, 0x0000, true},  {0x0011, 0x0000, false},
      {0x0011, 0x0001, true},  {0x0011, 0x0011, false}, {0x0041, 0x0000, true},
  };
  for (const EditableRow& row : rows) {
    CAttributeMap map(L"root", CLumUndefined(), 0x0001);
    EXPECT_FALSE(map.HasEditableAttributes());
    map.Add(L"plain");
    map.Add(L"outer", CLumUndefined(), row.outer).Add(L"inner", CLumUndefined(), row.inner);
    EXPECT_EQ(map.HasEditableAttributes(), row.editable) << row.outer << " " << row.inner;
    EXPECT_EQ(map.HasEditorAttributes(), row.editable) << row.outer << " " << row.inner;
  }
}

TEST(AttributeEdit, GroupNameIsTheMnemonic) {
  CAttributeMap map(L"old");
  map.SetGroup(L"new");
  EXPECT_EQ(map.Mnemonic(), L"new");
}

TEST(AttributeEdit, DumpingHasNoEffect) {
  const CAttributeMap map = MapOf({L"A", L"B"});
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  map.DumpContents(1, 2);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(Names(map), "A B");
}

}  // namespace
