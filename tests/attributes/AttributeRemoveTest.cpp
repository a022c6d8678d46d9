// Removing attribute items from a section.
#include <gtest/gtest.h>

#include "attributes/AttributeMap.h"
#include "tests/TemporaryFolder.h"
#include "tests/attributes/TreeTesting.h"

namespace {

struct RemoveRow {
  const char* items;
  const char* kept;
};

TEST(AttributeRemove, RemovesTheItemsOfTheStoredVersion) {
  const RemoveRow rows[] = {
      {"AttrVersion=0,2|Title=Survey|Depth=0,3", "Title=Survey"},
      {"AttrVersion=0,2|@trA=x|B=x,y|C=", "@trA=x|C="},
      {"Title=Survey|@trDepth=0,3|Depth=0,4|@trx=", "Title=Survey|Depth=0,4"},
      {"AttrVersion=0,1|@trA=0,1|Title=x", "AttrVersion=0,1|Title=x"},
      {"AttrVersion=0,3|Title=x|@trA=0,1|B=0,1", ""},
      {"AttrVersion=x|Title=x", ""},
      {"", ""},
  };
  for (const RemoveRow& row : rows) {
    FileObject file = FileWithItems(row.items);
    file.SetItem(L"Other", L"@trA", L"0,1", true);
    EXPECT_TRUE(RemoveAttributes(file, L"S"));
    EXPECT_EQ(Items(file, L"S"), row.kept) << row.items;
    EXPECT_EQ(Items(file, L"Other"), "@trA=0,1");
  }
}

TEST(AttributeRemove, KeepsWhatDoesNotBeginWithThePrefix) {
  const RemoveRow rows[] = {
      {"AttrVersion=0,2|p.A=0,1|q.A=0,2|p.B=x|P.A=0,3|ap.A=0,4",
       "AttrVersion=0,2|q.A=0,2|p.B=x|P.A=0,3|ap.A=0,4"},
      {"@tr.A=0,1|p.A=0,2", "@tr.A=0,1|p.A=0,2"},
      {"AttrVersion=0,9|p.A=x|q.A=0,2", "AttrVersion=0,9|q.A=0,2"},
  };
  for (const RemoveRow& row : rows) {
    FileObject file = FileWithItems(row.items);
    EXPECT_TRUE(RemoveAttributesWithKey(file, L"S", L"p."));
    EXPECT_EQ(Items(file, L"S"), row.kept) << row.items;
  }
  FileObject file = FileWithItems("@tr.A.x=0,1|@tr.B.x=0,2|@tr.A.y=none");
  EXPECT_TRUE(RemoveAttributesWithKey(file, L"S", L"@tr.A."));
  EXPECT_EQ(Items(file, L"S"), "@tr.B.x=0,2");
}

TEST(AttributeRemove, TellsOfAnItemThatCannotBeWrittenAgainBeforeOnesThatCan) {
  CTemporaryFolder folder;
  WriteBytes(folder.File("file"), "[S]\nAttrVersion=0,2\nTitle=a\rb\nUnit=m\n");
  FileObject file;
  ASSERT_TRUE(file.Load(PathText(folder.File("file"))));
  EXPECT_FALSE(RemoveAttributes(file, L"S"));
  EXPECT_EQ(file.ItemCount(L"S"), 3);
}

TEST(AttributeRemove, TouchesNothingWhenAnotherItemCannotBeWrittenAgain) {
  CTemporaryFolder folder;
  WriteBytes(folder.File("file"), "[S]\nAttrVersion=0,2\nTitle=a\rb\nDepth=0,3\n");
  FileObject file;
  ASSERT_TRUE(file.Load(PathText(folder.File("file"))));
  EXPECT_FALSE(RemoveAttributes(file, L"S"));
  EXPECT_EQ(file.ItemCount(L"S"), 3);
  CAttributeMap map;
  map.Add(L"AttrVersion", CLumInt(2), 0);
  EXPECT_FALSE(SaveAttributes(map, file, L"S"));
  EXPECT_EQ(file.ItemCount(L"S"), 3);
}

TEST(AttributeRemove, SavedNodeIsRemovedByItsPrefix) {
  CAttributeMap ship(L"Ship");
  ship.Add(L"A", CLumInt(1), 0);
  FileObject file = FileWithItems("Title=x");
  ASSERT_TRUE(ship.SaveToFObj(&file, L"S"));
  EXPECT_TRUE(RemoveAttributesWithKey(file, L"S", L"@tr.Ship."));
  EXPECT_EQ(Items(file, L"S"), "Title=x");
}

}  // namespace
