// Reads attribute definition files into a table: the kinds of line and what each of them does.
// The queries over the loaded table stand in AttribDefMap.cpp.
#include "definitions/AttribDefMap.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <new>
#include <utility>

#include "definitions/DefinitionIndex.h"
#include "definitions/DefinitionLine.h"
#include "values/LumTypeCreator.h"
#include "values/TextView.h"

namespace {

using lum::detail::Assign;
using lum::detail::CutUsualLine;
using lum::detail::DefinitionItems;
using lum::detail::kItemSeparator;
using lum::detail::MayBeTrimmed;
using lum::detail::ToCString;
using lum::detail::View;

constexpr wchar_t kControlMark = L'@';

/// The places of a definition line's items; the default value takes all from the last one on.
enum ItemPlace {
  kMnemonicItem,
  kIdItem,
  kNameItem,
  kTypeItem,
  kControlTypeItem,
  kBitmapItem,
  kDefaultItem,
};

bool IsCommentOrEmpty(std::wstring_view line) { return line.empty() || line.starts_with(L"//"); }

bool IsChecksumLine(std::wstring_view line) {
  return std::any_of(std::begin(checksumKeys), std::end(checksumKeys), [line](const wchar_t* key) {
    return line.find(key) != std::wstring_view::npos;
  });
}

/// Controls whose control-attribute text names things of the program, not words for its user.
bool KeepsFileText(unsigned int controlType) {
  return controlType == 17 || controlType == 18 || controlType == 21 || controlType == 31;
}

CString CtlTextFor(const CAttribDefRec& record, const CString& fileText, bool translate) {
  if (!translate || KeepsFileText(record.ControlType())) {
    return fileText;
  }
  CString translated = Translator::Instance().GetAttribDefV2CtrlString(record.Mnemonic());
  return translated.IsEmpty() ? fileText : translated;
}

bool MakesValues(int type) {
  return std::ranges::any_of(LumTypeCreator::Kinds(), [type](const LumTypeKind& kind) {
    return kind.type == type && kind.make != nullptr;
  });
}

/// A new value set from the text that `text` gives, or null when the type code makes none. For the
/// factory's callers a shortage of memory looks the same.
template <typename Text>
std::unique_ptr<CLumType> MakeDefault(int type, const Text& text) {
  std::unique_ptr<CLumType> made(LumTypeCreator::MakeLumType(type));
  if (made != nullptr) {
    made->SetValueStr(text());
  } else if (MakesValues(type)) {
    throw std::bad_alloc();
  }
  return made;
}

}  // namespace

/// One load. The numbers live across its lines: one that a definition line lacks is the previous
/// line's. The texts and the default value are those of one line.
struct CAttribDefMap::LoadState {
  bool translate = false;
  unsigned short id = 0;
  int type = 0;
  int controlType = 0;
  bool result = true;
  bool full = false;

  CString mnemonic;
  CString name;
  CString bitmapFile;
  CString defaultText;
  std::unique_ptr<CLumType> defaultValue;

  /// Records are made many at a time, as many as there are already, and live as long as any of them
  /// is held: many single ones would take as long to free as to load.
  std::shared_ptr<CAttribDefRec[]> block;
  std::size_t blockSize = 0;
  std::size_t blockUsed = 0;

  void Take(const DefinitionItems& items) {
    mnemonic = ToCString(items.mnemonic);
    id = static_cast<unsigned short>(items.id);
    name = ToCString(items.name);
    type = items.type;
    controlType = items.controlType;
    bitmapFile = ToCString(items.bitmapFile);
    defaultValue = MakeDefault(type, [&]() -> const CString& {
      Assign(defaultText, items.defaultText);
      return defaultText;
    });
    result = defaultValue != nullptr;
  }

  void EmptyTexts() {
    mnemonic.Empty();
    name.Empty();
    bitmapFile.Empty();
  }

  std::shared_ptr<CAttribDefRec> NewRecord(std::size_t present) {
    constexpr std::size_t kFewest = 8;
    constexpr std::size_t kMost = 256;
    if (blockUsed == blockSize) {
      blockSize = std::clamp(present, kFewest, kMost);
      block = std::make_shared<CAttribDefRec[]>(blockSize);
      blockUsed = 0;
    }
    return {block, block.get() + blockUsed++};
  }
};

