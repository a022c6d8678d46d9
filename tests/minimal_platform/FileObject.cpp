// Sectioned files: lists of sections and items, read from and written to the files in memory.
#include <algorithm>

#include "platform/LumBase.h"
#include "platform/TextEncoding.h"

namespace {

bool HasLineBreak(const CString& text) { return text.FindOneOf(L"\r\n") >= 0; }

bool CanBeKey(const CString& key) {
  const bool looksOtherwise = key[0] == L'[' || key[0] == L';' || key.Find(L"//") == 0;
  return !key.IsEmpty() && !looksOtherwise && key.Find(L'=') < 0 && !HasLineBreak(key) &&
         CString(key).Trim() == key;
}

// The section or item of a name, or null.
template <typename Entries>
auto FindEntry(Entries& entries, const CString& name) {
  const auto found = std::find_if(entries.begin(), entries.end(),
                                  [&](const auto& entry) { return entry.name == name; });
  return found == entries.end() ? nullptr : &*found;
}

}  // namespace

bool FileObject::CreateSection(const CString& section, bool clear) {
  if (HasLineBreak(section) || section.Find(L']') >= 0) {
    return false;
  }
  Section* found = FindEntry(m_sections, section);
  if (found == nullptr) {
    m_sections.push_back({section, {}});
  } else if (clear) {
    found->items.clear();
  }
  return true;
}

bool FileObject::HasSection(const CString& section) const {
  return FindEntry(m_sections, section) != nullptr;
}

int FileObject::ItemCount(const CString& section) const {
  const Section* found = FindEntry(m_sections, section);
  return found == nullptr ? 0 : static_cast<int>(found->items.size());
}

bool FileObject::SetItem(const CString& section, const CString& key, const CString& value,
                         bool create) {
  if (!CanBeKey(key) || HasLineBreak(value) || (create && !CreateSection(section, false))) {
    return false;
  }
  Section* found = FindEntry(m_sections, section);
  Item* item = found == nullptr ? nullptr : FindEntry(found->items, key);
  if (item != nullptr) {
    item->value = value;
  } else if (create) {
    found->items.push_back({key, value});
  }
  return item != nullptr || create;
}

bool FileObject::GetItem(const CString& section, const CString& key, CString& value) const {
  const Section* found = FindEntry(m_sections, section);
  const Item* item = found == nullptr ? nullptr : FindEntry(found->items, key);
  if (item != nullptr) {
    value = item->value;
  }
  return item != nullptr;
}

bool FileObject::GetFirstMapEntry(FobjSection& walk, const CString& section, CString& key,
                                  CString& value) const {
  walk = {section, 0};
  return GetNextMapEntry(walk, key, value);
}

bool FileObject::GetNextMapEntry(FobjSection& walk, CString& key, CString& value) const {
  const Section* section = FindEntry(m_sections, walk.section);
  if (section == nullptr || walk.next >= section->items.size()) {
    return false;
  }
  const Item& item = section->items[walk.next++];
  key = item.name;
  value = item.value;
  return true;
}

bool FileObject::CopySection(const CString& section, const FileObject& from) {
  if (!CreateSection(section, true)) {
    return false;
  }
  if (const Section* source = FindEntry(from.m_sections, section)) {
    FindEntry(m_sections, section)->items = source->items;
  }
  return true;
}

void FileObject::ReadLine(CString line, CString& section) {
  line.TrimLeft();
  const int equals = line.Find(L'=');
  if (line[0] == L'[') {
    section = line.Mid(1, line.Find(L']') - 1);
    CreateSection(section, false);
  } else if (equals > 0) {
    SetItem(section, line.Left(equals).TrimRight(), line.Mid(equals + 1).TrimLeft(), true);
  }
}

bool FileObject::Load(const CString& path) {
  const std::string* bytes = MemoryFiles::Find(path);
  if (bytes == nullptr) {
    return false;
  }
  m_sections.clear();
  MemoryFileLines lines(*bytes);
  CString section;
  for (CString line; lines.Next(line);) {
    ReadLine(line, section);
  }
  return true;
}

bool FileObject::Save(const CString& path) {
  CString text;
  for (const Section& section : m_sections) {
    text += L"[" + section.name + L"]\n";
    for (const Item& item : section.items) {
      text += item.name + L"=" + item.value + L"\n";
    }
  }
  MemoryFiles::Write(path, WideToUtf8(text).GetString());
  return true;
}
