// MergeChanges: two programs' changes of one file against a plain model, and what is laid down
// about order, comments and duplicates.
#include "platform/portable/FileMerge.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "platform/portable/FileObjectText.h"
#include "tests/platform/FileObjectTesting.h"

namespace {

using lum::detail::CFileDocument;
using lum::detail::CFileTextOf;
using lum::detail::CPoolIndex;
using lum::detail::kNoIndex;

CFileDocument Parse(const std::string& bytes) {
  return lum::detail::ParseFile(std::make_shared<const std::string>(bytes));
}

std::string Write(const CFileDocument& document) {
  std::string bytes;
  CString error;
  EXPECT_TRUE(lum::detail::WriteFile(document, bytes, error));
  return bytes;
}

std::string Merge(const std::string& base, const std::string& mine, const std::string& theirs) {
  CFileDocument merged = Parse(theirs);
  lum::detail::MergeChanges(Parse(base), Parse(mine), merged);
  return Write(merged);
}

struct CMergeRow {
  const char* what;
  std::string base;
  std::string mine;
  std::string theirs;
  std::string merged;
};

TEST(FileMerge, PutsMyChangesIntoTheirFile) {
  const CMergeRow rows[] = {
      {"one item each", "[S]\na=1\nb=1\n", "[S]\na=2\nb=1\n", "[S]\na=1\nb=2\n", "[S]\na=2\nb=2\n"},
      {"the same item", "[S]\na=1\n", "[S]\na=2\n", "[S]\na=3\n", "[S]\na=2\n"},
      {"the same change", "[S]\na=1\n", "[S]\na=2\n", "[S]\na= 2\n", "[S]\na= 2\n"},
      {"I remove", "[S]\na=1\nb=1\n", "[S]\nb=1\n", "[S]\na=1\nb=2\n", "[S]\nb=2\n"},
      {"I remove what they change", "[S]\na=1\nb=1\n", "[S]\nb=1\n", "[S]\na=5\nb=1\n",
       "[S]\nb=1\n"},
      {"they remove", "[S]\na=1\nb=1\n", "[S]\na=1\nb=2\n", "[S]\nb=1\n", "[S]\nb=2\n"},
      {"they remove what I change", "[S]\na=1\nb=1\n", "[S]\na=2\nb=1\n", "[S]\nb=1\n",
       "[S]\na=2\nb=1\n"},
      {"mine before the one that follows it", "[S]\na=1\nc=1\n", "[S]\na=1\nb=1\nc=1\n",
       "[S]\nc=1\na=1\n", "[S]\nb=1\nc=1\na=1\n"},
      {"their order", "[S]\na=1\nb=1\nc=1\n", "[S]\na=2\nb=2\nc=2\n", "[S]\nc=1\nb=1\na=1\n",
       "[S]\nc=2\nb=2\na=2\n"},
      {"their comments", "; old\n[S]\na=1\n", "; mine\n[S]\na=2\n", "; new\n[S]\n// a\na=1\n\nx\n",
       "; new\n[S]\n// a\na=2\n\nx\n"},
      {"a section of mine", "[S]\na=1\n", "[S]\na=1\n[M]\nm=1\n", "[S]\na=3\n",
       "[S]\na=3\n\n[M]\nm=1\n"},
      {"an empty section of mine", "[S]\na=1\n", "[S]\na=1\n[M]\n", "[S]\na=3\n",
       "[S]\na=3\n\n[M]\n"},
      {"a section that I remove", "[S]\na=1\n[T]\nb=1\n", "[S]\na=1\n", "[S]\na=3\n[T]\nb=1\n",
       "[S]\na=3\n"},
      {"a section that both remove", "[S]\na=1\n[T]\nb=1\n", "[S]\na=1\n", "[S]\na=3\n",
       "[S]\na=3\n"},
      {"theirs in a section that I remove", "[S]\na=1\n[T]\nb=1\n", "[S]\na=1\n",
       "[S]\na=1\n[T]\nb=1\nc=1\n", "[S]\na=1\n[T]\nc=1\n"},
      {"a section that they remove", "[S]\na=1\n[T]\nb=1\n", "[S]\na=2\n[T]\nb=1\n", "[S]\na=1\n",
       "[S]\na=2\n"},
      {"a section of both", "[S]\na=1\n", "[S]\na=1\n[N]\nm=1\nb=1\n", "[S]\na=1\n[N]\nt=1\nb=2\n",
       "[S]\na=1\n[N]\nt=1\nm=1\nb=1\n"},
      {"items above all sections", "a=1\n[S]\nb=1\n", "a=2\nn=1\n[S]\nb=1\n", "a=1\n[S]\nb=3\n",
       "a=2\nn=1\n[S]\nb=3\n"},
      {"a key twice", "[S]\na=1\na=2\n", "[S]\na=1\na=3\n", "[S]\na=1\na=2\nb=1\n",
       "[S]\na=1\na=3\nb=1\n"},
      {"a section twice", "[S]\na=1\n[S]\nb=1\n", "[S]\na=2\n[S]\nb=2\n",
       "[S]\na=1\n[T]\n[S]\nb=1\nc=1\n", "[S]\na=2\n[T]\n[S]\nb=2\nc=1\n"},
      {"line ends are theirs", "[S]\na=1\n", "[S]\na=2\nb=1\n", "[S]\r\na=1\r\n",
       "[S]\r\na=2\r\nb=1\r\n"},
      {"an end without a line end", "[S]\na=1", "[S]\na=1\nb=1", "[S]\na=3", "[S]\na=3\nb=1\n"},
  };
  for (const CMergeRow& row : rows) {
    EXPECT_EQ(Merge(row.base, row.mine, row.theirs), row.merged) << row.what;
  }
}

// ---- Random changes against a model

using Model = std::map<std::pair<std::string, std::string>, std::string>;

CString Wide(const std::string& text) { return Utf8ToWide(CStringA(text.c_str())); }

Model ModelOf(const CFileDocument& document) {
  Model model;
  for (const CString& name : document.SectionNames()) {
    CPoolIndex item = document.FirstItem(document.FindSection(name));
    for (; item != kNoIndex; item = document.NextItem(item)) {
      model[{WideToUtf8(name).GetString(), WideToUtf8(ToCString(document.Key(item))).GetString()}] =
          WideToUtf8(ToCString(document.Value(item))).GetString();
    }
  }
  return model;
}

// Mine where mine differs from the base, else theirs.
Model Expected(const Model& base, const Model& mine, Model merged) {
  for (const auto& [key, value] : mine) {
    const auto before = base.find(key);
    if (before == base.end() || before->second != value) {
      merged[key] = value;
    }
  }
  for (const auto& [key, value] : base) {
    if (mine.count(key) == 0) {
      merged.erase(key);
    }
  }
  return merged;
}

class CRandomFiles {
 public:
  explicit CRandomFiles(unsigned seed) : m_random(seed) {}

