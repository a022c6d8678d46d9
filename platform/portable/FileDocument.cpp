// The structure of a sectioned file: sections, their blocks and the records in them. What happens
// to items stands in FileDocumentItems.cpp.
#include "platform/portable/FileDocument.h"

#include "platform/portable/EncodedText.h"

namespace lum::detail {

namespace {

#if defined(_WIN32)
constexpr bool kSystemEndsLinesWithReturn = true;
#else
constexpr bool kSystemEndsLinesWithReturn = false;
#endif

CFileRecord LoadedRecord(CFileRecord::Kind kind, CByteSpan line) {
  CFileRecord record;
  record.kind = kind;
  record.line = line;
  record.isLoaded = true;
  return record;
}

/// A section's name, as the index of sections asks for it.
struct NameText {
  const CString& name;

  std::string operator()() const { return OrderedForm(CFileTextOf(name)); }
};

}  // namespace

CFileDocument::CFileDocument() : m_endsLinesWithReturn(kSystemEndsLinesWithReturn) {
  AddSection(CString(), LoadedRecord(Kind::Header, {}));
}

// ---- Loading

void CFileDocument::StartLoading(std::shared_ptr<const std::string> file, TextFileEncoding encoding,
                                 bool endsLinesWithReturn) {
  m_store = CFileStore(std::move(file));
  m_encoding = encoding;
  m_endsLinesWithReturn = endsLinesWithReturn;
}

void CFileDocument::AddLoadedHeader(const CString& name, CByteSpan line) {
  const CFileRecord header = LoadedRecord(Kind::Header, line);
  const CPoolIndex found = FindNamed(name);
  if (found != kNoIndex) {
    AddBlock(found, header);
  } else {
    AddSection(name, header);
  }
}

void CFileDocument::AddLoadedText(CByteSpan line) {
  const CPoolIndex last = m_blocks[m_lastBlock].last;
  if (m_records[last].kind == Kind::Text) {
    m_records[last].line.end = line.end;
  } else {
    InsertAfter(last, LoadedRecord(Kind::Text, line));
  }
}

void CFileDocument::AddLoadedItem(CByteSpan key, CByteSpan value, CByteSpan line) {
  CFileRecord record = LoadedRecord(Kind::Item, line);
  record.key = Keep(key);
  record.value = Keep(value);
  record.loadedValue = value;
  record.keyHash = HashKey(m_store.Text(record.key));
  ++m_sections[m_blocks[m_lastBlock].section].itemCount;
  InsertAfter(m_blocks[m_lastBlock].last, record);
}

// The keys are put into the indexes at the end: a short loop waits for several pieces of memory at
// once, and a table that has its size is not copied.
void CFileDocument::FinishLoading() {
  for (CPoolIndex block = m_firstBlock; block != kNoIndex; block = m_blocks[block].next) {
    CFileSection& section = m_sections[m_blocks[block].section];
    section.items.Reserve(section.itemCount);
    CPoolIndex record = m_blocks[block].header;
    for (; record != kNoIndex; record = m_records[record].next) {
      if (m_records[record].kind == Kind::Item) {
        IndexLoaded(section, record);
      }
    }
  }
}

void CFileDocument::IndexLoaded(CFileSection& section, CPoolIndex item) {
  CFileRecord& record = m_records[item];
  const CPoolIndex older = section.items.Find(
      record.keyHash,
      [&](CPoolIndex other) {
        return m_store.Text(m_records[other].key) == m_store.Text(record.key);
      },
      KeyTextOf(item));
  if (older == kNoIndex) {
    section.items.Add(record.keyHash, item, KeyTextOf(item));
    return;
  }
  record.older = older;
  m_records[older].isShadowed = true;
  section.items.Replace(record.keyHash, older, item, KeyTextOf(item));
  --section.itemCount;
}

// Bytes that are the text's form already stay where they are.
CStoredText CFileDocument::Keep(CByteSpan loaded) {
  const std::string_view bytes = m_store.Bytes(loaded);
  if (UnitSize(m_encoding) == 1 && IsAscii(bytes)) {
    return CFileStore::TextAt(loaded.begin, bytes.size());
  }
  return m_store.AddText(CFileTextOf(DecodeText(bytes, m_encoding)));
}

// ---- Sections

// The top section has no header of its own: it exists while it has items.
bool CFileDocument::Exists(CPoolIndex section) const {
  return section != kTopSection || m_sections[section].itemCount > 0 ||
         m_sections[section].firstBlock != m_sections[section].lastBlock;
}

CPoolIndex CFileDocument::FindNamed(const CString& name) const {
  if (m_recentSection != kNoIndex && m_sections[m_recentSection].name == name) {
    return m_recentSection;
  }
  return m_sectionsByName.Find(
      HashKey(name), [&](CPoolIndex section) { return m_sections[section].name == name; },
      NameText{name});
}

CPoolIndex CFileDocument::FindSection(const CString& name) const {
  const CPoolIndex found = FindNamed(name);
  return found != kNoIndex && Exists(found) ? found : kNoIndex;
}

CPoolIndex CFileDocument::FindOrAddSection(const CString& name) {
  const CPoolIndex found = FindNamed(name);
  if (found != kNoIndex) {
    return found;
  }
  CFileRecord header;
  header.kind = Kind::Header;
  return AddSection(name, header);
}

void CFileDocument::RemoveSection(CPoolIndex section) {
  const bool isTop = section == kTopSection;
  if (!isTop) {
    // First, since names that crowd need memory for this.
    m_sectionsByName.Remove(m_sections[section].nameHash, section,
                            NameText{m_sections[section].name});
  }
  CPoolIndex block = m_sections[section].firstBlock;
  while (block != kNoIndex) {
    const CPoolIndex next = m_blocks[block].nextOfSection;
    RemoveRecords(block);
    if (block != m_sections[kTopSection].firstBlock) {
      UnlinkBlock(block);
    }
    block = next;
  }
  if (!isTop) {
    m_sections.Free(section);
    m_recentSection = kNoIndex;
    return;
  }
  CFileSection emptied;
  emptied.firstBlock = emptied.lastBlock = m_sections[kTopSection].firstBlock;
  m_blocks[emptied.firstBlock].nextOfSection = kNoIndex;
  emptied.nameHash = m_sections[kTopSection].nameHash;
  m_sections[kTopSection] = std::move(emptied);
}

std::vector<CString> CFileDocument::SectionNames() const {
  std::vector<CString> names;
  for (CPoolIndex block = m_firstBlock; block != kNoIndex; block = m_blocks[block].next) {
    const CPoolIndex section = m_blocks[block].section;
    if (block == m_sections[section].firstBlock && Exists(section)) {
      names.push_back(m_sections[section].name);
    }
  }
  return names;
}

// The section is found once it is whole: it has a block.
CPoolIndex CFileDocument::AddSection(const CString& name, const CFileRecord& header) {
  CFileSection section;
  section.name = name;
  const CKeyHash hash = section.nameHash = HashKey(name);
  const auto room = m_sectionsByName.MakeRoom(hash, NameText{name});
  const CPoolIndex index = m_sections.Add(section);
  try {
    AddBlock(index, header);
  } catch (...) {
    m_sections.Free(index);
    throw;
  }
  m_sectionsByName.Enter(room, hash, index);
  m_recentSection = index;
  return index;
}

// ---- Blocks

CPoolIndex CFileDocument::AddBlock(CPoolIndex section, const CFileRecord& header) {
  CFileBlock block;
  block.section = section;
  block.previous = m_lastBlock;
  const CPoolIndex index = m_blocks.Add(block);
  const CPoolIndex record = m_records.Add(header);
  m_records[record].block = index;
  m_blocks[index].header = m_blocks[index].last = m_blocks[index].lastItem = record;

  (m_lastBlock == kNoIndex ? m_firstBlock : m_blocks[m_lastBlock].next) = index;
  m_lastBlock = index;
  CFileSection& owner = m_sections[section];
  (owner.lastBlock == kNoIndex ? owner.firstBlock : m_blocks[owner.lastBlock].nextOfSection) =
      index;
  owner.lastBlock = index;
  return index;
}

// The section's own chain is the caller's business: it goes as a whole.
void CFileDocument::UnlinkBlock(CPoolIndex block) {
  const CFileBlock& unlinked = m_blocks[block];
  m_blocks[unlinked.previous].next = unlinked.next;
  (unlinked.next == kNoIndex ? m_lastBlock : m_blocks[unlinked.next].previous) = unlinked.previous;
  m_records.Free(unlinked.header);
  m_blocks.Free(block);
}

// All but the header.
void CFileDocument::RemoveRecords(CPoolIndex block) {
  CFileBlock& emptied = m_blocks[block];
  CPoolIndex record = m_records[emptied.header].next;
  while (record != kNoIndex) {
    const CPoolIndex next = m_records[record].next;
    FreeRecord(record);
    record = next;
  }
  m_records[emptied.header].next = kNoIndex;
  emptied.last = emptied.lastItem = emptied.header;
}

// ---- Records of a block

CPoolIndex CFileDocument::InsertAfter(CPoolIndex place, const CFileRecord& record) {
  const CPoolIndex index = m_records.Add(record);
  LinkAfter(place, index);
  return index;
}

// An item is only put after the block's last item, or after a record that has an item below it.
void CFileDocument::LinkAfter(CPoolIndex place, CPoolIndex record) {
  CFileRecord& linked = m_records[record];
  CFileBlock& block = m_blocks[m_records[place].block];
  linked.block = m_records[place].block;
  linked.previous = place;
  linked.next = m_records[place].next;
  m_records[place].next = record;
  (linked.next == kNoIndex ? block.last : m_records[linked.next].previous) = record;
  if (linked.kind == Kind::Item &&
      (block.lastItem == place || block.lastItem == block.header || block.last == record)) {
    block.lastItem = record;
  }
}

void CFileDocument::Unlink(CPoolIndex record) {
  const CFileRecord& unlinked = m_records[record];
  CFileBlock& block = m_blocks[unlinked.block];
  if (block.lastItem == record) {
    block.lastItem = ItemOrHeaderAbove(record);
  }
  m_records[unlinked.previous].next = unlinked.next;
  (unlinked.next == kNoIndex ? block.last : m_records[unlinked.next].previous) = unlinked.previous;
}

void CFileDocument::RemoveRecord(CPoolIndex record) {
  CFileSection& section = m_sections[m_blocks[m_records[record].block].section];
  if (section.cursor == record) {
    section.cursor = ItemOrHeaderAbove(record);
  }
  Unlink(record);
  FreeRecord(record);
}

void CFileDocument::FreeRecord(CPoolIndex record) {
  DropText(m_records[record].key);
  DropText(m_records[record].value);
  m_records.Free(record);
}

CPoolIndex CFileDocument::ItemOrHeaderAbove(CPoolIndex record) const {
  do {
    record = m_records[record].previous;
  } while (m_records[record].kind == Kind::Text);
  return record;
}

}  // namespace lum::detail
