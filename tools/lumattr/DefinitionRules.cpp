// One walk over the lines with what the loader carries from line to line, and a last look at the
// control lines once all mnemonics are known.
#include "tools/lumattr/DefinitionRules.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "decoding/NearMiss.h"
#include "definitions/AttribDefMap.h"
#include "platform/LumBase.h"
#include "tools/lumattr/KeyRules.h"
#include "tools/lumattr/KindText.h"
#include "tools/lumattr/LineRules.h"
#include "tools/lumattr/Text.h"
#include "values/LumTypeCreator.h"

namespace lum::tool {
namespace {

enum ItemPlace { kMnemonic, kId, kDisplayName, kType, kControlType, kBitmap, kDefault };

constexpr const char* kItemNames[] = {"a mnemonic",     "an identifier",  "a display name",
                                      "a value type",   "a control type", "a bitmap file",
                                      "a default value"};

/// A definition line taken apart.
struct CDefinitionLine {
  int number;
  CLumString items;
  std::vector<int> columns;  // Where the text of each of the first items begins.

  int Column(int place) const {
    return columns[std::min(static_cast<std::size_t>(place), columns.size() - 1)];
  }
  CString Item(int place) const {
    CString text;
    items.GetItem(place, text);
    return text;
  }
};

struct CControlLine {
  int line;
  CString mnemonic;
};

/// A number that the loader carries on to lines that have none.
struct CCarriedNumber {
  int value = 0;
  bool isFirst = true;
};

int FirstColumn(const CString& text) {
  CString trimmed(text);
  trimmed.TrimLeft();
  return 1 + text.GetLength() - trimmed.GetLength();
}

// The columns of the items up to the default value.
std::vector<int> ItemColumns(const CString& text) {
  std::vector<int> columns{FirstColumn(text)};
  int comma = text.Find(L',');
  while (comma >= 0 && columns.size() <= kDefault) {
    columns.push_back(comma + 1 + FirstColumn(text.Mid(comma + 1, 256)));
    comma = text.Find(L',', comma + 1);
  }
  return columns;
}

bool IsChecksumLine(const CString& text) {
  return std::any_of(std::begin(checksumKeys), std::end(checksumKeys),
                     [&text](const wchar_t* key) { return text.Find(key) >= 0; });
}

bool LooksLikeDefinition(const CString& text) {
  const CLumString items(text, L',', true, false);
  int number = 0;
  return items.Count() >= kBitmap && items.GetItem(kId, number) && items.GetItem(kType, number) &&
         LumTypeCreator::KindName(number) != nullptr;
}

bool LooksLikeComment(const CString& text) {
  return text[0] == L'/' || text[0] == L';' || text[0] == L'#';
}

// A name that a key of a configuration file gives another meaning, or none.
bool IsAddressable(const CString& mnemonic) {
  return mnemonic.FindOneOf(L".()=") < 0 && mnemonic[0] != L'[' && mnemonic[0] != L';' &&
         mnemonic[0] != L'/';
}

class CDefinitionCheck {
 public:
  explicit CDefinitionCheck(CFindingList& findings) : m_findings(findings) {}

  void Run(const std::vector<FileObjectLine>& lines);

 private:
  void CheckLine(const FileObjectLine& line, const CString& text);
  void CheckControlLine(const FileObjectLine& line, const CString& text);
  void CheckDefinition(const FileObjectLine& line, const CString& text);
  void CheckMnemonic(const CDefinitionLine& line);
  void CheckIdentifier(const CDefinitionLine& line);
  void CheckType(const CDefinitionLine& line);
  void CheckDefault(const CDefinitionLine& line);
  bool ReadCarried(const CDefinitionLine& line, int place, CCarriedNumber& number);
  void CheckControlMnemonics();
  void CheckControlMnemonic(const CControlLine& control);
  std::string NearestMnemonic(const CString& mnemonic);
  void CheckLastType();
  void Report(int line, int column, CheckRule rule, std::string found, std::string expected,
              std::string suggestion = {});
  void Report(const CDefinitionLine& line, int place, CheckRule rule, std::string expected);

