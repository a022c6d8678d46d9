// Items that get another key in their place, and items made before others.
#include <string>

#include "platform/FileObject.h"
#include "tests/platform/FileObjectTesting.h"

namespace {

class FileObjectPlaces : public FileObjectTesting {};

struct Rename {
  const char* note;
  std::string bytes;
  const wchar_t* key;
  const wchar_t* newKey;
  std::string saved;
};

TEST_F(FileObjectPlaces, RenamingChangesNoByteButThoseOfTheKey) {
  const Rename cases[] = {
      {"in the middle", "[S]\na=1\n; c\nb = 2 \r\nc=3\n", L"b", L"x(1).y",
       "[S]\na=1\n; c\nx(1).y = 2 \r\nc=3\n"},
      {"blanks before the key", "[S]\n \tb\t=\t2", L"b", L"x", "[S]\n \tx\t=\t2"},
      {"stray bytes in the value", "[S]\nb=\xE4\n", L"b", L"\u00E4",
       "[S]\n" + AnsiBytes(L"\u00E4") + "=\xE4\n"},
      {"every line of the key", "[S]\nb=1\na=0\nb=2\n", L"b", L"x", "[S]\nx=1\na=0\nx=2\n"},
      {"the same key with stray bytes", "[S]\n\xE4=1\n", L"\u00E4", L"b", "[S]\nb=1\n"},
  };
  for (const Rename& test : cases) {
    FileObject file = Loaded(test.bytes);
    EXPECT_TRUE(file.RenameItem(L"S", test.key, test.newKey)) << test.note;
    CString value = L"untouched";
    EXPECT_FALSE(file.GetItem(L"S", test.key, value)) << test.note;
    EXPECT_TRUE(file.GetItem(L"S", test.newKey, value)) << test.note;
    EXPECT_EQ(Saved(file), test.saved) << test.note;
  }
}

TEST_F(FileObjectPlaces, RenamingBackBringsTheBytesBack) {
  FileObject file = Loaded("[S]\n\xE4 = 1\n");
  EXPECT_TRUE(file.RenameItem(L"S", L"\u00E4", L"b"));
  EXPECT_TRUE(file.RenameItem(L"S", L"b", L"\u00E4"));
  EXPECT_EQ(Saved(file), "[S]\n\xE4 = 1\n");
}

TEST_F(FileObjectPlaces, RenamedItemCanBeSetAndRemoved) {
  FileObject file = Loaded("[S]\na=1\nb=2\n");
  EXPECT_TRUE(file.RenameItem(L"S", L"a", L"x"));
  EXPECT_TRUE(file.SetItem(L"S", L"x", L"7", false));
  EXPECT_EQ(Items(file, L"S"), "x=7 b=2 ");
  EXPECT_TRUE(file.SetItem(L"S", L"a", L"new", true));
  EXPECT_EQ(Saved(file), "[S]\nx=7\nb=2\na=new\n");
  EXPECT_TRUE(file.RemoveItem(L"S", L"x"));
  EXPECT_EQ(Saved(file), "[S]\nb=2\na=new\n");
}

TEST_F(FileObjectPlaces, RenamingRefusesWhatItCannotDo) {
  const char* bytes = "[S]\na=1\nb=2\n";
  FileObject file = Loaded(bytes);
  EXPECT_FALSE(file.RenameItem(L"S", L"missing", L"x"));
  EXPECT_FALSE(file.RenameItem(L"T", L"a", L"x"));
  EXPECT_FALSE(file.RenameItem(L"S", L"a", L"b"));
  EXPECT_FALSE(file.RenameItem(L"S", L"a", L"a"));
  for (const wchar_t* key : {L"", L"x=y", L";x", L"//x", L"[x", L" x", L"x\t", L"x\ny"}) {
    EXPECT_FALSE(file.RenameItem(L"S", L"a", key)) << WideToUtf8(key).GetString();
  }
  EXPECT_EQ(Items(file, L"S"), "a=1 b=2 ");
  EXPECT_EQ(Saved(file), bytes);
}

TEST_F(FileObjectPlaces, RenamingTakesTheKeyOfARememberedPlace) {
  FileObject file = Loaded("[S]\na=1\nb=2\n");
  FileObject onlyB;
  onlyB.SetItem(L"S", L"b", L"2", true);
  EXPECT_TRUE(file.CopySection(L"S", onlyB));
  EXPECT_TRUE(file.RenameItem(L"S", L"b", L"a"));
  EXPECT_EQ(Items(file, L"S"), "a=2 ");
  EXPECT_EQ(Saved(file), "[S]\na=2\n");
}

TEST_F(FileObjectPlaces, InsertsRightBeforeAnItem) {
  FileObject file = Loaded("[S]\r\n; first\r\na=1\r\nb=2\r\n[T]\r\na=9\r\n");
  EXPECT_TRUE(file.InsertItem(L"S", L"a", L"v", L"0,2"));
  EXPECT_TRUE(file.InsertItem(L"S", L"b", L"w", L"3"));
  EXPECT_EQ(Items(file, L"S"), "v=0,2 a=1 w=3 b=2 ");
  EXPECT_EQ(file.ItemCount(L"S"), 4);
  EXPECT_EQ(Saved(file), "[S]\r\n; first\r\nv=0,2\r\na=1\r\nw=3\r\nb=2\r\n[T]\r\na=9\r\n");
}

TEST_F(FileObjectPlaces, InsertsInMemory) {
  FileObject file;
  file.SetItem(L"S", L"a", L"1", true);
  EXPECT_TRUE(file.InsertItem(L"S", L"a", L"b", L"2"));
  EXPECT_TRUE(file.SetItem(L"S", L"c", L"3", true));
  EXPECT_EQ(Items(file, L"S"), "b=2 a=1 c=3 ");
}

TEST_F(FileObjectPlaces, InsertingRefusesWhatItCannotDo) {
  const char* bytes = "[S]\na=1\nb=2\n";
  FileObject file = Loaded(bytes);
  EXPECT_FALSE(file.InsertItem(L"S", L"missing", L"x", L"1"));
  EXPECT_FALSE(file.InsertItem(L"T", L"a", L"x", L"1"));
  EXPECT_FALSE(file.InsertItem(L"S", L"a", L"b", L"1"));
  EXPECT_FALSE(file.InsertItem(L"S", L"a", L"x=", L"1"));
  EXPECT_FALSE(file.InsertItem(L"S", L"a", L"x", L"1\n"));
  EXPECT_EQ(Saved(file), bytes);
}

TEST_F(FileObjectPlaces, InsertingTakesTheKeyOfARememberedPlace) {
  FileObject file = Loaded("[S]\na=1\nb=2\n");
  FileObject onlyB;
  onlyB.SetItem(L"S", L"b", L"2", true);
  EXPECT_TRUE(file.CopySection(L"S", onlyB));
  EXPECT_TRUE(file.InsertItem(L"S", L"b", L"a", L"7"));
  EXPECT_EQ(Saved(file), "[S]\na=7\nb=2\n");
}

}  // namespace
