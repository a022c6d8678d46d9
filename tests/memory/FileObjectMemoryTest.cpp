// Configuration files when memory runs out: loading, changing, saving.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "platform/FileObject.h"
#include "tests/Allocations.h"
#include "tests/TemporaryFolder.h"
#include "tests/attributes/TreeTesting.h"
#include "tests/memory/RefusalWalk.h"

namespace {

using lum::test::Guarantee;
using lum::test::WalkRefusals;

constexpr const char* kFile =
    "; a comment\n"
    "Top=0,before all sections\n"
    "\n"
    "[Survey]\n"
    "; of the section\n"
    "Unit = 1,m ; kept\n"
    "Twice=0,1\n"
    "no item\n"
    "Ship=0,M\xC3\xB6we\n"
    "Twice=0,2\n"
    "\n"
    "; of the next section\n"
    "[Empty]\n"
    "; leading\n"
    "\n"
    "; not leading\n"
    "[Other]\n"
    "Key=Value\n"
    "[Survey]\n"
    "More=0,x\n";

/// In memory where the system has such a folder: each save waits until the file is on disk.
const CTemporaryFolder& Folder() {
  static const CTemporaryFolder folder = [] {
    if (std::filesystem::is_directory("/dev/shm")) {
      ::setenv("TMPDIR", "/dev/shm", 1);
    }
    return CTemporaryFolder();
  }();
  return folder;
}

CString PathOf(const char* name) { return PathText(Folder().File(name)); }

/// A file to load, and its path.
CString LoadedPath() {
  static const CString path = [] {
    WriteBytes(Folder().File("loaded.cfg"), kFile);
    return PathOf("loaded.cfg");
  }();
  return path;
}

struct Files {
  FileObject file;
  FileObject other;
  FobjSection walk;
  CString key;
  CString value;
  std::size_t count = 0;
};

using Operation = lum::test::Operation<Files>;

bool IsWhole(const FileObject& file, const CString& section) {
  FobjSection walk;
  CString key;
  CString value;
  CString again;
  int items = 0;
  for (bool more = file.GetFirstMapEntry(walk, section, key, value); more;
       more = file.GetNextMapEntry(walk, key, value)) {
    if (!file.GetItem(section, key, again) || again != value) {
      return false;
    }
    ++items;
  }
  return items == file.ItemCount(section);
}

std::string DescribeItems(const FileObject& file) {
  std::string text;
  for (const CString& section : file.SectionNames()) {
    text += "[" + Narrow(section) + "]" + Items(file, section) +
            (IsWhole(file, section) ? "" : lum::test::kBroken);
  }
  return text;
}

/// What the file would be on disk.
std::string SavedBytes(const FileObject& file) {
  FileObject copy(file);
  if (!copy.Save(PathOf("described.cfg"))) {
    return lum::test::kBroken + Narrow(copy.LastError());
  }
  return ReadBytes(Folder().File("described.cfg"));
}

std::string DescribeFiles(const Files& files) {
  return DescribeItems(files.file) + "\n  " + SavedBytes(files.file) + "\n  " +
         DescribeItems(files.other) + "\n  " + Narrow(files.key) + "|" + Narrow(files.value) + "|" +
         std::to_string(files.count);
}

void LoadBoth(Files& files) {
  files.file.Load(LoadedPath());
  files.other.CreateSection(L"Survey", false);
  files.other.SetItem(L"Survey", L"New", L"0,1", true);
  files.other.SetItem(L"Survey", L"Ship", L"0,another", true);
  files.other.SetItem(L"Survey", L"Last", L"0,3", true);
  files.key = L"key";
  files.value = L"value";
}

/// Loaded items are gone, and their places are remembered.
void CopyOver(Files& files) {
  LoadBoth(files);
  files.file.CopySection(L"Survey", files.other);
}

struct Row {
  const char* name;
  std::function<bool(Files&)> run;
  std::function<void(Files&)> prepare = LoadBoth;
};

void Walk(Guarantee guarantee, const std::vector<Row>& rows) {
  for (const Row& row : rows) {
    WalkRefusals(Operation{row.name, guarantee, row.run, row.prepare}, DescribeFiles);
  }
}

const CString& LongText() {
  static const CString text(L'\x00F6', 300);
  return text;
}

TEST(FileObjectMemory, ChangesThatFailChangeNothing) {
  Walk(Guarantee::Unchanged,
       {
           {"copy", [](Files& f) { return FileObject(f.file).ItemCount(L"Survey") == 4; }},
           {"assign",
            [](Files& f) {
              f.other = f.file;
              return true;
            }},
           {"CreateSection",
            [](Files& f) { return f.file.CreateSection(L"A section that was not there", false); }},
           {"SetItem, present",
            [](Files& f) { return f.file.SetItem(L"Survey", L"Unit", L"0,other", false); }},
           {"SetItem, present, long",
            [](Files& f) { return f.file.SetItem(L"Survey", L"Ship", LongText(), false); }},
           {"SetItem, new",
            [](Files& f) { return f.file.SetItem(L"Survey", L"New", L"0,1", true); }},
           {"SetItem, new, long",
            [](Files& f) { return f.file.SetItem(L"Survey", LongText(), LongText(), true); }},
           {"SetItem, new below a comment",
            [](Files& f) { return f.file.SetItem(L"Empty", L"New", L"0,1", true); }},
           {"SetItem, above all sections",
            [](Files& f) { return f.file.SetItem(L"", L"New", L"0,1", true); }},
           {"RenameItem",
            [](Files& f) { return f.file.RenameItem(L"Survey", L"Twice", L"Renamed"); }},
           {"RenameItem, long",
            [](Files& f) { return f.file.RenameItem(L"Survey", L"Twice", LongText()); }},
           {"InsertItem",
            [](Files& f) { return f.file.InsertItem(L"Survey", L"Ship", L"New", L"0,1"); }},
           {"InsertItem, before a long key",
            [](Files& f) { return f.file.InsertItem(L"Survey", LongText(), L"New", L"0,1"); },
            [](Files& f) {
              LoadBoth(f);
              f.file.SetItem(L"Survey", LongText(), L"0,1", true);
            }},
           {"RemoveItem", [](Files& f) { return f.file.RemoveItem(L"Survey", LongText()); },
            [](Files& f) {
              LoadBoth(f);
              f.file.SetItem(L"Survey", LongText(), L"0,1", true);
            }},
           {"RemoveSection", [](Files& f) { return f.file.RemoveSection(L"Survey"); }},
           {"GetItem", [](Files& f) { return f.file.GetItem(L"Survey", L"Ship", f.value); },
            [](Files& f) {
              LoadBoth(f);
              f.file.SetItem(L"Survey", L"Ship", LongText(), true);
            }},
           {"SectionNames",
            [](Files& f) {
              f.count = f.file.SectionNames().size();
              return true;
            }},
           {"LoadedLines",
            [](Files& f) {
              f.count = f.file.LoadedLines().size();
              return true;
            }},
       });
}

TEST(FileObjectMemory, PlacesThatAreRememberedStaySo) {
  Walk(
      Guarantee::Unchanged,
      {
          {"SetItem, back",
           [](Files& f) { return f.file.SetItem(L"Survey", L"More", L"0,other", true); }, CopyOver},
          {"SetItem, back and long",
           [](Files& f) { return f.file.SetItem(L"Survey", L"Twice", LongText(), true); },
           CopyOver},
          {"SetItem, new",
           [](Files& f) { return f.file.SetItem(L"Survey", L"New2", L"0,1", true); }, CopyOver},
          {"RenameItem", [](Files& f) { return f.file.RenameItem(L"Survey", L"New", L"New2"); },
           CopyOver},
      });
}

// More items than a piece of the pool of records holds, to the place where the next one begins.
TEST(FileObjectMemory, ManyItemsKeepTheirPlaces) {
  const auto fill = [](Files& files) {
    CString key;
    for (int i = 0; i < 1022; ++i) {
      key.Format(L"Key%d", i);
      files.file.SetItem(L"S", key, L"0,1", true);
    }
  };
  const auto add = [](Files& files) {
    return files.file.SetItem(L"S", L"First", L"0,1", true) &&
           files.file.SetItem(L"S", L"Second", L"0,2", true) &&
           files.file.SetItem(L"S", L"Third", L"0,3", true);
  };
  WalkRefusals(Operation{"SetItem", Guarantee::Usable, add, fill},
               [](const Files& files) { return DescribeItems(files.file); });
}

TEST(FileObjectMemory, SomeOperationsMayStopMidway) {
  Walk(Guarantee::Usable,
       {
           {"SetItem, new section",
            [](Files& f) { return f.file.SetItem(L"Made", L"New", L"0,1", true); }, LoadBoth},
           {"CopySection", [](Files& f) { return f.file.CopySection(L"Survey", f.other); },
            LoadBoth},
           {"CopySection, new", [](Files& f) { return f.other.CopySection(L"Other", f.file); },
            LoadBoth},
           {"a walk",
            [](Files& f) {
              return f.file.GetFirstMapEntry(f.walk, L"Survey", f.key, f.value) &&
                     f.file.GetNextMapEntry(f.walk, f.key, f.value);
            },
            LoadBoth},
       });
}

TEST(FileObjectMemory, ALoadThatFailsChangesNothing) {
  const auto load = [](Files& files) { return files.file.Load(LoadedPath()); };
  const auto fill = [](Files& files) { files.file.SetItem(L"S", L"Key", L"Value", true); };
  WalkRefusals(Operation{"Load", Guarantee::Unchanged, load, fill}, DescribeFiles);
  WalkRefusals(Operation{"Load into a new object", Guarantee::Unchanged, load}, DescribeFiles);
}

TEST(FileObjectMemory, ASaveThatFailsLeavesTheFileAndNothingBesideIt) {
  const CTemporaryFolder& folder = Folder();
  const auto path = folder.File("saved.cfg");
  const auto prepare = [&](Files& files) {
    LoadBoth(files);
    WriteBytes(path, "old");
    files.file.SetItem(L"Survey", L"Unit", L"0,other", true);
  };
  const auto save = [&](Files& files) { return files.file.Save(PathText(path)); };
  WalkRefusals(Operation{"Save", Guarantee::Unchanged, save, prepare}, [&](const Files& files) {
    return DescribeItems(files.file) + ReadBytes(path) + std::to_string(folder.EntryCount());
  });
}

// The text itself needs memory: only when there is none for it either does std::bad_alloc leave.
TEST(FileObjectMemory, LastErrorSaysThatMemoryWasShort) {
  const CString path = LoadedPath();
  FileObject file;
  file.SetItem(L"S", L"Key", L"Value", true);
  int refused = 0;
  for (bool done = false; !done;) {
    RefuseOneAllocation(refused);
    EXPECT_NO_THROW(done = file.Load(path)) << refused;
    LimitAllocations(-1);
    if (!done) {
      EXPECT_EQ(file.LastError(), L"cannot read \"" + path + L"\": not enough memory");
      ++refused;
    }
  }
  EXPECT_GT(refused, 10);
  EXPECT_EQ(file.LastError(), L"");
}

TEST(FileObjectMemory, MovesAndRemovalsNeedNone) {
  FileObject file;
  ASSERT_TRUE(file.Load(LoadedPath()));
  const CString section(L"Survey");
  const CString key(L"Twice");
  LimitAllocations(0);
  FileObject moved(std::move(file));
  file = std::move(moved);
  const bool done = file.RemoveItem(section, key) && file.CreateSection(section, true) &&
                    file.RemoveSection(section);
  LimitAllocations(-1);
  EXPECT_TRUE(done);
  EXPECT_FALSE(file.HasSection(section));
}

}  // namespace
