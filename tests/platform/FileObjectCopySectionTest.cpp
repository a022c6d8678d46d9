// CopySection, and where items stand that are set afterwards: the way a tree is saved over its
// former self.
#include <string>
#include <utility>
#include <vector>

#include "tests/platform/FileObjectTesting.h"

namespace {

using Pairs = std::vector<std::pair<const wchar_t*, const wchar_t*>>;

class FileObjectCopySection : public FileObjectTesting {
 protected:
  static void Set(FileObject& file, const Pairs& items) {
    for (const auto& [key, value] : items) {
      EXPECT_TRUE(file.SetItem(L"S", key, value, true));
    }
  }

  // Empties section S of the loaded file but for `kept`, sets `items` and gives the saved bytes.
  std::string SavedOver(const std::string& bytes, const Pairs& kept, const Pairs& items) {
    FileObject file = Loaded(bytes);
    FileObject scratch;
    EXPECT_TRUE(scratch.CreateSection(L"S", false));
    Set(scratch, kept);
    EXPECT_TRUE(file.CopySection(L"S", scratch));
    EXPECT_EQ(Items(file, L"S"), Items(scratch, L"S"));
    Set(file, items);
    const std::string walk = Items(file, L"S");
    const std::string saved = Saved(file);
    EXPECT_EQ(Items(file, L"S"), walk);
    EXPECT_EQ(Items(Loaded(saved), L"S"), walk);
    return saved;
  }
};

const char kCommented[] =
    "; top\n[S]\n; about a\na = 1\n\n; about b\n\tb=2\nwhat is this\nc=3 \n\n; about T\n[T]\nx=9";

TEST_F(FileObjectCopySection, SameItemsGiveTheSameBytes) {
  EXPECT_EQ(SavedOver(kCommented, {}, {{L"a", L"1"}, {L"b", L"2"}, {L"c", L"3 "}}), kCommented);
}

struct Resave {
  const char* note;
  const char* bytes;
  Pairs kept;
  Pairs items;
  const char* saved;
};

TEST_F(FileObjectCopySection, PutsItemsWhereTheirLinesWereAsFarAsTheOrderAllows) {
  const Resave cases[] = {
      {"nothing set", "[S]\n;1\na=1\n;2\nb=2\n;3\n", {}, {}, "[S]\n;1\n;2\n;3\n"},
      {"one changed", "[S]\na = 1\nb=2\n", {}, {{L"a", L"5"}, {L"b", L"2"}}, "[S]\na = 5\nb=2\n"},
      {"one gone",
       "[S]\n;1\na=1\n;2\nb=2\n;3\nc=3\n",
       {},
       {{L"a", L"1"}, {L"c", L"3"}},
       "[S]\n;1\na=1\n;2\n;3\nc=3\n"},
      {"new between neighbours",
       "[S]\na=1\n;2\nb=2\n",
       {},
       {{L"a", L"1"}, {L"n", L"0"}, {L"b", L"2"}},
       "[S]\na=1\nn=0\n;2\nb=2\n"},
      {"new first", "[S]\n;1\na=1\n", {}, {{L"n", L"0"}, {L"a", L"1"}}, "[S]\n;1\nn=0\na=1\n"},
      {"new last",
       "[S]\na=1\n\n;T\n[T]\n",
       {},
       {{L"a", L"1"}, {L"n", L"0"}},
       "[S]\na=1\nn=0\n\n;T\n[T]\n"},
      {"other order moves the line with its blanks",
       "[S]\n;1\na = 1\n;2\nb = 2\n",
       {},
       {{L"b", L"2"}, {L"a", L"1"}},
       "[S]\n;1\n;2\nb = 2\na = 1\n"},
      {"kept items stay",
       "[S]\nTitle = X\na=1\nNote=Y\nb=2\n",
       {{L"Title", L"X"}, {L"Note", L"Y"}},
       {{L"a", L"1"}, {L"b", L"2"}},
       "[S]\nTitle = X\na=1\nNote=Y\nb=2\n"},
      {"new first follows the kept ones above",
       "[S]\nTitle=X\na=1\n",
       {{L"Title", L"X"}},
       {{L"n", L"0"}, {L"a", L"1"}},
       "[S]\nTitle=X\nn=0\na=1\n"},
      {"setting a kept item takes the order along",
       "[S]\na=1\nk=2\nb=3\n",
       {{L"k", L"2"}},
       {{L"a", L"1"}, {L"k", L"7"}, {L"n", L"0"}, {L"b", L"3"}},
       "[S]\na=1\nk=7\nn=0\nb=3\n"},
      {"other order of kept items",
       "[S]\na=1\nb=2\nc=3\n",
       {{L"c", L"3"}, {L"a", L"1"}},
       {{L"b", L"2"}},
       "[S]\nb=2\nc=3\na=1\n"},
      {"only new items",
       "[S]\nk=1\n",
       {{L"k", L"1"}},
       {{L"n", L"0"}, {L"m", L"0"}},
       "[S]\nk=1\nn=0\nm=0\n"},
      {"a kept item that the file lacks",
       "[S]\na=1\n",
       {{L"k", L"1"}},
       {{L"a", L"1"}},
       "[S]\nk=1\na=1\n"},
      {"a kept item with another value",
       "[S]\na=1\nk=1\n",
       {{L"k", L"2"}},
       {{L"a", L"1"}},
       "[S]\na=1\nk=2\n"},
      {"overridden lines come back with their key",
       "[S]\na=1\nb=2\na=3\n",
       {},
       {{L"b", L"2"}, {L"a", L"3"}},
       "[S]\na=1\nb=2\na=3\n"},
      {"overridden lines go with their key",
       "[S]\na=1\nb=2\na=3\n",
       {},
       {{L"b", L"2"}},
       "[S]\nb=2\n"},
      {"two blocks",
       "[S]\na=1\n[T]\n[S]\nb=2\n",
       {},
       {{L"a", L"1"}, {L"n", L"0"}, {L"b", L"2"}, {L"m", L"0"}},
       "[S]\na=1\nn=0\n[T]\n[S]\nb=2\nm=0\n"},
      {"last line without terminator moves",
       "[S]\na=1\nb=2",
       {},
       {{L"b", L"2"}, {L"a", L"1"}},
       "[S]\nb=2\na=1\n"},
      {"last line without terminator stays",
       "[S]\r\na=1\r\nb=2",
       {},
       {{L"a", L"1"}, {L"b", L"2"}},
       "[S]\r\na=1\r\nb=2"},
  };
  for (const Resave& test : cases) {
    EXPECT_EQ(SavedOver(test.bytes, test.kept, test.items), test.saved) << test.note;
  }
}

TEST_F(FileObjectCopySection, GivesInsertionOrderInMemory) {
  FileObject file;
  Set(file, {{L"a", L"1"}, {L"b", L"2"}, {L"c", L"3"}, {L"d", L"4"}});
  FileObject from;
  Set(from, {{L"d", L"4"}, {L"b", L"5"}});
  EXPECT_TRUE(file.CopySection(L"S", from));
  EXPECT_EQ(Items(file, L"S"), "d=4 b=5 ");
  Set(file, {{L"c", L"1"}, {L"a", L"2"}});
  EXPECT_EQ(Items(file, L"S"), "d=4 b=5 c=1 a=2 ");
  EXPECT_EQ(Saved(file), WithSystemLineEnds("[S]\nd=4\nb=5\nc=1\na=2\n"));
}

TEST_F(FileObjectCopySection, ForgetsPlacesWhenSaved) {
  FileObject file = Loaded("[S]\na=1\nb=2\nc=3\n");
  EXPECT_TRUE(file.CopySection(L"S", FileObject()));
  Set(file, {{L"b", L"2"}});
  EXPECT_EQ(Saved(file), "[S]\nb=2\n");
  Set(file, {{L"c", L"3"}, {L"a", L"1"}});
  EXPECT_EQ(Saved(file), "[S]\nb=2\nc=3\na=1\n");
}

TEST_F(FileObjectCopySection, KeepsPlacesWhenSavingFails) {
  FileObject file = Loaded("[S]\na=1\n;2\nb=2\n");
  EXPECT_TRUE(file.CopySection(L"S", FileObject()));
  Set(file, {{L"a", L"1"}});
  EXPECT_FALSE(file.Save(PathText(m_folder.Path())));
  Set(file, {{L"b", L"2"}});
  EXPECT_EQ(Saved(file), "[S]\na=1\n;2\nb=2\n");
}

TEST_F(FileObjectCopySection, HidesItemsThatAreOnlyRemembered) {
  FileObject file = Loaded("[S]\na=1\nb=2\n");
  EXPECT_TRUE(file.CopySection(L"S", FileObject()));
  CString value = L"untouched";
  EXPECT_EQ(file.ItemCount(L"S"), 0);
  EXPECT_FALSE(file.GetItem(L"S", L"a", value));
  EXPECT_FALSE(file.SetItem(L"S", L"a", L"5", false));
  EXPECT_FALSE(file.RemoveItem(L"S", L"a"));
  EXPECT_EQ(value, L"untouched");
  EXPECT_TRUE(file.HasSection(L"S"));
  EXPECT_EQ(Items(FileObject(file), L"S"), "");
}

TEST_F(FileObjectCopySection, CopiesKeepPlaces) {
  FileObject file = Loaded(kCommented);
  EXPECT_TRUE(file.CopySection(L"S", FileObject()));
  Set(file, {{L"a", L"1"}});
  FileObject copy(file);
  file = FileObject();
  Set(copy, {{L"b", L"2"}, {L"c", L"3 "}});
  EXPECT_EQ(Saved(copy), kCommented);
}

TEST_F(FileObjectCopySection, FromItselfChangesNothing) {
  for (const char* bytes : {kCommented, "[S]\na=1\rx\nb=\r\r\nc\r=1\n", "[T]\n", "a=1\n[S]\nb=1"}) {
    FileObject file = Loaded(bytes);
    for (const CString& section : file.SectionNames()) {
      EXPECT_TRUE(file.CopySection(section, file));
    }
    EXPECT_TRUE(file.CopySection(L"S", file));
    EXPECT_EQ(Saved(file), bytes);
  }
}

TEST_F(FileObjectCopySection, MakesAndEmptiesSections) {
  FileObject from = Loaded("[A]\na=1\n[B]\n");
  FileObject file = Loaded("[C]\nc=1\n");
  EXPECT_TRUE(file.CopySection(L"A", from));
  EXPECT_TRUE(file.CopySection(L"B", from));
  EXPECT_TRUE(file.CopySection(L"C", from));
  EXPECT_TRUE(file.CopySection(L"D", from));
  EXPECT_FALSE(file.CopySection(L"D]", from));
  EXPECT_EQ(file.SectionNames(), (std::vector<CString>{L"C", L"A", L"B"}));
  EXPECT_EQ(Saved(file), "[C]\n\n[A]\na=1\n\n[B]\n");
}

TEST_F(FileObjectCopySection, CopiesTheItemsAboveAllSections) {
  FileObject file = Loaded("; top\nz=1\n\n[A]\n");
  EXPECT_TRUE(file.CopySection(L"", Loaded("x=1\ny=2\n")));
  EXPECT_EQ(Saved(file), "; top\nx=1\ny=2\n\n[A]\n");
}

TEST_F(FileObjectCopySection, RefusesValuesThatCannotBeWrittenAnew) {
  const FileObject from = Loaded("[S]\na=1\nb=x\ry\n");
  for (const char* bytes : {"[S]\nc=1\n", "[T]\n", "[S]\nb=x\rz\n", "[S]\nb=xy\n"}) {
    FileObject file = Loaded(bytes);
    EXPECT_FALSE(file.CopySection(L"S", from)) << bytes;
    EXPECT_EQ(Saved(file), bytes);
  }
}

TEST_F(FileObjectCopySection, SurvivesRemovalsInBetween) {
  FileObject file = Loaded("[S]\na=1\nb=2\nc=3\nd=4\n");
  EXPECT_TRUE(file.CopySection(L"S", FileObject()));
  Set(file, {{L"a", L"1"}, {L"n", L"0"}, {L"c", L"3"}});
  EXPECT_TRUE(file.RemoveItem(L"S", L"c"));
  EXPECT_TRUE(file.RemoveItem(L"S", L"n"));
  Set(file, {{L"m", L"0"}, {L"b", L"2"}, {L"d", L"4"}});
  EXPECT_EQ(Items(file, L"S"), "a=1 m=0 b=2 d=4 ");
  EXPECT_TRUE(file.CopySection(L"S", FileObject()));
  Set(file, {{L"d", L"4"}});
  EXPECT_TRUE(file.RemoveItem(L"S", L"d"));
  Set(file, {{L"b", L"2"}, {L"a", L"1"}});
  EXPECT_EQ(Items(file, L"S"), "b=2 a=1 ");
  EXPECT_TRUE(file.RemoveSection(L"S"));
  Set(file, {{L"d", L"4"}, {L"a", L"1"}});
  EXPECT_EQ(Saved(file), "[S]\nd=4\na=1\n");
}

}  // namespace
