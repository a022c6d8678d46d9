// Any bytes as a file that holds an attribute tree: every loader beside its naive version; and what
// was loaded is saved and loaded again without a difference.
#include <gtest/gtest.h>

#include <cwchar>
#include <vector>

#include "fuzz/FuzzFiles.h"
#include "fuzz/FuzzInput.h"
#include "tests/attributes/NaiveTree.h"
#include "tests/attributes/TreeTesting.h"

namespace {

constexpr int kMostLines = 200;
/// The naive tree is slow: so many earlier occurrences may be made by all items together.
constexpr int kMostPlaceholders = 60;

const lum::fuzz::CFuzzFiles& Files() { return lum::fuzz::CFuzzFiles::Instance(); }

std::vector<CString> ReadLines() {
  CStdioFile file;
  EXPECT_TRUE(file.Open(Files().Input().GetString(), CStdioFile::modeRead | CStdioFile::typeText));
  std::vector<CString> lines;
  for (CString line; file.ReadString(line);) {
    lines.push_back(line);
  }
  return lines;
}

int PlaceholdersOf(const CString& line) {
  int sum = 0;
  for (int open = line.Find(L'('); open >= 0; open = line.Find(L'(', open + 1)) {
    int occurrence = 0;
    std::swscanf(line.GetString() + open + 1, L"%d", &occurrence);
    sum += std::clamp(occurrence, 0, kMostPlaceholders + 1);
  }
  return sum;
}

bool IsSmall(const std::vector<CString>& lines) {
  int sum = 0;
  for (const CString& line : lines) {
    sum += PlaceholdersOf(line);
  }
  return sum <= kMostPlaceholders && lines.size() <= kMostLines;
}

// ---- Back and forth

/// Whether the item format can carry the node: "OrderInfo" alone is stored without flags, but every
/// key that ends so is read without them; transient nodes and texts with a line break are not
/// stored.
bool ComesBack(const CAttributeMap& parent, int pos) {
  const CAttributeMap& node = parent[pos];
  const bool readAsOrderInfo = node.Mnemonic().Right(9) == L"OrderInfo";
  const bool isPlain = node.Mnemonic() == L"OrderInfo" && parent.RetrieveIndex(pos) == 0;
  CString text;
  node.Value().GetValueStr(text);
  return (!readAsOrderInfo || isPlain) && text.FindOneOf(L"\r\n") < 0 &&
         (node.Flags() & CAttributeRec::FLAG_TRANSIENT) == 0;
}

bool ComesBack(const CAttributeMap& map) {
  for (int pos = 0; pos < map.Count(); ++pos) {
    if (!ComesBack(map, pos) || !ComesBack(map[pos])) {
      return false;
    }
  }
  return true;
}

/// Saving takes the version from the value as the free-form kind reads numbers ("2x" is 2), loading
/// reads the item strictly.
bool HasPlainVersion(const CAttributeMap& map) {
  CString text = L"1";
  map.Find(L"AttrVersion").Value().GetValueStr(text);
  return text == L"1" || text == L"2";
}

void CheckSavedAgain(const CAttributeMap& map) {
  FileObject file;
  if (!SaveAttributes(map, file, L"S") || !ComesBack(map) || !HasPlainVersion(map)) {
    return;
  }
  CAttributeMap loaded;
  ASSERT_TRUE(LoadAttributes(loaded, file, L"S", false)) << Items(file, L"S");
  CAttributeMap diff;
  // What is no number differs even from itself.
  if (map.Compare(CAttributeMap(map), diff, 7)) {
    return;
  }
  EXPECT_FALSE(map.Compare(loaded, diff, 7)) << Describe(map) << "\n" << Describe(loaded);
  EXPECT_FALSE(loaded.Compare(map, diff, 7)) << Describe(map) << "\n" << Describe(loaded);
  FileObject again;
  ASSERT_TRUE(SaveAttributes(loaded, again, L"S"));
  EXPECT_EQ(Items(again, L"S"), Items(file, L"S"));
}

// ---- Loaders

void CheckOrdered(const std::vector<CString>& lines, bool skipMarked) {
  CAttributeMap map;
  CNaiveNode naive;
  ASSERT_EQ(LoadAttributesOrdered(map, Files().Input(), L"S", skipMarked),
            NaiveLoadOrdered(naive, lines, L"S", skipMarked));
  ASSERT_EQ(Describe(map), Describe(naive));
  CheckSavedAgain(map);
}

void CheckPlain(const FileObject& file, const CAttributeMap& start, const CNaiveNode& naiveStart) {
  for (const bool merge : {false, true}) {
    CAttributeMap map(start);
    CNaiveNode naive(naiveStart);
    ASSERT_EQ(LoadAttributes(map, file, L"S", merge), NaiveLoad(naive, file, L"S", merge));
    ASSERT_EQ(Describe(map), Describe(naive));
    CheckSavedAgain(map);
  }
}

void CheckNode(const FileObject& file, const CNaiveNode& naiveStart, unsigned int choices) {
  CNaiveNode naive(naiveStart);
  naive.name = L"N";
  CAttributeMap map = ToMap(naive);
  const bool addNew = (choices & 1) != 0;
  const bool copyFlags = (choices & 2) != 0;
  const bool orderInfo = (choices & 4) != 0;
  ASSERT_TRUE(map.LoadFromFObj(&file, L"S", addNew, copyFlags, orderInfo));
  if (!naive.children.empty()) {
    CNaiveNode copy = naive;
    NaiveLoadWithKey(copy, file, L"S", L"@tr.N.", addNew);
    naive.Overload(copy, addNew, copyFlags, orderInfo, false);
  } else if (addNew) {
    NaiveLoadWithKey(naive, file, L"S", L"@tr.N.", false);
  }
  ASSERT_EQ(Describe(map), Describe(naive));
}

void CheckOldForm(const FileObject& file) {
  CAttributeMap plain;
  CAttributeMap indexed;
  const bool isLoaded = LoadOldPcfFileAttributes(plain, file, L"S", 0);
  EXPECT_EQ(LoadOldPcfFileAttributes(indexed, file, L"S", 1), isLoaded);
  CAttributeMap expected;
  if (isLoaded) {
    LoadAttributes(expected, file, L"S", false);
  }
  EXPECT_EQ(Describe(plain), Describe(expected));
}

/// Without a comma in its value an order item is none that saving replaces, at whatever depth of
/// the tree it stands.
void CheckRemoval(FileObject file) {
  if (!RemoveAttributes(file, L"S")) {
    return;
  }
  FobjSection walk;
  CString key;
  CString value;
  for (bool more = file.GetFirstMapEntry(walk, L"S", key, value); more;
       more = file.GetNextMapEntry(walk, key, value)) {
    FileObject alone;
    CAttributeMap map;
    ASSERT_TRUE(alone.SetItem(L"S", key, value, true));
    LoadAttributes(map, alone, L"S", false);
    EXPECT_TRUE(map.Count() == 0 || key.Right(9) == L"OrderInfo") << Items(alone, L"S");
  }
}

}  // namespace

// Choices, then the file.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const bool hasDefinitions = (LoadTestDefinitions(), true);
  EXPECT_TRUE(hasDefinitions);
  lum::fuzz::CFuzzInput in(data, size);
  const unsigned int choices = in.Byte();
  Files().WriteInput(in.Rest());
  const std::vector<CString> lines = ReadLines();
  if (!IsSmall(lines)) {
    return -1;
  }
  CheckOrdered(lines, (choices & 8) != 0);
  FileObject file;
  EXPECT_TRUE(file.Load(Files().Input()));
  CNaiveNode start;
  NaiveLoadOrdered(start, lines, L"T", false);
  CheckPlain(file, ToMap(start), start);
  CheckNode(file, start, choices);
  CheckOldForm(file);
  CheckRemoval(file);
  return 0;
}
