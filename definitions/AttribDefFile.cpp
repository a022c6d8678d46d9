// Reads attribute definition files into a table: the kinds of line and what each of them does.
// The queries over the loaded table stand in AttribDefMap.cpp.
#include "definitions/AttribDefMap.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <utility>

#include "values/LumTypeCreator.h"

namespace {

constexpr wchar_t kSeparator = L',';
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

bool IsChecksumLine(const CString& line) {
  return std::any_of(std::begin(checksumKeys), std::end(checksumKeys),
                     [&line](const wchar_t* key) { return line.Find(key) >= 0; });
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

}  // namespace

/// What lives across the lines of one load: an item that a definition line lacks is the previous
/// line's.
struct CAttribDefMap::LoadState {
  bool translate = false;
  unsigned short id = 0;
  int type = 0;
  int controlType = 0;
  bool result = true;
  bool full = false;
};

bool CAttribDefMap::LoadDefFile(CString fileName, bool translate) {
  CStdioFile file;
  if (!file.Open(fileName,
                 CStdioFile::modeRead | CStdioFile::shareDenyWrite | CStdioFile::typeText)) {
    FileError(fileName, FileError::CANNOT_OPEN).Report("General");
    return false;
  }
  Retire();
  m_indexById.clear();
  m_indexByMnemonic.clear();

  LoadState state;
  state.translate = translate && Translator::Instance().IsLanguageForeign();
  CString line;
  while (!state.full && file.ReadString(line)) {
    LoadLine(line.Trim(), state);
  }
  file.Close();
  m_initialised = m_initialised || state.result;
  return state.result;
}

void CAttribDefMap::Retire() {
  m_retired.insert(m_retired.end(), m_records.begin(), m_records.end());
  m_records.clear();
}

void CAttribDefMap::LoadLine(const CString& line, LoadState& state) {
  if (IsCommentOrBlank(line) || IsChecksumLine(line)) {
    return;
  }
  if (line.GetLength() > kMaxLineLength) {
    state.result = false;
  } else if (IsCtlTypeAttrib(line)) {
    LoadControlLine(line, state.translate);
  } else if (NextIndex() == kMaxRecords) {
    state.full = true;
    state.result = false;
  } else {
    LoadDefinitionLine(line, state);
  }
}

bool CAttribDefMap::IsCommentOrBlank(CString line) const {
  return line.IsEmpty() || (line[0] == L'/' && line[1] == L'/');
}

bool CAttribDefMap::IsCtlTypeAttrib(CString line) const { return line.Trim()[0] == kControlMark; }

void CAttribDefMap::LoadDefinitionLine(const CString& line, LoadState& state) {
  CString mnemonic;
  CString name;
  CString bitmapFile;
  CLumType* made = nullptr;
  GetAttributeItems(line, mnemonic, state.id, name, state.type, state.controlType, bitmapFile, made,
                    state.result);
  const std::unique_ptr<CLumType> defaultValue(made);

  auto record = std::make_shared<CAttribDefRec>();
  record->LoadRec(mnemonic, state.id, name, static_cast<unsigned int>(state.type),
                  static_cast<unsigned int>(state.controlType), bitmapFile, made);
  const int index = NextIndex();
  m_records.push_back(std::move(record));
  m_indexByMnemonic[mnemonic] = index;
  m_indexById[state.id] = index;
}

void CAttribDefMap::LoadControlLine(const CString& line, bool translate) {
  const int comma = line.Find(kSeparator);
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
  CLumString items(kSeparator);
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
  std::unique_ptr<CLumType> made(LumTypeCreator::MakeLumType(type));
  if (made != nullptr) {
    CLumString rest(items);
    rest.Erase(0, kDefaultItem);
    made->SetValueStr(rest.String());
  }
  value = made.release();
  ok = value != nullptr;
}
