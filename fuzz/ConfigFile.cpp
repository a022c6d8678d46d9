// Any bytes as a configuration file: saved unchanged they are the same bytes; after edits the
// content is that of a plain list, in memory and read back from the saved file.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "fuzz/FuzzFiles.h"
#include "fuzz/FuzzInput.h"
#include "platform/FileObject.h"
#include "tests/TextPrinting.h"

namespace {

const lum::fuzz::CFuzzFiles& Files() { return lum::fuzz::CFuzzFiles::Instance(); }

using Items = std::vector<std::pair<CString, CString>>;
using Content = std::map<CString, Items>;

Items ItemsOf(const FileObject& file, const CString& section) {
  Items items;
  FobjSection walk;
  CString key;
  CString value;
  for (bool more = file.GetFirstMapEntry(walk, section, key, value); more;
       more = file.GetNextMapEntry(walk, key, value)) {
    CString found;
    EXPECT_TRUE(file.GetItem(section, key, found));
    EXPECT_EQ(found, value);
    items.emplace_back(key, value);
  }
  EXPECT_EQ(file.ItemCount(section), static_cast<int>(items.size()));
  return items;
}

/// The items above all headers belong to the empty name, which is always there.
Content ContentOf(const FileObject& file) {
  Content content;
  content[CString()] = ItemsOf(file, CString());
  for (const CString& section : file.SectionNames()) {
    EXPECT_TRUE(file.HasSection(section));
    content[section] = ItemsOf(file, section);
  }
  return content;
}

Items::iterator FindKey(Items& items, const CString& key) {
  return std::find_if(items.begin(), items.end(),
                      [&key](const auto& item) { return item.first == key; });
}

// ---- The lines as tools see them

void CheckLine(const FileObjectLine& line) {
  if (line.kind == FileObjectLine::Kind::Item) {
    EXPECT_EQ(line.text.Mid(line.keyColumn - 1, line.key.GetLength()), line.key);
    EXPECT_EQ(line.text.Mid(line.valueColumn - 1), line.value);
  }
}

void CheckLoadedLines(const FileObject& file, const Content& content) {
  Content last;
  int number = 0;
  for (const FileObjectLine& line : file.LoadedLines()) {
    EXPECT_EQ(line.number, ++number);
    CheckLine(line);
    EXPECT_TRUE(content.count(line.section) == 1) << line.number;
    if (line.kind == FileObjectLine::Kind::Item) {
      Items& items = last[line.section];
      const auto known = FindKey(items, line.key);
      if (known != items.end()) {
        items.erase(known);
      }
      items.emplace_back(line.key, line.value);
    }
  }
  for (const auto& [section, items] : content) {
    EXPECT_EQ(items, last[section]);
  }
}

// ---- Edits

bool IsBlank(wchar_t ch) { return ch == L' ' || ch == L'\t'; }

bool HasLineBreak(const CString& text) { return text.FindOneOf(L"\r\n") >= 0; }

bool CanBeKey(const CString& key) {
  return !key.IsEmpty() && !HasLineBreak(key) && key.Find(L'=') < 0 && key[0] != L'[' &&
         key[0] != L';' && key.Left(2) != L"//" && !IsBlank(key[0]) &&
         !IsBlank(key[key.GetLength() - 1]);
}

class CEdits {
 public:
  CEdits(lum::fuzz::CFuzzInput edits, FileObject& file, Content content)
      : m_in(edits), m_file(file), m_loaded(file), m_content(std::move(content)) {
    for (const auto& [section, items] : m_content) {
      m_texts.push_back(section);
      for (const auto& [key, value] : items) {
        m_texts.push_back(key);
        m_texts.push_back(value);
      }
    }
    m_texts.resize(std::min<std::size_t>(m_texts.size(), 240));
  }

  void Run() {
    for (int step = 0; step < 32 && !m_in.IsEmpty(); ++step) {
      Edit();
      Compare(ContentOf(m_file), false);
    }
  }

  /// What the file must hold after it was saved and loaded again.
  void Compare(Content found, bool isReread) const {
    Content expected = m_content;
    for (auto& [section, items] : expected) {
      ASSERT_TRUE(found.count(section) == 1) << testing::PrintToString(section);
      if (isReread) {
        for (auto& item : items) {
          item.second.TrimLeft(L" \t");
        }
      }
      if (m_unordered.count(section) != 0) {
        std::sort(items.begin(), items.end());
        std::sort(found[section].begin(), found[section].end());
      }
      ASSERT_EQ(items, found[section]) << testing::PrintToString(section);
    }
    ASSERT_EQ(expected.size(), found.size());
  }

 private:
  CString Text() {
    static const wchar_t* const kTexts[] = {L"",      L"Key",  L"Sensor(1).Offset",
                                            L"Größe", L" x",   L"a=b",
                                            L";k",    L"//k",  L"[k",
                                            L"S",     L"a]b",  L"1,37.5 ",
                                            L"\r",    L"a\nb", L"\x4E2D\x6587",
                                            L"\xD800"};
    const std::size_t choice = m_in.Below(256);
    if (choice < std::size(kTexts)) {
      return kTexts[choice];
    }
    return m_texts[(choice - std::size(kTexts)) % m_texts.size()];
  }

