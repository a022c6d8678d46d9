// Loading a section from the lines of its file.
#include <gtest/gtest.h>

#include "attributes/AttributeMap.h"
#include "tests/TemporaryFolder.h"
#include "tests/attributes/TreeTesting.h"

namespace {

std::string LoadedFrom(const std::string& bytes, bool skipMarked = false) {
  const CTemporaryFolder folder;
  CAttributeMap map(L"root");
  map.Add(L"Old");
  WriteBytes(folder.File("file.ini"), bytes);
  if (!LoadAttributesOrdered(map, PathText(folder.File("file.ini")), L"S", skipMarked)) {
    EXPECT_EQ(map.Count(), 0);
    return "refused";
  }
  return Describe(map);
}

TEST(OrderedLoad, FollowsTheLinesOfTheFile) {
  EXPECT_EQ(
      LoadedFrom("[Other]\n@trX=0,0\n[S]\n@trB=0,1\n@trA=1,2\n@trB(1)=0,3\n[Next]\n@trC=0,4\n"),
      "B:999:1:0 A:999:2:1 B:999:3:0");
  EXPECT_EQ(LoadedFrom("[S]\r\n@trB=0,1\r\n\r\n@trA=0,2"), "B:999:1:0 A:999:2:0");
}

struct LineRow {
  const char* line;
  const char* loaded;
};

TEST(OrderedLoad, ReadsLinesItsOwnWay) {
  const LineRow rows[] = {
      {"A=0,1", "A:999:1:0"},
      {"A  \t=  0,1", "A:999:1:0"},
      {" A=0,1", " A:999:1:0"},  // Blanks before a key belong to it.
      {"A=0,1   ", "A:999:1:0"},
      {"A=0,1 // comment", "A:999:1:0"},
      {"A=0,http://x", "A:999:http::0"},
      {"// A=0,1", ""},
      {"; A=0,1", ""},
      {";A=0,1", ""},
      {" ;A=0,1", " ;A:999:1:0"},
      {"A", ""},
      {"A // =0,1", ""},
      {"=0,1", ":999:1:0"},
      {"A=B=0,1", ""},
      {"A=0,B=1", "A:999:B=1:0"},
      {"A=x", ""},
      {"A=0x80,1", "A:999:1:128"},
      {"   ", ""},
  };
  for (const LineRow& row : rows) {
    EXPECT_EQ(LoadedFrom(std::string("[S]\nAttrVersion=0,2\n") + row.line + "\n"),
              std::string("AttrVersion:999:2:0") + (*row.loaded != 0 ? " " : "") + row.loaded)
        << row.line;
  }
}

TEST(OrderedLoad, VersionChangesAtTheLineOfItsKey) {
  EXPECT_EQ(LoadedFrom("[S]\n@trA=0,1\nB=0,2\nAttrVersion=0,1\nC=0,3\n@trD=0,4\n"),
            "A:999:1:0 AttrVersion:999:1:0 C:999:3:0 @trD:501:4:0");
  // The key counts, not what its line says; and each section starts afresh.
  EXPECT_EQ(LoadedFrom("[S]\nAttrVersion=\nA=0,1\n"), "A:999:1:0");
  EXPECT_EQ(LoadedFrom("[T]\nAttrVersion=0,2\n[S]\nA=0,1\n@trB=0,2\n"), "B:999:2:0");
}

TEST(OrderedLoad, SkipsMarkedEntriesWhenAsked) {
  const char* const file = "[S]\n@trA=0x80,1\n@trB=129,2\n@trC=1,3\n@trG.D=128,4\n";
  EXPECT_EQ(LoadedFrom(file, true), "C:999:3:1");
  EXPECT_EQ(LoadedFrom(file, false), "A:999:1:128 B:999:2:129 C:999:3:1 G:0:-:0{D:999:4:128}");
}

TEST(OrderedLoad, SectionIsFoundByTheBeginningOfItsLine) {
  EXPECT_EQ(LoadedFrom("[S] trailing\n@trA=0,1\n"), "A:999:1:0");
  EXPECT_EQ(LoadedFrom(" [S]\n@trA=0,1\n"), "refused");
  EXPECT_EQ(LoadedFrom("[s]\n@trA=0,1\n"), "refused");
  EXPECT_EQ(LoadedFrom("[SS]\n@trA=0,1\n"), "refused");
  EXPECT_EQ(LoadedFrom(""), "refused");
  EXPECT_EQ(LoadedFrom("[S]"), "");
  // Only the first section of the name is read.
  EXPECT_EQ(LoadedFrom("[S]\n@trA=0,1\n[S]\n@trB=0,2\n"), "A:999:1:0");
}

TEST(OrderedLoad, MissingFileIsRefusedAndClears) {
  const CTemporaryFolder folder;
  CAttributeMap map;
  map.Add(L"Old");
  EXPECT_FALSE(LoadAttributesOrdered(map, PathText(folder.File("none.ini")), L"S", false));
  EXPECT_EQ(map.Count(), 0);
}

TEST(OrderedLoad, ReadsWhatWasSaved) {
  const CTemporaryFolder folder;
  CAttributeMap map;
  map.Add(L"AttrVersion", CLumInt(2), 0);
  map.Add(L"G").Add(L"B", CLumAnything(L"\x00E9\x4E2D"), 1);
  map.Add(L"G").Add(L"A", CLumAnything(L"2"), 2);
  FileObject file;
  ASSERT_TRUE(SaveAttributes(map, file, L"S"));
  ASSERT_TRUE(file.Save(PathText(folder.File("saved.ini"))));
  CAttributeMap loaded;
  ASSERT_TRUE(LoadAttributesOrdered(loaded, PathText(folder.File("saved.ini")), L"S", false));
  CAttributeMap unordered;
  ASSERT_TRUE(LoadAttributes(unordered, file, L"S", false));
  EXPECT_EQ(Describe(loaded), Describe(unordered));
  EXPECT_EQ(loaded.Count(L"G"), 2);
}

}  // namespace
