#include "platform/portable/FileMerge.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace lum::detail {

namespace {

std::vector<CPoolIndex> ItemsOf(const CFileDocument& document, CPoolIndex section) {
  std::vector<CPoolIndex> items;
  CPoolIndex item = document.FirstItem(section);
  for (; item != kNoIndex; item = document.NextItem(item)) {
    items.push_back(item);
  }
  return items;
}

bool HasItem(const CFileDocument& document, CPoolIndex section, const CFileText& key) {
  return section != kNoIndex && document.FindItem(section, key) != kNoIndex;
}

// A value's leading blanks are in memory only until the file is read again.
bool IsReadAlike(const CFileText& a, const CFileText& b) {
  if (a == b) {
    return true;
  }
  const std::wstring wideA = WideChars(a);
  const std::wstring wideB = WideChars(b);
  const auto begin = [](const std::wstring& text) {
    return std::min(text.find_first_not_of(L" \t"), text.size());
  };
  return std::wstring_view(wideA).substr(begin(wideA)) ==
         std::wstring_view(wideB).substr(begin(wideB));
}

/// One section's changes.
class CSectionMerge {
 public:
  CSectionMerge(const CFileDocument& base, const CFileDocument& mine, CFileDocument& theirs,
                const CString& name)
      : m_base(base),
        m_mine(mine),
        m_theirs(theirs),
        m_name(name),
        m_baseSection(base.FindSection(name)),
        m_mineSection(mine.FindSection(name)) {}

  void Run() {
    RemoveItems();
    if (m_mineSection != kNoIndex) {
      PutItems();
    } else if (const CPoolIndex section = m_theirs.FindSection(m_name);
               section != kNoIndex && m_theirs.ItemCount(section) == 0) {
      m_theirs.RemoveSection(section);
    }
  }

 private:
  void RemoveItems() {
    const CPoolIndex section = m_theirs.FindSection(m_name);
    if (section == kNoIndex || m_baseSection == kNoIndex) {
      return;
    }
    for (const CPoolIndex item : ItemsOf(m_base, m_baseSection)) {
      if (!HasItem(m_mine, m_mineSection, m_base.Key(item))) {
        m_theirs.RemoveItem(section, m_base.Key(item));
      }
    }
  }

  bool IsMyChange(CPoolIndex item) const {
    const CPoolIndex before =
        m_baseSection == kNoIndex ? kNoIndex : m_base.FindItem(m_baseSection, m_mine.Key(item));
    return before == kNoIndex || !IsReadAlike(m_base.Value(before), m_mine.Value(item));
  }

  // From the last to the first, so that the item below a new one has its place already.
  void PutItems() {
    const std::vector<CPoolIndex> items = ItemsOf(m_mine, m_mineSection);
    if (m_baseSection == kNoIndex) {
      m_theirs.FindOrAddSection(m_name);
    }
    CPoolIndex below = kNoIndex;
    for (auto item = items.rbegin(); item != items.rend(); ++item) {
      if (IsMyChange(*item)) {
        Put(*item, below);
      }
      if (HasItem(m_theirs, m_theirs.FindSection(m_name), m_mine.Key(*item))) {
        below = *item;
      }
    }
  }

  void Put(CPoolIndex item, CPoolIndex below) {
    const CPoolIndex section = m_theirs.FindOrAddSection(m_name);
    const CFileText key = m_mine.Key(item);
    const CFileText value = m_mine.Value(item);
    if (below == kNoIndex || HasItem(m_theirs, section, key)) {
      m_theirs.PutItem(section, key, value);
    } else {
      m_theirs.InsertItem(section, m_mine.Key(below), key, value);
    }
  }

  const CFileDocument& m_base;
  const CFileDocument& m_mine;
  CFileDocument& m_theirs;
  const CString& m_name;
  CPoolIndex m_baseSection;
  CPoolIndex m_mineSection;
};

}  // namespace

void MergeChanges(const CFileDocument& base, const CFileDocument& mine, CFileDocument& theirs) {
  for (const CString& name : base.SectionNames()) {
    if (mine.FindSection(name) == kNoIndex) {
      CSectionMerge(base, mine, theirs, name).Run();
    }
  }
  for (const CString& name : mine.SectionNames()) {
    CSectionMerge(base, mine, theirs, name).Run();
  }
}

bool HasItems(const CFileDocument& document) {
  const std::vector<CString> names = document.SectionNames();
  return std::any_of(names.begin(), names.end(), [&](const CString& name) {
    return document.ItemCount(document.FindSection(name)) > 0;
  });
}

}  // namespace lum::detail