  bool Has(const CString& section) const { return m_content.count(section) != 0; }
  bool HasItem(const CString& section, const CString& key) {
    return Has(section) && FindKey(m_content[section], key) != m_content[section].end();
  }

  void Edit() {
    const std::size_t choice = m_in.Below(8);
    const CString section = Text();
    switch (choice) {
      case 0:
      case 1:
        return Set(section);
      case 2:
        return Remove(section);
      case 3:
        return Rename(section);
      case 4:
        return Insert(section);
      case 5:
        return Copy(section);
      case 6:
        return RemoveSection(section);
      default:
        return Create(section);
    }
  }

  void Set(const CString& section) {
    const CString key = Text();
    const CString value = Text();
    const bool create = m_in.Bool();
    const bool exists = HasItem(section, key);
    const bool canBe = CanBeKey(key) && !HasLineBreak(value) &&
                       (exists || (create && (Has(section) || CanBeSection(section))));
    ASSERT_EQ(m_file.SetItem(section, key, value, create), canBe);
    if (canBe && exists) {
      FindKey(m_content[section], key)->second = value;
    } else if (canBe) {
      m_content[section].emplace_back(key, value);
    }
  }

  void Remove(const CString& section) {
    const CString key = Text();
    const bool exists = HasItem(section, key);
    ASSERT_EQ(m_file.RemoveItem(section, key), exists);
    if (exists) {
      m_content[section].erase(FindKey(m_content[section], key));
    }
  }

  void Rename(const CString& section) {
    const CString key = Text();
    const CString newKey = Text();
    const bool canBe = HasItem(section, key) && !HasItem(section, newKey) && CanBeKey(newKey);
    ASSERT_EQ(m_file.RenameItem(section, key, newKey), canBe);
    if (canBe) {
      FindKey(m_content[section], key)->first = newKey;
    }
  }

  void Insert(const CString& section) {
    const CString before = Text();
    const CString key = Text();
    const CString value = Text();
    const bool canBe =
        HasItem(section, before) && !HasItem(section, key) && CanBeKey(key) && !HasLineBreak(value);
    ASSERT_EQ(m_file.InsertItem(section, before, key, value), canBe);
    if (canBe) {
      Items& items = m_content[section];
      items.emplace(FindKey(items, before), key, value);
    }
  }

  /// Items that are set afterwards may take the places of those that are gone.
  void Copy(const CString& section) {
    const FileObject from = m_in.Bool() ? m_loaded : FileObject();
    if (!m_file.CopySection(section, from)) {
      return;
    }
    if (from.HasSection(section) || Has(section)) {
      m_content[section] = ItemsOf(from, section);
    }
    m_unordered.insert(section);
  }

  void RemoveSection(const CString& section) {
    const bool removed = m_file.RemoveSection(section);
    if (!section.IsEmpty()) {
      ASSERT_EQ(removed, Has(section));
      m_content.erase(section);
    } else if (removed) {
      m_content[section].clear();
    }
  }

  void Create(const CString& section) {
    const bool clear = m_in.Bool();
    const bool canBe = Has(section) || CanBeSection(section);
    ASSERT_EQ(m_file.CreateSection(section, clear), canBe);
    if (canBe && clear) {
      m_content[section].clear();
    } else if (canBe) {
      m_content[section];
    }
  }

  static bool CanBeSection(const CString& name) {
    return !HasLineBreak(name) && name.Find(L']') < 0;
  }

  lum::fuzz::CFuzzInput m_in;
  FileObject& m_file;
  const FileObject m_loaded;
  Content m_content;
  std::set<CString> m_unordered;
  std::vector<CString> m_texts;
};

void CheckReread(FileObject& file, const CEdits& edits) {
  // A text that the file's encoding lacks is refused, which is tested elsewhere.
  if (!file.Save(Files().Saved())) {
    EXPECT_FALSE(file.LastError().IsEmpty());
    return;
  }
  FileObject reread;
  ASSERT_TRUE(reread.Load(Files().Saved()));
  edits.Compare(ContentOf(reread), true);
}

}  // namespace

// The length of the edits, the edits, the file.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  lum::fuzz::CFuzzInput in(data, size);
  const std::string_view changes = in.Take(in.Byte());
  const std::string bytes(in.Rest());
  Files().WriteInput(bytes);
  FileObject file;
  EXPECT_TRUE(file.Load(Files().Input()));
  const Content content = ContentOf(file);
  CheckLoadedLines(file, content);
  EXPECT_TRUE(file.Save(Files().Saved()));
  EXPECT_EQ(Files().ReadSaved(), bytes);

  CEdits edits({reinterpret_cast<const std::uint8_t*>(changes.data()), changes.size()}, file,
               content);
  edits.Run();
  CheckReread(file, edits);
  return 0;
}
