// CFileDocument: the content of a sectioned configuration file. Every header begins a block, the
// list of records up to the next header; a section is the chain of its blocks. A record is a
// header, an item or a run of lines that have no meaning (comments, blank and unknown lines), and
// knows its bytes in the loaded file, so that what is not changed is saved as it was.
//
// FileObject is the interface to it, FileObjectText.h reads and writes it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/FileObject.h"
#include "platform/portable/FileStore.h"
#include "platform/portable/FileText.h"
#include "platform/portable/IndexPool.h"
#include "platform/portable/KeyIndex.h"

namespace lum::detail {

struct CFileRecord {
  enum class Kind : std::uint8_t { Text, Header, Item };

  /// What is written while nothing is changed: the loaded line or lines with their terminators, or
  /// the line of an item that was added. Empty when there is none.
  CByteSpan line;
  CStoredText key;        ///< Of an item.
  CStoredText value;      ///< Of an item.
  CByteSpan loadedValue;  ///< Of a loaded item.
  CPoolIndex block = kNoIndex;
  CPoolIndex previous = kNoIndex;  ///< In the block.
  CPoolIndex next = kNoIndex;
  CPoolIndex older = kNoIndex;  ///< The next line above of the same key.
  CKeyHash keyHash = 0;         ///< Of an item.
  std::uint32_t order = 0;      ///< See CFileSection::cursor.
  Kind kind = Kind::Text;
  bool isLoaded = false;
  bool isShadowed = false;    ///< An item that a later line of the same key overrides.
  bool isRemembered = false;  ///< An item that is gone and whose place is kept.
  bool isChanged = false;     ///< A loaded item whose value is not the loaded one.
  bool isRenamed = false;     ///< A loaded item whose key is not the loaded one.
};

struct CFileBlock {
  CPoolIndex section = kNoIndex;
  CPoolIndex header =
      kNoIndex;  ///< The first record. That of the lines above all headers is empty.
  CPoolIndex last = kNoIndex;
  CPoolIndex lastItem = kNoIndex;  ///< The header when there is no item.
  CPoolIndex nextOfSection = kNoIndex;
  CPoolIndex previous = kNoIndex;  ///< In the file.
  CPoolIndex next = kNoIndex;
};

struct CFileSection {
  CString name;
  CKeyHash nameHash = 0;
  CPoolIndex firstBlock = kNoIndex;
  CPoolIndex lastBlock = kNoIndex;
  /// The record that counts for each key, remembered ones included.
  CKeyIndex items;
  std::size_t itemCount = 0;
  /// While places are remembered: the record after which the next new item goes. It moves with the
  /// items that are set, so that items stand in the order of the calls and, as far as that allows,
  /// where their lines were. `order` numbers the section's records as they stood when the cursor
  /// started; one that has come or moved since is not below the cursor and takes its order. So a
  /// record stands below the cursor when its order is above cursorOrder.
  CPoolIndex cursor = kNoIndex;
  std::uint32_t cursorOrder = 0;
};

class CFileDocument {
 public:
  /// The lines above all headers belong to this section, whose name is empty. It is always there.
  static constexpr CPoolIndex kTopSection = 0;

  CFileDocument();

  // ---- Building it from a file: see FileObjectText.h

  void StartLoading(std::shared_ptr<const std::string> file, TextFileEncoding encoding,
                    bool endsLinesWithReturn);
  void AddLoadedHeader(const CString& name, CByteSpan line);
  void AddLoadedText(CByteSpan line);
  void AddLoadedItem(CByteSpan key, CByteSpan value, CByteSpan line);
  void FinishLoading();

  // ---- Sections

  /// kNoIndex when there is none.
  CPoolIndex FindSection(const CString& name) const;
  CPoolIndex FindOrAddSection(const CString& name);
  void RemoveSection(CPoolIndex section);
  std::vector<CString> SectionNames() const;
  std::size_t ItemCount(CPoolIndex section) const { return m_sections[section].itemCount; }

  // ---- Items

  /// kNoIndex when there is none.
  CPoolIndex FindItem(CPoolIndex section, const CFileText& key) const;
  /// False when there is no such item.
  bool ReplaceItem(CPoolIndex section, const CFileText& key, const CFileText& value);
  /// Replaces an item or adds it: at the end of the section or, while places are remembered, at the
  /// cursor.
  void PutItem(CPoolIndex section, const CFileText& key, const CFileText& value);
  bool RemoveItem(CPoolIndex section, const CFileText& key);
  /// False when there is no such item or the new key is taken.
  bool RenameItem(CPoolIndex section, const CFileText& key, const CFileText& newKey);
  /// False when the other item is missing or the key is taken.
  bool InsertItem(CPoolIndex section, const CFileText& beforeKey, const CFileText& key,
                  const CFileText& value);
  /// Makes those of another section the section's only items, in their order, and remembers the
  /// places of loaded lines whose items are gone.
  /// Precondition: the items are another document's. A section of kNoIndex has none.
  void ReplaceItems(CPoolIndex section, const CFileDocument& from, CPoolIndex fromSection);
  void ForgetPlaces();