bool CAttribDefMap::LoadDefFile(CString fileName, bool translate) {
  CStdioFile file;
  if (!file.Open(fileName,
                 CStdioFile::modeRead | CStdioFile::shareDenyWrite | CStdioFile::typeText)) {
    FileError(fileName, FileError::CANNOT_OPEN).Report("General");
    return false;
  }
  Retire();
  *m_index = Index();

  LoadState state;
  state.translate = translate && Translator::Instance().IsLanguageForeign();
  CString line;
  while (!state.full && file.ReadString(line)) {
    if (!line.IsEmpty() && (MayBeTrimmed(line[0]) || MayBeTrimmed(line[line.GetLength() - 1]))) {
      line.Trim();
    }
    LoadLine(line, state);
  }
  file.Close();
  m_initialised = m_initialised || state.result;
  return state.result;
}

void CAttribDefMap::Retire() {
  // A table that is emptied and given back again and again retires the same records each time.
  const std::size_t count = m_records.size();
  if (m_retired.size() < count ||
      !std::equal(m_records.begin(), m_records.end(), m_retired.end() - NextIndex())) {
    m_retired.insert(m_retired.end(), m_records.begin(), m_records.end());
  }
  m_records.clear();
}

/// The line is trimmed.
void CAttribDefMap::LoadLine(const CString& line, LoadState& state) {
  const std::wstring_view text = View(line);
  if (IsCommentOrEmpty(text) || IsChecksumLine(text)) {
    return;
  }
  if (line.GetLength() > kMaxLineLength) {
    state.result = false;
  } else if (text.front() == kControlMark) {
    LoadControlLine(line, state.translate);
  } else if (NextIndex() == kMaxRecords) {
    state.full = true;
    state.result = false;
  } else {
    LoadDefinitionLine(line, state);
  }
}

bool CAttribDefMap::IsCommentOrBlank(CString line) const { return IsCommentOrEmpty(View(line)); }

bool CAttribDefMap::IsCtlTypeAttrib(CString line) const { return line.Trim()[0] == kControlMark; }

void CAttribDefMap::LoadDefinitionLine(const CString& line, LoadState& state) {
  if (DefinitionItems items; CutUsualLine(View(line), items)) {
    state.Take(items);
  } else {
    state.EmptyTexts();
    CLumType* made = nullptr;
    GetAttributeItems(line, state.mnemonic, state.id, state.name, state.type, state.controlType,
                      state.bitmapFile, made, state.result);
    state.defaultValue.reset(made);
  }
  std::shared_ptr<CAttribDefRec> record = state.NewRecord(m_records.size());
  record->LoadRec(std::move(state.mnemonic), state.id, std::move(state.name),
                  static_cast<unsigned int>(state.type),
                  static_cast<unsigned int>(state.controlType), std::move(state.bitmapFile),
                  nullptr);
  record->m_defaultValue = std::move(state.defaultValue);
  // A record that is there is found.
  m_index->mnemonics.MakeRoom();
  m_index->identifiers.MakeRoom(state.id);
  m_records.push_back(std::move(record));
  m_index->mnemonics.EnterLast(m_records);
  m_index->identifiers.EnterLast(m_records);
}

void CAttribDefMap::LoadControlLine(const CString& line, bool translate) {
  const int comma = line.Find(kItemSeparator);
  if (comma < 0) {
    return;
  }
  const CString mnemonic = line.Mid(1, comma - 1);
  const CString fileText = line.Mid(comma + 1);
  m_ctlAttribs[mnemonic] = fileText;
  if (CAttribDefRec* record = GetAttribDefRec(mnemonic)) {
    record->SetCtlAttribs(CtlTextFor(*record, fileText, translate));
  }
}

void CAttribDefMap::GetAttributeItems(CString const& line, CString& mnemonic, unsigned short& id,
                                      CString& name, int& type, int& controlType,
                                      CString& bitmapFile, CLumType*& defaultValue, bool& ok) {
  CLumString items(kItemSeparator);
  items.LoadStringW(line, true, false);
  int number = 0;
  ok = items.GetItem(kMnemonicItem, mnemonic);
  if (items.GetItem(kIdItem, number)) {
    id = static_cast<unsigned short>(number);  // The low 16 bits, for negative numbers too.
  } else {
    ok = false;
  }
  ok = items.GetItem(kNameItem, name) && ok;
  ok = items.GetItem(kTypeItem, type) && ok;
  ok = items.GetItem(kControlTypeItem, controlType) && ok;
  ok = items.GetItem(kBitmapItem, bitmapFile) && ok;
  GetDefaultValue(items, type, defaultValue, ok);
}

void CAttribDefMap::GetDefaultValue(CLumString const& items, int type, CLumType*& value, bool& ok) {
  std::unique_ptr<CLumType> made = MakeDefault(type, [&items] {
    CLumString rest(items);
    rest.Erase(0, kDefaultItem);
    return rest.String();
  });
  value = made.release();
  ok = value != nullptr;
}
