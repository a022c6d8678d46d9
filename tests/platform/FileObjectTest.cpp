// Sections and items of a FileObject: the grammar of the lines, look-up, change, removal and walk.
#include "platform/FileObject.h"

#include <map>
#include <utility>
#include <vector>

#include "tests/platform/FileObjectTesting.h"

namespace {

using FileObjectTest = FileObjectTesting;

// ---- The grammar

TEST_F(FileObjectTest, ReadsItemsOfSections) {
  const FileObject file = Loaded("; a comment\n[Survey]\nUnit=1,m\nSensor.Offset = 0,1.5\n");
  EXPECT_EQ(Value(file, L"Survey", L"Unit"), L"1,m");
  EXPECT_EQ(Value(file, L"Survey", L"Sensor.Offset"), L"0,1.5");
  EXPECT_EQ(file.ItemCount(L"Survey"), 2);
}

struct ItemLine {
  const char* line;
  const wchar_t* key;
  const wchar_t* value;
};

TEST_F(FileObjectTest, ReadsKeyAndValueOfALine) {
  const ItemLine cases[] = {
      {"k=v", L"k", L"v"},
      {" \tk\t = \t v", L"k", L"v"},
      {"k=v \t", L"k", L"v \t"},
      {"k=", L"k", L""},
      {"k=  ", L"k", L""},
      {"k", nullptr, nullptr},
      {"=v", nullptr, nullptr},
      {" = v", nullptr, nullptr},
      {"a b=v", L"a b", L"v"},
      {"k=a=b", L"k", L"a=b"},
      {"k=v;x", L"k", L"v;x"},
      {"k=v//x", L"k", L"v//x"},
      {"k=[v]", L"k", L"[v]"},
      {"/k=v", L"/k", L"v"},
      {"k]=v", L"k]", L"v"},
      {";k=v", nullptr, nullptr},
      {" \t;k=v", nullptr, nullptr},
      {"//k=v", nullptr, nullptr},
      {"\t// k=v", nullptr, nullptr},
      {"[k=v", nullptr, nullptr},
      {"k=v\r", L"k", L"v"},
      {"k=v\r\r", L"k", L"v\r"},
      {"k=a\rb", L"k", L"a\rb"},
      {"k\v=\fv", L"k\v", L"\fv"},
  };
  for (const ItemLine& test : cases) {
    const FileObject file = Loaded(std::string("[S]\n") + test.line + "\n");
    EXPECT_EQ(file.ItemCount(L"S"), test.key == nullptr ? 0 : 1) << test.line;
    if (test.key != nullptr) {
      EXPECT_EQ(Value(file, L"S", test.key), CString(test.value)) << test.line;
    }
  }
}

struct HeaderLine {
  const char* line;
  const wchar_t* name;
};

TEST_F(FileObjectTest, ReadsSectionNameOfALine) {
  const HeaderLine cases[] = {
      {"[A]", L"A"},   {" \t[A] ; rest", L"A"}, {"[ A ]", L" A "},     {"[A]B]", L"A"},
      {"[[A]", L"[A"}, {"[A]=1", L"A"},         {"[A;//B]", L"A;//B"}, {"[]", L""},
  };
  for (const HeaderLine& test : cases) {
    const FileObject file = Loaded(std::string(test.line) + "\nk=v\n");
    EXPECT_EQ(Value(file, test.name, L"k"), L"v") << test.line;
    EXPECT_EQ(file.SectionNames(), std::vector<CString>{test.name}) << test.line;
  }
}

TEST_F(FileObjectTest, ComparesNamesAndKeysExactly) {
  const FileObject file = Loaded("[S]\nKey=1\nkey=2\n[s]\nKey=3\n");
  EXPECT_EQ(Value(file, L"S", L"Key"), L"1");
  EXPECT_EQ(Value(file, L"S", L"key"), L"2");
  EXPECT_EQ(Value(file, L"s", L"Key"), L"3");
  EXPECT_EQ(Value(file, L"s", L"key"), L"untouched");
}

// Names whose hashes are equal, where characters have 32 bits.
TEST_F(FileObjectTest, TellsKeysOfTheSameHashApart) {
  FileObject file = Loaded("[S]\nName12970=1\nName36060=2\n[T]\nName12970=3\n");
  EXPECT_EQ(Value(file, L"S", L"Name12970"), L"1");
  EXPECT_EQ(Value(file, L"S", L"Name36060"), L"2");
  EXPECT_EQ(Value(file, L"T", L"Name36060"), L"untouched");
}

TEST_F(FileObjectTest, KeepsNulsInKeysAndValues) {
  const std::string bytes("[S]\nk\0x=a\0b\nk\0y=c\n", 19);
  FileObject file = Loaded(bytes);
  EXPECT_EQ(Value(file, L"S", CString(L"k\0x", 3)), CString(L"a\0b", 3));
  EXPECT_EQ(Value(file, L"S", CString(L"k\0y", 3)), L"c");
  EXPECT_EQ(Value(file, L"S", L"k"), L"untouched");
  EXPECT_EQ(Saved(file), bytes);
}

// ---- Duplicates

TEST_F(FileObjectTest, LetsTheLastLineOfAKeyCount) {
  FileObject file = Loaded("[S]\na=1\nb=2\na=3\n");
  EXPECT_EQ(Value(file, L"S", L"a"), L"3");
  EXPECT_EQ(file.ItemCount(L"S"), 2);
  EXPECT_EQ(Items(file, L"S"), "b=2 a=3 ");
  EXPECT_TRUE(file.SetItem(L"S", L"a", L"4", false));
  EXPECT_EQ(Saved(file), "[S]\na=1\nb=2\na=4\n");
}

TEST_F(FileObjectTest, RemovesEveryLineOfAKey) {
  FileObject file = Loaded("[S]\na=1\nb=2\na=3\na=4\n");
  EXPECT_TRUE(file.RemoveItem(L"S", L"a"));
  EXPECT_EQ(Saved(file), "[S]\nb=2\n");
  EXPECT_FALSE(file.RemoveItem(L"S", L"a"));
}

TEST_F(FileObjectTest, ContinuesASectionThatAppearsAgain) {
  FileObject file = Loaded("[A]\na=1\n[B]\nx=9\n[A]\nb=2\na=3\n[C]\n");
  EXPECT_EQ(Items(file, L"A"), "b=2 a=3 ");
  EXPECT_EQ(file.SectionNames(), (std::vector<CString>{L"A", L"B", L"C"}));
  EXPECT_TRUE(file.SetItem(L"A", L"c", L"4", true));
  EXPECT_EQ(Saved(file), "[A]\na=1\n[B]\nx=9\n[A]\nb=2\na=3\nc=4\n[C]\n");
  EXPECT_TRUE(file.RemoveSection(L"A"));
  EXPECT_EQ(Saved(file), "[B]\nx=9\n[C]\n");
}

// ---- Setting items

TEST_F(FileObjectTest, ReplacesOrCreates) {
  FileObject file;
  EXPECT_FALSE(file.SetItem(L"S", L"a", L"1", false));
  EXPECT_FALSE(file.HasSection(L"S"));
  EXPECT_TRUE(file.SetItem(L"S", L"a", L"1", true));
  EXPECT_FALSE(file.SetItem(L"S", L"b", L"1", false));
  EXPECT_TRUE(file.SetItem(L"S", L"a", L"2", false));
  EXPECT_EQ(Items(file, L"S"), "a=2 ");
}

TEST_F(FileObjectTest, WalksInTheOrderOfInsertion) {
  FileObject file;
  for (const wchar_t* key : {L"z", L"m", L"a", L"q"}) {
    EXPECT_TRUE(file.SetItem(L"S", key, key, true));
  }
  EXPECT_TRUE(file.SetItem(L"S", L"m", L"again", true));
  EXPECT_TRUE(file.RemoveItem(L"S", L"a"));
  EXPECT_TRUE(file.SetItem(L"S", L"a", L"late", true));
  EXPECT_EQ(Items(file, L"S"), "z=z m=again q=q a=late ");
  EXPECT_EQ(Items(Loaded(Saved(file)), L"S"), "z=z m=again q=q a=late ");
}

struct Refusal {
  const wchar_t* section;
  const wchar_t* key;
  const wchar_t* value;
  const char* why;
};

TEST_F(FileObjectTest, RefusesWhatCannotBeReadBack) {
  const Refusal cases[] = {
      {L"S", L"", L"v", "empty key"},
      {L"S", L"[k", L"v", "key like a section"},
      {L"S", L";k", L"v", "key like a comment"},
      {L"S", L"//k", L"v", "key like a comment"},
      {L"S", L"k=x", L"v", "equals sign in the key"},
      {L"S", L"k\nx", L"v", "line feed in the key"},
      {L"S", L"k\rx", L"v", "return in the key"},
      {L"S", L" k", L"v", "blank before the key"},
      {L"S", L"k ", L"v", "blank after the key"},
      {L"S", L"\tk", L"v", "tab before the key"},
      {L"S", L"k\t", L"v", "tab after the key"},
      {L"S", L"k", L"a\nb", "line feed in the value"},
      {L"S", L"k", L"a\rb", "return in the value"},
      {L"S", L"k", L"v\r", "return after the value"},
      {L"A]B", L"k", L"v", "bracket in the section"},
      {L"A\nB", L"k", L"v", "line feed in the section"},
      {L"A\r", L"k", L"v", "return in the section"},
  };
  for (const Refusal& test : cases) {
    FileObject file = Loaded("[S]\nold=1\n");
    EXPECT_FALSE(file.SetItem(test.section, test.key, test.value, true)) << test.why;
    EXPECT_EQ(Saved(file), "[S]\nold=1\n") << test.why;
  }
}

TEST_F(FileObjectTest, AcceptsWhateverReadsBack) {
  for (const wchar_t* key : {L"/k", L"k;", L"a b", L"k]", L"a[0]", L"k//", L"Höhe", L"@tr.x(1)"}) {
    for (const wchar_t* value : {L"", L"v ", L"=", L"[v]", L";v", L"//", L"a\tb", L"äöü"}) {
      FileObject file;
      EXPECT_TRUE(file.SetItem(L"S", key, value, true)) << WideToUtf8(key).GetString();
      const FileObject read = Loaded(Saved(file));
      EXPECT_EQ(Value(read, L"S", key), CString(value)) << WideToUtf8(key).GetString();
    }
  }
}

TEST_F(FileObjectTest, RefusesBadValueOfItemThatExists) {
  FileObject file = Loaded("[S]\nk=1\n");
  EXPECT_FALSE(file.SetItem(L"S", L"k", L"a\nb", false));
  EXPECT_EQ(Value(file, L"S", L"k"), L"1");
}

// ---- Reading items

TEST_F(FileObjectTest, LeavesOutputsWhenThereIsNoItem) {
  const FileObject file = Loaded("[S]\na=1\n[Empty]\n");
  FobjSection walk;
  CString key = L"key";
  CString value = L"value";
  EXPECT_FALSE(file.GetItem(L"S", L"b", value));
  EXPECT_FALSE(file.GetItem(L"T", L"a", value));
  EXPECT_FALSE(file.GetFirstMapEntry(walk, L"T", key, value));
  EXPECT_FALSE(file.GetNextMapEntry(walk, key, value));
  EXPECT_FALSE(file.GetFirstMapEntry(walk, L"Empty", key, value));
  EXPECT_FALSE(file.GetNextMapEntry(walk, key, value));
  EXPECT_EQ(key, L"key");
  EXPECT_EQ(value, L"value");
}

TEST_F(FileObjectTest, StaysAtTheEndOfAWalk) {
  const FileObject file = Loaded("[S]\na=1\n");
  FobjSection walk;
  CString key;
  CString value;
  ASSERT_TRUE(file.GetFirstMapEntry(walk, L"S", key, value));
  key = L"key";
  EXPECT_FALSE(file.GetNextMapEntry(walk, key, value));
  EXPECT_FALSE(file.GetNextMapEntry(walk, key, value));
  EXPECT_EQ(key, L"key");
}

TEST_F(FileObjectTest, AllowsSettingValuesDuringAWalk) {
  FileObject file = Loaded("[S]\na=1\nb=2\nc=3\n");
  FobjSection walk;
  CString key;
  CString value;
  for (bool found = file.GetFirstMapEntry(walk, L"S", key, value); found;
       found = file.GetNextMapEntry(walk, key, value)) {
    EXPECT_TRUE(file.SetItem(L"S", key, value + L"0", false));
  }
  EXPECT_EQ(Items(file, L"S"), "a=10 b=20 c=30 ");
}

// ---- Removing items

TEST_F(FileObjectTest, RemovesOneItem) {
  FileObject file = Loaded("[S]\na=1\n; about b\nb=2\nc=3\n");
  EXPECT_TRUE(file.RemoveItem(L"S", L"b"));
  EXPECT_FALSE(file.RemoveItem(L"S", L"b"));
  EXPECT_FALSE(file.RemoveItem(L"T", L"a"));
  EXPECT_EQ(file.ItemCount(L"S"), 2);
  EXPECT_EQ(Value(file, L"S", L"b"), L"untouched");
  EXPECT_EQ(Saved(file), "[S]\na=1\n; about b\nc=3\n");
}

TEST_F(FileObjectTest, AppendsAfterTheLastItemIsRemoved) {
  FileObject file = Loaded("[S]\na=1\n; note\nb=2\n\n[T]\n");
  EXPECT_TRUE(file.RemoveItem(L"S", L"b"));
  EXPECT_TRUE(file.SetItem(L"S", L"c", L"3", true));
  EXPECT_EQ(Saved(file), "[S]\na=1\nc=3\n; note\n\n[T]\n");
}

// ---- Sections

TEST_F(FileObjectTest, CreatesSections) {
  FileObject file;
  EXPECT_TRUE(file.CreateSection(L"A", false));
  EXPECT_TRUE(file.CreateSection(L"A", false));
  EXPECT_TRUE(file.HasSection(L"A"));
  EXPECT_EQ(file.ItemCount(L"A"), 0);
  EXPECT_FALSE(file.CreateSection(L"A]", false));
  EXPECT_FALSE(file.CreateSection(L"A\nB", true));
  EXPECT_FALSE(file.CreateSection(L"A\r", false));
  EXPECT_EQ(file.SectionNames(), std::vector<CString>{L"A"});
  EXPECT_EQ(Saved(file), WithSystemLineEnds("[A]\n"));
}

TEST_F(FileObjectTest, ClearsASectionThatIsThere) {
  FileObject file = Loaded("[A]\n; note\na=1\n\n[B]\nb=2\n");
  EXPECT_TRUE(file.CreateSection(L"A", false));
  EXPECT_EQ(file.ItemCount(L"A"), 1);
  EXPECT_TRUE(file.CreateSection(L"A", true));
  EXPECT_EQ(file.ItemCount(L"A"), 0);
  EXPECT_EQ(Items(file, L"A"), "");
  EXPECT_TRUE(file.HasSection(L"A"));
  EXPECT_EQ(Saved(file), "[A]\n; note\n\n[B]\nb=2\n");
}

TEST_F(FileObjectTest, RemovesASectionWithAllItsLines) {
  FileObject file = Loaded("; top\n[A]\n; note\na=1\n\n[B]\nb=2\n");
  EXPECT_FALSE(file.RemoveSection(L"C"));
  EXPECT_TRUE(file.RemoveSection(L"A"));
  EXPECT_FALSE(file.RemoveSection(L"A"));
  EXPECT_FALSE(file.HasSection(L"A"));
  EXPECT_EQ(Value(file, L"A", L"a"), L"untouched");
  EXPECT_EQ(Saved(file), "; top\n[B]\nb=2\n");
  EXPECT_TRUE(file.RemoveSection(L"B"));
  EXPECT_EQ(Saved(file), "; top\n");
  EXPECT_TRUE(file.SetItem(L"A", L"x", L"1", true));
  EXPECT_EQ(Saved(file), "; top\n\n[A]\nx=1\n");
}

TEST_F(FileObjectTest, ReusesWhatRemovedSectionsLeave) {
  FileObject file;
  for (int round = 0; round < 3; ++round) {
    EXPECT_TRUE(file.SetItem(L"A", L"a", L"1", true));
    EXPECT_TRUE(file.SetItem(L"B", L"b", L"2", true));
    EXPECT_TRUE(file.SetItem(L"C", L"c", L"3", true));
    EXPECT_TRUE(file.RemoveSection(L"B"));
    EXPECT_TRUE(file.RemoveSection(L"A"));
    EXPECT_EQ(file.SectionNames(), std::vector<CString>{L"C"});
    EXPECT_TRUE(file.RemoveSection(L"C"));
    EXPECT_TRUE(file.SectionNames().empty());
  }
}

TEST_F(FileObjectTest, TakesItemsAboveTheFirstSectionUnderTheEmptyName) {
  FileObject file = Loaded("; top\na=1\n\n[A]\nb=2\n");
  EXPECT_TRUE(file.HasSection(L""));
  EXPECT_EQ(file.SectionNames(), (std::vector<CString>{L"", L"A"}));
  EXPECT_EQ(Items(file, L""), "a=1 ");
  EXPECT_TRUE(file.SetItem(L"", L"c", L"3", true));
  EXPECT_EQ(Saved(file), "; top\na=1\nc=3\n\n[A]\nb=2\n");
  EXPECT_TRUE(file.RemoveSection(L""));
  EXPECT_FALSE(file.HasSection(L""));
  EXPECT_EQ(Saved(file), "[A]\nb=2\n");
}

TEST_F(FileObjectTest, PutsTheFirstItemWithoutSectionBelowTheLeadingComment) {
  FileObject file = Loaded("; top\n\n; about A\n[A]\nb=2\n");
  EXPECT_FALSE(file.HasSection(L""));
  EXPECT_FALSE(file.RemoveSection(L""));
  EXPECT_TRUE(file.SetItem(L"", L"a", L"1", true));
  EXPECT_EQ(Saved(file), "; top\na=1\n\n; about A\n[A]\nb=2\n");
}

TEST_F(FileObjectTest, TakesASlashForAKeyButNotTwo) {
  FileObject file;
  EXPECT_TRUE(file.SetItem(L"S", L"/", L"1", true));
  EXPECT_TRUE(file.SetItem(L"S", L"/a", L"2", true));
  EXPECT_FALSE(file.SetItem(L"S", L"//", L"3", true));
  EXPECT_EQ(Items(file, L"S"), "/=1 /a=2 ");
}

TEST_F(FileObjectTest, HasTheEmptyNameWhereAnEmptyHeaderStands) {
  EXPECT_TRUE(Loaded("[A]\n[]\n").HasSection(L""));
  EXPECT_FALSE(Loaded("[A]\n").HasSection(L""));
}

TEST_F(FileObjectTest, PutsTheFirstItemBelowCommentsThatEndTheFile) {
  FileObject file = Loaded("[A]\n; about A\n; more\n");
  EXPECT_TRUE(file.SetItem(L"A", L"a", L"1", true));
  EXPECT_EQ(Saved(file), "[A]\n; about A\n; more\na=1\n");
}

TEST_F(FileObjectTest, ContinuesTheEmptyNameUnderAnEmptyHeader) {
  FileObject file = Loaded("a=1\n[A]\n[]\nb=2\n");
  EXPECT_EQ(Items(file, L""), "a=1 b=2 ");
  EXPECT_TRUE(file.SetItem(L"", L"c", L"3", true));
  EXPECT_EQ(Saved(file), "a=1\n[A]\n[]\nb=2\nc=3\n");
  EXPECT_TRUE(file.RemoveSection(L""));
  EXPECT_FALSE(file.HasSection(L""));
  EXPECT_EQ(Saved(file), "[A]\n");
  EXPECT_TRUE(file.SetItem(L"", L"d", L"4", true));
  EXPECT_EQ(Saved(file), "d=4\n[A]\n");
}

// ---- Copies

TEST_F(FileObjectTest, CopiesAreIndependent) {
  FileObject file = Loaded("[S]\na=1\n");
  FileObject copy(file);
  EXPECT_TRUE(copy.SetItem(L"S", L"a", L"2", false));
  EXPECT_TRUE(file.SetItem(L"S", L"b", L"3", true));
  EXPECT_EQ(Saved(file), "[S]\na=1\nb=3\n");
  EXPECT_EQ(Saved(copy), "[S]\na=2\n");
  FileObject& self = copy;
  copy = self;
  EXPECT_EQ(Saved(copy), "[S]\na=2\n");
  copy = file;
  file = FileObject();
  EXPECT_EQ(Saved(copy), "[S]\na=1\nb=3\n");
  EXPECT_EQ(Saved(file), "");
}

TEST_F(FileObjectTest, LeavesAnEmptyFileWhenMovedFrom) {
  FileObject file = Loaded("[S]\na=1\n");
  FileObject moved(std::move(file));
  EXPECT_EQ(Items(moved, L"S"), "a=1 ");
  EXPECT_FALSE(file.HasSection(L"S"));  // NOLINT: what is left is what is tested
  EXPECT_EQ(file.LastError(), L"");
  EXPECT_EQ(file.Encoding(), TextFileEncoding::Utf8);
  EXPECT_TRUE(file.LoadedLines().empty());
  FileObject copyOfMoved(file);
  EXPECT_TRUE(copyOfMoved.SectionNames().empty());
  EXPECT_TRUE(file.SetItem(L"T", L"b", L"2", true));
  EXPECT_EQ(Items(file, L"T"), "b=2 ");
  moved = std::move(file);
  EXPECT_EQ(Items(moved, L"T"), "b=2 ");
}

// ---- Hosts may take items over

class UpperCaseReads : public FileObject {
 public:
  bool GetItem(const CString& section, const CString& key, CString& value) const override {
    const bool found = FileObject::GetItem(section, key, value);
    value.MakeUpper();
    return found;
  }
};

TEST_F(FileObjectTest, LetsAHostTakeReadingOver) {
  UpperCaseReads derived;
  EXPECT_TRUE(derived.SetItem(L"S", L"a", L"text", true));
  const FileObject& file = derived;
  CString value;
  EXPECT_TRUE(file.GetItem(L"S", L"a", value));
  EXPECT_EQ(value, L"TEXT");
}

}  // namespace