  /// The next item that counts below a record of the same section; kNoIndex at the end of the walk.
  CPoolIndex NextItem(CPoolIndex record) const;
  CPoolIndex FirstItem(CPoolIndex section) const {
    return section == kNoIndex ? kNoIndex
                               : NextItem(m_blocks[m_sections[section].firstBlock].header);
  }
  CFileText Key(CPoolIndex item) const { return m_store.Text(m_records[item].key); }
  CFileText Value(CPoolIndex item) const { return m_store.Text(m_records[item].value); }

  // ---- What it is made of, in the order of the file

  CPoolIndex FirstBlock() const { return m_firstBlock; }
  const CFileBlock& Block(CPoolIndex block) const { return m_blocks[block]; }
  const CFileRecord& Record(CPoolIndex record) const { return m_records[record]; }
  const CFileSection& Section(CPoolIndex section) const { return m_sections[section]; }

  const CFileStore& Store() const { return m_store; }
  TextFileEncoding Encoding() const { return m_encoding; }
  bool EndsLinesWithReturn() const { return m_endsLinesWithReturn; }

 private:
  using Kind = CFileRecord::Kind;

  /// What becomes of the key of one line.
  struct CNewKey {
    CPoolIndex record;
    CStoredText text;
    bool isRenamed;
  };

  CStoredText Keep(CByteSpan loaded);
  void IndexLoaded(CFileSection& section, CPoolIndex item);
  /// An item's key, as the index of its section asks for it.
  auto KeyTextOf(CPoolIndex item) const {
    return [this, item] { return OrderedForm(Key(item)); };
  }
  CPoolIndex FindNamed(const CString& name) const;
  CPoolIndex AddSection(const CString& name, const CFileRecord& header);
  CPoolIndex AddBlock(CPoolIndex section, const CFileRecord& header);
  void UnlinkBlock(CPoolIndex block);
  void RemoveRecords(CPoolIndex block);
  bool Exists(CPoolIndex section) const;

  /// The record that counts for a key, also a remembered one; kNoIndex when there is none.
  CPoolIndex FindRecord(CPoolIndex section, const CFileText& key, CKeyHash hash) const;
  CPoolIndex InsertAfter(CPoolIndex place, const CFileRecord& record);
  void LinkAfter(CPoolIndex place, CPoolIndex record);
  void Unlink(CPoolIndex record);
  void RemoveRecord(CPoolIndex record);
  void FreeRecord(CPoolIndex record);
  void RemoveKey(CPoolIndex section, CPoolIndex item);
  void Rename(CFileRecord& line, const CNewKey& key, CKeyHash hash);
  bool FreeKey(CPoolIndex section, const CFileText& key);
  bool IsLoadedKey(const CFileRecord& item, const CFileText& key) const;
  bool IsLoadedValue(const CFileRecord& item, const CFileText& value) const;
  CPoolIndex ItemOrHeaderAbove(CPoolIndex record) const;

  CFileRecord NewItem(const CFileText& key, CKeyHash hash, const CFileText& value);
  void DropText(CStoredText text);
  void TidyTexts();
  void MoveTexts(CFileRecord& record, CFileStore& target) const;
  void SetValue(CFileRecord& item, const CFileText& value);
  void AddItem(CPoolIndex section, const CFileRecord& item);
  void Revive(CPoolIndex section, CPoolIndex item);
  void FollowWithCursor(CPoolIndex section, CPoolIndex item);
  CPoolIndex EndOfItems(CPoolIndex section);
  CPoolIndex AfterLeadingComment(CPoolIndex block);
  CPoolIndex SplitText(CPoolIndex text, std::uint32_t place);
  std::uint32_t FirstBlankLine(CByteSpan text) const;

  void RememberAll(CPoolIndex section);
  void ForgetRemembered(CPoolIndex section, bool loadedToo);
  /// Puts the cursor before the first remembered place, or nowhere when there is none.
  void RestartCursor(CPoolIndex section);
  template <typename Action>
  void ForEachRecord(CPoolIndex section, Action action);

  CIndexPool<CFileRecord> m_records;
  CIndexPool<CFileBlock> m_blocks;
  CIndexPool<CFileSection> m_sections;
  CKeyIndex m_sectionsByName;
  /// Where the last item was put, as most often the next one, too.
  CPoolIndex m_recentSection = kNoIndex;
  CPoolIndex m_firstBlock = kNoIndex;
  CPoolIndex m_lastBlock = kNoIndex;
  CFileStore m_store;
  TextFileEncoding m_encoding = TextFileEncoding::Utf8;
  bool m_endsLinesWithReturn;
};

}  // namespace lum::detail