  CFindingList& m_findings;
  CCarriedNumber m_id;
  CCarriedNumber m_type;
  CCarriedNumber m_controlType;
  std::map<CString, int> m_firstLines;    // By mnemonic.
  std::map<CString, int> m_controlLines;  // By mnemonic.
  std::map<int, int> m_idLines;
  std::vector<CString> m_mnemonics;  // In the order of the file.
  std::vector<CControlLine> m_controls;
  std::pair<int, int> m_lastType{0, 0};  // Place of the last definition's type.
  int m_suggestionsLeft = CKeyRules::kMaxSuggestions;
};

void CDefinitionCheck::Run(const std::vector<FileObjectLine>& lines) {
  for (const FileObjectLine& line : lines) {
    CheckLineText(line, m_findings);
    CString text(line.text);
    text.Trim();
    if (!text.IsEmpty() && text.Left(2) != L"//") {
      CheckLine(line, text);
    }
  }
  CheckControlMnemonics();
  CheckLastType();
}

void CDefinitionCheck::Report(int line, int column, CheckRule rule, std::string found,
                              std::string expected, std::string suggestion) {
  m_findings.Add(
      {line, column, rule, std::move(found), std::move(expected), std::move(suggestion)});
}

void CDefinitionCheck::Report(const CDefinitionLine& line, int place, CheckRule rule,
                              std::string expected) {
  Report(line.number, line.Column(place), rule, QuotedShort(line.Item(place)), std::move(expected));
}

void CDefinitionCheck::CheckLine(const FileObjectLine& line, const CString& text) {
  if (IsChecksumLine(text)) {
    if (LooksLikeDefinition(text)) {
      Report(line.number, FirstColumn(line.text), CheckRule::ChecksumMark, QuotedShort(text),
             "a definition without a checksum mark");
    }
  } else if (text.GetLength() > CAttribDefMap::kMaxLineLength) {
    Report(line.number, CAttribDefMap::kMaxLineLength + 1, CheckRule::LineTooLong,
           std::to_string(text.GetLength()) + " characters",
           "at most " + std::to_string(CAttribDefMap::kMaxLineLength));
  } else if (text[0] == L'@') {
    CheckControlLine(line, text);
  } else if (LooksLikeComment(text)) {
    Report(line.number, FirstColumn(line.text), CheckRule::NotAComment, QuotedShort(text),
           "'//' before a comment");
  } else {
    CheckDefinition(line, text);
  }
}

void CDefinitionCheck::CheckControlLine(const FileObjectLine& line, const CString& text) {
  const int comma = text.Find(L',');
  const int column = FirstColumn(line.text);
  if (comma < 0) {
    Report(line.number, column, CheckRule::ControlWithoutComma, QuotedShort(text),
           "'@mnemonic,text'");
    return;
  }
  const CString mnemonic = text.Mid(1, comma - 1);
  const auto [entry, isNew] = m_controlLines.try_emplace(mnemonic, line.number);
  if (!isNew) {
    Report(
        line.number, column, CheckRule::DuplicateControl, QuotedShort(mnemonic),
        "one control line for a mnemonic; line " + std::to_string(entry->second) + " is the first");
  }
  m_controls.push_back({line.number, mnemonic});
}

void CDefinitionCheck::CheckDefinition(const FileObjectLine& line, const CString& text) {
  const CDefinitionLine definition{line.number, CLumString(text, L',', true, false),
                                   ItemColumns(line.text)};
  const int count = definition.items.Count();
  CheckMnemonic(definition);
  if (count <= kBitmap) {
    Report(line.number, definition.Column(count - 1), CheckRule::MissingItem,
           std::to_string(count) + (count == 1 ? " item" : " items"),
           std::string(kItemNames[count]) + " after item " + std::to_string(count));
  }
  CheckIdentifier(definition);
  CheckType(definition);
  if (count > kControlType) {
    ReadCarried(definition, kControlType, m_controlType);
  }
  CheckDefault(definition);
}

void CDefinitionCheck::CheckMnemonic(const CDefinitionLine& line) {
  const CString mnemonic = line.Item(kMnemonic);
  if (mnemonic.IsEmpty()) {
    Report(line, kMnemonic, CheckRule::EmptyMnemonic, "a mnemonic");
  } else if (!IsAddressable(mnemonic)) {
    Report(line, kMnemonic, CheckRule::UnaddressableMnemonic,
           "a mnemonic without '.', '(', ')', '=' and without '[', ';' or '/' in front");
  }
  const auto [entry, isNew] = m_firstLines.try_emplace(mnemonic, line.number);
  if (isNew) {
    m_mnemonics.push_back(mnemonic);
  } else {
    Report(line, kMnemonic, CheckRule::DuplicateMnemonic,
           "each mnemonic once; it is defined in line " + std::to_string(entry->second) + " too");
  }
}

// Items that are not there at all are reported as missing, not as carried over.
bool CDefinitionCheck::ReadCarried(const CDefinitionLine& line, int place, CCarriedNumber& number) {
  const bool isFirst = std::exchange(number.isFirst, false);
  if (line.items.GetItem(place, number.value)) {
    return true;
  }
  if (line.items.Count() > place) {
    const std::string used = std::to_string(number.value);
    Report(line, place, CheckRule::CarriedOver,
           std::string(kItemNames[place]) + " as a whole number; " + used + " is used" +
               (isFirst ? "" : ", from the definition before"));
  }
  return false;
}

void CDefinitionCheck::CheckIdentifier(const CDefinitionLine& line) {
  const bool isRead = ReadCarried(line, kId, m_id);
  const int id = m_id.value & 0xFFFF;
  if (isRead && id != m_id.value) {
    Report(line, kId, CheckRule::IdentifierRange, "0 to 65535; " + std::to_string(id) + " is used");
  }
  m_id.value = id;
  const auto [entry, isNew] = m_idLines.try_emplace(id, line.number);
  if (!isNew) {
    Report(line, kId, CheckRule::DuplicateIdentifier,
           "each identifier once; line " + std::to_string(entry->second) + " has " +
               std::to_string(id) + " too");
  }
}

void CDefinitionCheck::CheckType(const CDefinitionLine& line) {
  if (line.items.Count() > kType) {
    ReadCarried(line, kType, m_type);
  }
  m_lastType = {line.number, line.Column(kType)};
  if (LumTypeCreator::KindName(m_type.value) == nullptr) {
    Report(line, kType, CheckRule::UnknownType, "a type code of docs/values.md");
  }
}

void CDefinitionCheck::CheckDefault(const CDefinitionLine& line) {
  const std::unique_ptr<CLumType> value(LumTypeCreator::MakeLumType(m_type.value));
  const int count = line.items.Count();
  if (value == nullptr || m_type.value == CLumType::TYPE_UNDEFINED || count <= kBitmap) {
    return;
  }
  CLumString rest(line.items);
  rest.Erase(0, kDefault);
  const CString text = rest.String();
  const auto reason = WhyKindRefuses(m_type.value, text);
  if (!reason) {
    return;
  }
  const CheckRule rule = count <= kDefault ? CheckRule::MissingItem : CheckRule::RefusedDefault;
  Report(line.number, line.Column(kDefault), rule, QuotedShort(text),
         "a default value of kind " + KindName(m_type.value) + " (" + *reason + ")");
}

void CDefinitionCheck::CheckControlMnemonics() {
  for (const CControlLine& control : m_controls) {
    CheckControlMnemonic(control);
  }
}

void CDefinitionCheck::CheckControlMnemonic(const CControlLine& control) {
  const auto definition = m_firstLines.find(control.mnemonic);
  if (definition == m_firstLines.end()) {
    Report(control.line, 2, CheckRule::ControlWithoutDefinition, QuotedShort(control.mnemonic),
           "a mnemonic that the file defines", NearestMnemonic(control.mnemonic));
  } else if (definition->second > control.line) {
    Report(control.line, 2, CheckRule::ControlBeforeDefinition, QuotedShort(control.mnemonic),
           "the control line below the definition in line " + std::to_string(definition->second));
  }
}

std::string CDefinitionCheck::NearestMnemonic(const CString& mnemonic) {
  if (m_suggestionsLeft == 0 || !m_findings.MayCompare(static_cast<int>(m_mnemonics.size()))) {
    return {};
  }
  --m_suggestionsLeft;
  decoding::CNearMiss nearMiss(mnemonic);
  for (const CString& candidate : m_mnemonics) {
    nearMiss.Offer(candidate);
  }
  return nearMiss.Best() ? ToUtf8(*nearMiss.Best()) : std::string();
}

void CDefinitionCheck::CheckLastType() {
  const auto [line, column] = m_lastType;
  const std::unique_ptr<CLumType> value(LumTypeCreator::MakeLumType(m_type.value));
  if (line != 0 && value == nullptr) {
    Report(line, column, CheckRule::LastType, Quoted(ToCString(std::to_wstring(m_type.value))),
           "a type that makes a default value in the last definition");
  }
}

}  // namespace

void CheckDefinitionLines(const std::vector<FileObjectLine>& lines, CFindingList& findings) {
  CDefinitionCheck(findings).Run(lines);
}

}  // namespace lum::tool
