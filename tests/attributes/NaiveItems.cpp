// Saving and loading of the naive tree.
#include <cwchar>

#include "definitions/AttribDefMap.h"
#include "tests/attributes/NaiveTree.h"

namespace {

/// Reads a number as the C runtime does.
bool ReadNumber(const CString& text, const wchar_t* format, unsigned int& number) {
  return std::swscanf(text.GetString(), format, &number) == 1;
}

int SectionVersion(const FileObject& file, const CString& section) {
  CString value;
  if (!file.GetItem(section, L"AttrVersion", value)) {
    return 1;
  }
  int version = 0;
  const CLumString fields(value, L',', true, false);
  return fields.GetItem(1, version) ? version : 0;
}

/// Takes a line of a file apart; false when it is no item.
bool SplitLine(CString line, CString& key, CString& value) {
  if (line.Left(1) == L";") {
    return false;
  }
  const int comment = line.Find(L"//");
  if (comment >= 0) {
    line = line.Left(comment);
  }
  const int equals = line.TrimRight().Find(L'=');
  if (equals < 0) {
    return false;
  }
  key = line.Left(equals).TrimRight();
  value = line.Mid(equals + 1).TrimLeft();
  return true;
}

}  // namespace

bool NaiveReadItem(CString key, const CString& value, int version, CNaiveItem& item) {
  if (version == 1) {
    if (key.Left(3) != L"@tr") {
      return false;
    }
    key = key.Mid(3);
  } else if (version != 2) {
    return false;
  }
  item.key = key;
  if (key.Right(9) == L"OrderInfo") {
    item.flags = 0;
    item.text = value;
    return true;
  }
  const int comma = value.Find(L',');
  if (comma < 0) {
    return false;
  }
  const CString field = value.Left(comma);
  item.text = value.Mid(comma + 1);
  item.text.TrimLeft();
  const bool isHexadecimal = field.Left(2) == L"0x" || field.Left(2) == L"0X";
  return isHexadecimal ? ReadNumber(field.Mid(2), L"%x", item.flags)
                       : ReadNumber(field, L"%u", item.flags);
}

bool NaiveSaveWithKey(const CNaiveNode& map, FileObject& file, const CString& section,
                      const CString& prefix) {
  for (std::size_t pos = 0; pos < map.children.size(); ++pos) {
    const CNaiveNode& child = map.children[pos];
    if ((child.flags & 0x8000) != 0) {
      continue;
    }
    CString key = prefix + child.name;
    const int k = map.Occurrence(static_cast<int>(pos));
    if (k != 0) {
      CString index;
      index.Format(L"(%d)", k);
      key += index;
    }
    CString text;
    const bool hasText = child.value->GetValueStr(text) != 0;
    if (hasText || child.flags != 0 || child.children.empty()) {
      CString value;
      if (child.name != L"OrderInfo") {
        value.Format(L"%u,", child.flags);
      }
      if (text.Find(L'\r') < 0 && text.Find(L'\n') < 0) {
        value += text;
      }
      if (!file.SetItem(section, key, value, true)) {
        return false;
      }
    }
    if (!NaiveSaveWithKey(child, file, section, key + L".")) {
      return false;
    }
  }
  return true;
}

bool NaiveSave(const CNaiveNode& map, FileObject& file, const CString& section) {
  int version = 1;
  if (const CNaiveNode* node = map.Child(L"AttrVersion", 0)) {
    node->value->GetInt(version);
  }
  if (version != 1 && version != 2) {
    return false;
  }
  RemoveAttributes(file, section);
  return NaiveSaveWithKey(map, file, section, version == 1 ? CString(L"@tr") : CString());
}

bool NaiveInsert(CNaiveNode& map, const CString& key, const CString& text, unsigned int flags) {
  const int dot = key.Find(L'.');
  CString head = dot >= 0 ? key.Left(dot) : key;
  const int k = StripAttributeIndex(head);
  if (k < 0) {
    return false;
  }
  CNaiveNode& node = map.FindCreate(head, k);
  if (dot >= 0) {
    return NaiveInsert(node, key.Mid(dot + 1), text, flags);
  }
  node.flags = flags;
  CAttribDefRec* definition = CAttribDefMap::GetAttribDefMap().GetAttribDefRec(head);
  if (head.Left(1) == L"@") {
    node.value = std::make_unique<CLumName>();
  } else if (definition != nullptr && definition->DefaultValue() != nullptr) {
    node.value.reset(definition->DefaultValue()->MakeCopy());
  } else {
    node.value = std::make_unique<CLumAnything>(text);
    return true;
  }
  return node.value->SetValueStr(text);
}

bool NaiveLoad(CNaiveNode& map, const FileObject& file, const CString& section, bool merge) {
  if (!merge) {
    map.children.clear();
  }
  const int version = SectionVersion(file, section);
  if (version != 1 && version != 2) {
    return false;
  }
  FobjSection walk;
  CString key;
  CString value;
  for (bool more = file.GetFirstMapEntry(walk, section, key, value); more;
       more = file.GetNextMapEntry(walk, key, value)) {
    CNaiveItem item;
    if (NaiveReadItem(key, value, version, item)) {
      NaiveInsert(map, item.key, item.text, item.flags);
    }
  }
  return true;
}

bool NaiveLoadWithKey(CNaiveNode& map, const FileObject& file, const CString& section,
                      const CString& prefix, bool merge) {
  if (!merge) {
    map.children.clear();
  }
  FobjSection walk;
  CString key;
  CString value;
  for (bool more = file.GetFirstMapEntry(walk, section, key, value); more;
       more = file.GetNextMapEntry(walk, key, value)) {
    CNaiveItem item;
    if (key.Left(prefix.GetLength()) == prefix &&
        NaiveReadItem(key.Mid(prefix.GetLength()), value, 2, item)) {
      NaiveInsert(map, item.key, item.text, item.flags);
    }
  }
  return true;
}

bool NaiveLoadOrdered(CNaiveNode& map, const std::vector<CString>& lines, const CString& section,
                      bool skipMarked) {
  map.children.clear();
  const CString header = L"[" + section + L"]";
  std::size_t i = 0;
  while (i < lines.size() && lines[i].Left(header.GetLength()) != header) {
    ++i;
  }
  if (i == lines.size()) {
    return false;
  }
  int version = 1;
  for (++i; i < lines.size() && lines[i].Left(1) != L"["; ++i) {
    CString key;
    CString value;
    CNaiveItem item;
    if (!SplitLine(lines[i], key, value)) {
      continue;
    }
    version = key == L"AttrVersion" ? 2 : version;
    if (NaiveReadItem(key, value, version, item) && !(skipMarked && (item.flags & 0x80) != 0)) {
      NaiveInsert(map, item.key, item.text, item.flags);
    }
  }
  return true;
}
