// The items of a section: where a new one goes, which lines a change touches, and the places that
// are remembered for items that may come back.
#include "platform/portable/EncodedText.h"
#include "platform/portable/FileDocument.h"
#include "platform/portable/LineSyntax.h"

namespace lum::detail {

// ---- Reading

CPoolIndex CFileDocument::FindItem(CPoolIndex section, const CFileText& key) const {
  const CPoolIndex item = FindRecord(section, key, HashKey(key));
  return item == kNoIndex || m_records[item].isRemembered ? kNoIndex : item;
}

CPoolIndex CFileDocument::FindRecord(CPoolIndex section, const CFileText& key,
                                     CKeyHash hash) const {
  return m_sections[section].items.Find(
      hash, [&](CPoolIndex item) { return m_store.Text(m_records[item].key) == key; },
      [&] { return OrderedForm(key); });
}

CPoolIndex CFileDocument::NextItem(CPoolIndex record) const {
  CPoolIndex block = m_records[record].block;
  for (;;) {
    record = m_records[record].next;
    while (record == kNoIndex) {
      block = m_blocks[block].nextOfSection;
      if (block == kNoIndex) {
        return kNoIndex;
      }
      record = m_records[m_blocks[block].header].next;
    }
    const CFileRecord& candidate = m_records[record];
    if (candidate.kind == Kind::Item && !candidate.isShadowed && !candidate.isRemembered) {
      return record;
    }
  }
}

// ---- Changing

// A value that is set back to the loaded one gives the line its loaded bytes again.
void CFileDocument::SetValue(CFileRecord& item, const CFileText& value) {
  if (m_store.Text(item.value) == value) {
    return;
  }
  TidyTexts();
  const bool isChanged = item.isLoaded && !IsLoadedValue(item, value);
  const CStoredText added = m_store.AddText(value);
  DropText(item.value);
  item.value = added;
  item.isChanged = isChanged;
  if (!item.isLoaded) {
    item.line = {};
  }
}

bool CFileDocument::IsLoadedValue(const CFileRecord& item, const CFileText& value) const {
  return CFileTextOf(DecodeText(m_store.Bytes(item.loadedValue), m_encoding)) == value;
}

bool CFileDocument::ReplaceItem(CPoolIndex section, const CFileText& key, const CFileText& value) {
  const CPoolIndex item = FindItem(section, key);
  if (item == kNoIndex) {
    return false;
  }
  SetValue(m_records[item], value);
  return true;
}

void CFileDocument::PutItem(CPoolIndex section, const CFileText& key, const CFileText& value) {
  m_recentSection = section;
  const CKeyHash hash = HashKey(key);
  const CPoolIndex item = FindRecord(section, key, hash);
  if (item == kNoIndex) {
    AddItem(section, NewItem(key, hash, value));
    return;
  }
  SetValue(m_records[item], value);
  if (m_records[item].isRemembered) {
    Revive(section, item);
  }
  FollowWithCursor(section, item);
}

bool CFileDocument::RemoveItem(CPoolIndex section, const CFileText& key) {
  const CPoolIndex item = FindItem(section, key);
  if (item == kNoIndex) {
    return false;
  }
  RemoveKey(section, item);
  --m_sections[section].itemCount;
  return true;
}

// Removes the record that counts for a key and those it overrides.
void CFileDocument::RemoveKey(CPoolIndex section, CPoolIndex item) {
  m_sections[section].items.Remove(m_records[item].keyHash, item, KeyTextOf(item));
  while (item != kNoIndex) {
    const CPoolIndex older = m_records[item].older;
    RemoveRecord(item);
    item = older;
  }
}

// All lines of the key are renamed: an overridden one would count under the old key otherwise. What
// needs memory comes first.
bool CFileDocument::RenameItem(CPoolIndex section, const CFileText& key, const CFileText& newKey) {
  const CPoolIndex item = FindItem(section, key);
  if (item == kNoIndex || !FreeKey(section, newKey)) {
    return false;
  }
  TidyTexts();
  std::vector<CNewKey> lines;
  for (CPoolIndex line = item; line != kNoIndex; line = m_records[line].older) {
    const CFileRecord& record = m_records[line];
    const bool isRenamed = record.isLoaded && !IsLoadedKey(record, newKey);
    lines.push_back({line, m_store.AddText(newKey), isRenamed});
  }
  const CKeyHash newHash = HashKey(newKey);
  const std::string oldText = OrderedForm(key);
  m_sections[section].items.Rename(
      m_records[item].keyHash, newHash, item, [&]() -> const std::string& { return oldText; },
      [&] { return OrderedForm(newKey); });
  for (const CNewKey& line : lines) {
    Rename(m_records[line.record], line, newHash);
  }
  return true;
}

void CFileDocument::Rename(CFileRecord& line, const CNewKey& key, CKeyHash hash) {
  DropText(line.key);
  line.key = key.text;
  line.keyHash = hash;
  line.isRenamed = key.isRenamed;
  if (!line.isLoaded) {
    line.line = {};
  }
}

bool CFileDocument::IsLoadedKey(const CFileRecord& item, const CFileText& key) const {
  const std::string_view line = m_store.Bytes(item.line);
  const CLineSyntax syntax = ParseLine(line, m_encoding);
  const std::string_view name = line.substr(syntax.nameBegin, syntax.nameEnd - syntax.nameBegin);
  return CFileTextOf(DecodeText(name, m_encoding)) == key;
}

bool CFileDocument::InsertItem(CPoolIndex section, const CFileText& beforeKey, const CFileText& key,
                               const CFileText& value) {
  const CPoolIndex before = FindItem(section, beforeKey);
  if (before == kNoIndex || !FreeKey(section, key)) {
    return false;
  }
  const CPoolIndex above = m_records[before].previous;
  const CKeyHash hash = HashKey(key);
  CFileRecord item = NewItem(key, hash, value);
  item.order = m_records[above].order;
  CKeyIndex& index = m_sections[section].items;
  const auto room = index.MakeRoom(hash, [&] { return OrderedForm(key); });
  index.Enter(room, hash, InsertAfter(above, item));
  ++m_sections[section].itemCount;
  return true;
}

// Forgets the remembered place of a key, so that the key can stand elsewhere. False when an item
// has the key.
bool CFileDocument::FreeKey(CPoolIndex section, const CFileText& key) {
  const CPoolIndex item = FindRecord(section, key, HashKey(key));
  if (item == kNoIndex) {
    return true;
  }
  if (!m_records[item].isRemembered) {
    return false;
  }
  RemoveKey(section, item);
  return true;
}

// ---- Texts

// The line of a new item is written as a whole where that is its very bytes, so that saving has
// little to do. It is made piece by piece otherwise.
CFileRecord CFileDocument::NewItem(const CFileText& key, CKeyHash hash, const CFileText& value) {
  TidyTexts();
  CFileRecord item;
  item.kind = Kind::Item;
  item.keyHash = hash;
  if (UnitSize(m_encoding) == 1 && !key.isWide && !value.isWide) {
    item.line = m_store.AddLine(key.bytes, value.bytes, m_endsLinesWithReturn ? "\r\n" : "\n");
    item.key = CFileStore::TextAt(item.line.begin, key.bytes.size());
    item.value = CFileStore::TextAt(item.line.begin + item.key.size + 1, value.bytes.size());
  } else {
    item.key = m_store.AddText(key);
    item.value = m_store.AddText(value);
  }
  return item;
}

void CFileDocument::DropText(CStoredText text) {
  if (CFileStore::IsAdded(text.begin)) {
    m_store.Drop(text.size);
  }
}

// Texts that nothing refers to any more are as good as gone: moving the others together takes time
// for every record, so it waits until there is much to gain. No record may be on its way.
void CFileDocument::TidyTexts() {
  constexpr std::size_t kWorthwhile = 4096;
  constexpr std::size_t kPerRecord = 16;
  if (m_store.Dropped() < kWorthwhile + kPerRecord * m_records.Size() ||
      m_store.Dropped() < m_store.AddedSize() / 2) {
    return;
  }
  CFileStore tidy = m_store.WithoutAdded();
  for (CPoolIndex block = m_firstBlock; block != kNoIndex; block = m_blocks[block].next) {
    CPoolIndex record = m_blocks[block].header;
    for (; record != kNoIndex; record = m_records[record].next) {
      MoveTexts(m_records[record], tidy);
    }
  }
  m_store = std::move(tidy);
}

void CFileDocument::MoveTexts(CFileRecord& record, CFileStore& target) const {
  if (!record.isLoaded && !record.line.IsEmpty()) {
    const std::uint32_t move = target.End() - record.line.begin;
    target.Add(m_store.Bytes(record.line));
    record.line.begin += move;
    record.line.end += move;
    record.key.begin += move;
    record.value.begin += move;
    return;
  }
  for (CStoredText* text : {&record.key, &record.value}) {
    if (CFileStore::IsAdded(text->begin)) {
      *text = target.AddText(m_store.Text(*text));
    }
  }
}

// ---- The place of a new item

void CFileDocument::AddItem(CPoolIndex section, const CFileRecord& item) {
  CFileSection& owner = m_sections[section];
  const auto room =
      owner.items.MakeRoom(item.keyHash, [&] { return OrderedForm(m_store.Text(item.key)); });
  const CPoolIndex place = owner.cursor != kNoIndex ? owner.cursor : EndOfItems(section);
  const CPoolIndex added = InsertAfter(place, item);
  m_records[added].order = owner.cursorOrder;
  owner.items.Enter(room, item.keyHash, added);
  ++owner.itemCount;
  if (owner.cursor != kNoIndex) {
    owner.cursor = added;
  }
}

// New items follow the last one of the section's last block: the blank lines and comments below it
// are taken to belong to the next section.
CPoolIndex CFileDocument::EndOfItems(CPoolIndex section) {
  const CPoolIndex block = m_sections[section].lastBlock;
  const CPoolIndex lastItem = m_blocks[block].lastItem;
  return lastItem != m_blocks[block].header ? lastItem : AfterLeadingComment(block);
}

// In a block without items a new one goes below the lines that follow the header directly, above
// the first blank line.
CPoolIndex CFileDocument::AfterLeadingComment(CPoolIndex block) {
  CPoolIndex place = m_blocks[block].header;
  for (CPoolIndex text = m_records[place].next; text != kNoIndex; text = m_records[text].next) {
    const CByteSpan span = m_records[text].line;
    const std::uint32_t blank = FirstBlankLine(span);
    if (blank == span.begin) {
      return place;
    }
    if (blank < span.end) {
      return SplitText(text, blank);
    }
    place = text;
  }
  return place;
}

std::uint32_t CFileDocument::FirstBlankLine(CByteSpan text) const {
  const std::string_view file = std::string_view(m_store.Loaded()).substr(0, text.end);
  std::size_t begin = text.begin;
  while (begin < text.end) {
    const CLineBounds line = LineAt(file, begin, m_encoding);
    const CLineSyntax syntax = ParseLine(file.substr(begin, line.end - begin), m_encoding);
    if (syntax.kind == FileObjectLine::Kind::Blank) {
      break;
    }
    begin = line.next;
  }
  return static_cast<std::uint32_t>(begin);
}

// Cuts a run of lines in two and returns the upper part.
CPoolIndex CFileDocument::SplitText(CPoolIndex text, std::uint32_t place) {
  CFileRecord lower;
  lower.kind = Kind::Text;
  lower.isLoaded = true;
  lower.line = {place, m_records[text].line.end};
  InsertAfter(text, lower);
  m_records[text].line.end = place;
  return text;
}

// ---- Remembered places

void CFileDocument::ReplaceItems(CPoolIndex section, const CFileDocument& from,
                                 CPoolIndex fromSection) {
  RememberAll(section);
  RestartCursor(section);
  for (CPoolIndex item = from.FirstItem(fromSection); item != kNoIndex;
       item = from.NextItem(item)) {
    PutItem(section, from.Key(item), from.Value(item));
  }
  ForgetRemembered(section, false);
  RestartCursor(section);
}

void CFileDocument::ForgetPlaces() {
  for (CPoolIndex block = m_firstBlock; block != kNoIndex; block = m_blocks[block].next) {
    const CPoolIndex section = m_blocks[block].section;
    if (m_sections[section].cursor != kNoIndex) {
      ForgetRemembered(section, true);
      m_sections[section].cursor = kNoIndex;
    }
  }
}

template <typename Action>
void CFileDocument::ForEachRecord(CPoolIndex section, Action action) {
  CPoolIndex block = m_sections[section].firstBlock;
  for (; block != kNoIndex; block = m_blocks[block].nextOfSection) {
    CPoolIndex record = m_blocks[block].header;
    while (record != kNoIndex) {
      const CPoolIndex next = m_records[record].next;
      action(record);
      record = next;
    }
  }
}

void CFileDocument::RememberAll(CPoolIndex section) {
  ForEachRecord(section, [&](CPoolIndex index) {
    m_records[index].isRemembered = m_records[index].kind == Kind::Item;
  });
  m_sections[section].itemCount = 0;
}

void CFileDocument::ForgetRemembered(CPoolIndex section, bool loadedToo) {
  ForEachRecord(section, [&](CPoolIndex index) {
    const CFileRecord& record = m_records[index];
    if (!record.isRemembered || (record.isLoaded && !loadedToo)) {
      return;
    }
    if (!record.isShadowed) {
      m_sections[section].items.Remove(record.keyHash, index, KeyTextOf(index));
    }
    RemoveRecord(index);
  });
}

void CFileDocument::RestartCursor(CPoolIndex section) {
  std::uint32_t order = 0;
  CPoolIndex first = kNoIndex;
  ForEachRecord(section, [&](CPoolIndex index) {
    m_records[index].order = order++;
    if (first == kNoIndex && m_records[index].isRemembered) {
      first = index;
    }
  });
  CFileSection& owner = m_sections[section];
  owner.cursor = first == kNoIndex ? kNoIndex : m_records[first].previous;
  owner.cursorOrder = first == kNoIndex ? 0 : m_records[first].order - 1;
}

// Brings an item back: where its line was, when that is after the cursor, else its line moves to
// the cursor. Overridden lines of the same key come back too; they stand above it in both cases.
void CFileDocument::Revive(CPoolIndex section, CPoolIndex item) {
  CFileSection& owner = m_sections[section];
  if (m_records[item].order <= owner.cursorOrder && item != owner.cursor) {
    Unlink(item);
    m_records[item].order = owner.cursorOrder;
    LinkAfter(owner.cursor, item);
    owner.cursor = item;
  }
  for (CPoolIndex line = item; line != kNoIndex; line = m_records[line].older) {
    m_records[line].isRemembered = false;
  }
  ++owner.itemCount;
}

void CFileDocument::FollowWithCursor(CPoolIndex section, CPoolIndex item) {
  CFileSection& owner = m_sections[section];
  if (owner.cursor != kNoIndex && m_records[item].order > owner.cursorOrder) {
    owner.cursor = item;
    owner.cursorOrder = m_records[item].order;
  }
}

}  // namespace lum::detail