  int Below(int limit) { return static_cast<int>(m_random() % static_cast<unsigned>(limit)); }

  std::string File() {
    static const char* const kOthers[] = {"", "; note", "// note", "unknown", "[open"};
    std::string bytes;
    for (int lines = Below(20); lines > 0; --lines) {
      const int dice = Below(10);
      bytes += dice < 2   ? "[" + Section() + "]"
               : dice < 4 ? kOthers[Below(5)]
                          : Key() + (Below(2) == 0 ? "=" : " = ") + Value();
      bytes += Below(5) == 0 ? "\r\n" : "\n";
    }
    return bytes;
  }

  void Change(CFileDocument& document) {
    for (int changes = Below(8); changes > 0; --changes) {
      ChangeOnce(document);
    }
  }

 private:
  std::string Section() { return std::string(1, static_cast<char>('S' + Below(3))); }
  std::string Key() {
    return Below(6) == 0 ? "gr\xC3\xB6\xC3\x9F"
                           "e"
                         : std::string(1, static_cast<char>('a' + Below(6)));
  }
  std::string Value() { return Below(5) == 0 ? "" : std::to_string(Below(4)); }

  void ChangeOnce(CFileDocument& document) {
    const CString key = Wide(Key());
    const CString value = Wide(Value());
    const int dice = Below(12);
    const CString name = dice == 0 ? CString() : Wide(Section());
    const CPoolIndex section = document.FindSection(name);
    if (dice < 6) {
      document.PutItem(document.FindOrAddSection(name), CFileTextOf(key), CFileTextOf(value));
    } else if (section == kNoIndex) {
      return;
    } else if (dice < 9) {
      document.RemoveItem(section, CFileTextOf(key));
    } else if (dice < 10) {
      document.RemoveSection(section);
    } else if (dice < 11) {
      const CString other = Wide(Key());
      document.RenameItem(section, CFileTextOf(key), CFileTextOf(other));
    } else {
      const CString before = Wide(Key());
      document.InsertItem(section, CFileTextOf(before), CFileTextOf(key), CFileTextOf(value));
    }
  }

  std::minstd_rand m_random;
};

// The keys of a section that both files have, in the order of the one that is given.
std::vector<std::string> CommonKeys(const CFileDocument& document, const Model& other,
                                    const CString& section) {
  std::vector<std::string> keys;
  const CPoolIndex found = document.FindSection(section);
  CPoolIndex item = document.FirstItem(found);
  for (; item != kNoIndex; item = document.NextItem(item)) {
    const std::string key = WideToUtf8(ToCString(document.Key(item))).GetString();
    if (other.count({WideToUtf8(section).GetString(), key}) > 0) {
      keys.push_back(key);
    }
  }
  return keys;
}

TEST(FileMerge, AgreesWithAPlainModel) {
  int changed = 0;
  for (unsigned seed = 1; seed <= 6000; ++seed) {
    CRandomFiles files(seed);
    const std::string base = files.File();
    CFileDocument mine = Parse(base);
    CFileDocument theirs = Parse(base);
    files.Change(mine);
    files.Change(theirs);
    theirs = Parse(Write(theirs));
    const Model theirModel = ModelOf(theirs);
    const Model expected = Expected(ModelOf(Parse(base)), ModelOf(mine), theirModel);
    CFileDocument merged = theirs;
    lum::detail::MergeChanges(Parse(base), mine, merged);
    ASSERT_EQ(ModelOf(merged), expected) << "seed " << seed;
    const CFileDocument readBack = Parse(Write(merged));
    ASSERT_EQ(ModelOf(readBack), expected) << "seed " << seed;
    for (const CString& section : readBack.SectionNames()) {
      ASSERT_EQ(CommonKeys(readBack, theirModel, section),
                CommonKeys(theirs, ModelOf(readBack), section))
          << "seed " << seed;
    }
    changed += expected != theirModel ? 1 : 0;
  }
  EXPECT_GT(changed, 1500);
}

TEST(FileMerge, LeavesTheirBytesWhenIChangedNothing) {
  for (unsigned seed = 1; seed <= 2000; ++seed) {
    CRandomFiles files(seed);
    const std::string base = files.File();
    const std::string theirs = files.File();
    ASSERT_EQ(Merge(base, base, theirs), theirs) << "seed " << seed;
  }
}

TEST(FileMerge, GivesMyItemsWhenTheyChangedNothing) {
  for (unsigned seed = 1; seed <= 2000; ++seed) {
    CRandomFiles files(seed);
    const std::string base = files.File();
    CFileDocument mine = Parse(base);
    files.Change(mine);
    ASSERT_EQ(ModelOf(Parse(Merge(base, Write(mine), base))), ModelOf(Parse(Write(mine))))
        << "seed " << seed;
  }
}

}  // namespace
