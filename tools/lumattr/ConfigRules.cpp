// One walk over the lines, after a first one that finds the format version of every section. A
// section that appears again continues the first, as for the readers.
#include "tools/lumattr/ConfigRules.h"

#include <map>
#include <memory>
#include <utility>

#include "attributes/AttributeMap.h"
#include "catalogue/AttributeNames.h"
#include "decoding/NearMiss.h"
#include "definitions/AttribDefMap.h"
#include "tools/lumattr/KeyRules.h"
#include "tools/lumattr/LineRules.h"
#include "tools/lumattr/Text.h"
#include "tools/lumattr/ValueRules.h"

namespace lum::tool {
namespace {

using Kind = FileObjectLine::Kind;

struct CSection {
  CSection(CAttribDefMap* definitions, CFindingList& findings) : keys(definitions, findings) {}

  int firstHeader = 0;   // Line; 0 until the walk meets it.
  int firstVersion = 0;  // Line of the first AttrVersion; 0 when there is none.
  int lastVersion = 0;   // Line of the one that counts.
  int version = 1;
  bool hasAttributes = false;  // Above the current line.
  std::map<CString, int> firstLines;
  CKeyRules keys;
};

// As the loaders read it: the second field, 0 when it is no number.
int VersionIn(const CString& value) {
  int version = 0;
  CLumString(value, L',', true, false).GetItem(1, version);
  return version;
}

bool StartsWith(const CString& text, const CString& start) {
  return View(text).starts_with(View(start));
}

CString NodeMark() { return ATTRIB_MARK + L"."; }

bool IsIndented(const FileObjectLine& line) {
  return !line.text.IsEmpty() && (line.text[0] == L' ' || line.text[0] == L'\t');
}

CString LastName(const CString& path) {
  CString name = path.Mid(path.ReverseFind(L'.') + 1);
  StripAttributeIndex(name);
  return name;
}

class CConfigCheck {
 public:
  CConfigCheck(CAttribDefMap* definitions, CFindingList& findings)
      : m_definitions(definitions), m_findings(findings) {}

  void Run(const std::vector<FileObjectLine>& lines);

 private:
  CSection& SectionOf(const FileObjectLine& line);
  void FindVersion(const FileObjectLine& line);
  void CheckLine(const FileObjectLine& line);
  void CheckHeader(const FileObjectLine& line);
  void CheckComment(const FileObjectLine& line);
  void CheckItem(const FileObjectLine& line);
  void CheckRepeatedKey(const FileObjectLine& line, CSection& section);
  void CheckVersion(const FileObjectLine& line, const CSection& section);
  void CheckVersionNumber(const FileObjectLine& line, const CSection& section);
  void CheckMisspeltVersion(const FileObjectLine& line);
  void CheckVersionOne(const FileObjectLine& line, CSection& section);
  void CheckVersionTwo(const FileObjectLine& line, CSection& section);
  void CheckAttribute(const FileObjectLine& line, CSection& section, int prefix, bool nodeScoped);
  void CheckOtherItem(const FileObjectLine& line, const CString& expected);
  void CheckIndent(const FileObjectLine& line);
  void Report(const FileObjectLine& line, int column, CheckRule rule, std::string found,
              std::string expected, std::string suggestion = {});

  CAttribDefMap* m_definitions;
  CFindingList& m_findings;
  std::map<CString, std::unique_ptr<CSection>> m_sections;
  bool m_inSection = false;
};

void CConfigCheck::Run(const std::vector<FileObjectLine>& lines) {
  for (const FileObjectLine& line : lines) {
    FindVersion(line);
  }
  for (const FileObjectLine& line : lines) {
    CheckLineText(line, m_findings);
    CheckLine(line);
  }
  for (const auto& [name, section] : m_sections) {
    section->keys.Finish();
  }
}

CSection& CConfigCheck::SectionOf(const FileObjectLine& line) {
  std::unique_ptr<CSection>& section = m_sections[line.section];
  if (section == nullptr) {
    section = std::make_unique<CSection>(m_definitions, m_findings);
  }
  return *section;
}

void CConfigCheck::FindVersion(const FileObjectLine& line) {
  if (line.kind != Kind::Item || line.key != ATTRIB_VERSION_KEY) {
    return;
  }
  CSection& section = SectionOf(line);
  section.version = VersionIn(line.value);
  section.lastVersion = line.number;
  if (section.firstVersion == 0) {
    section.firstVersion = line.number;
  }
}

void CConfigCheck::Report(const FileObjectLine& line, int column, CheckRule rule, std::string found,
                          std::string expected, std::string suggestion) {
  m_findings.Add(
      {line.number, column, rule, std::move(found), std::move(expected), std::move(suggestion)});
}

void CConfigCheck::CheckLine(const FileObjectLine& line) {
  switch (line.kind) {
    case Kind::Blank:
      break;
    case Kind::Comment:
      CheckComment(line);
      break;
    case Kind::Section:
      CheckHeader(line);
      break;
    case Kind::Item:
      CheckItem(line);
      break;
    case Kind::Unknown:
      Report(line, 1, CheckRule::UnknownLine, QuotedShort(line.text),
             "key=value, [section] or a comment after ';' or '//'");
      break;
  }
}

void CConfigCheck::CheckHeader(const FileObjectLine& line) {
  m_inSection = true;
  CheckIndent(line);
  CSection& section = SectionOf(line);
  if (section.firstHeader == 0) {
    section.firstHeader = line.number;
    return;
  }
  Report(line, 1, CheckRule::DuplicateSection, QuotedShort(line.text),
         "one block; the section began in line " + std::to_string(section.firstHeader));
}

// Ordered loading knows ";" in the first column only.
void CConfigCheck::CheckComment(const FileObjectLine& line) {
  const int equals = line.text.Find(L'=');
  CString trimmed(line.text);
  trimmed.TrimLeft(L" \t");
  if (m_inSection && trimmed[0] == L';' && equals >= 0 && line.text.Find(L',', equals) >= 0 &&
      SectionOf(line).version == 2) {
    CheckIndent(line);
  }
}

void CConfigCheck::CheckIndent(const FileObjectLine& line) {
  if (IsIndented(line)) {
    Report(line, 1, CheckRule::IndentedLine, QuotedShort(line.text), "no blanks before the line");
  }
}

void CConfigCheck::CheckItem(const FileObjectLine& line) {
  if (!m_inSection) {
    Report(line, line.keyColumn, CheckRule::OutsideSection, QuotedShort(line.key),
           "a section above the item");
    return;
  }
  CSection& section = SectionOf(line);
  CheckRepeatedKey(line, section);
  if (line.key == ATTRIB_VERSION_KEY) {
    CheckVersion(line, section);
  } else if (section.firstVersion == 0) {
    CheckMisspeltVersion(line);
  }
  if (section.version == 1) {
    CheckVersionOne(line, section);
  } else if (section.version == 2) {
    CheckVersionTwo(line, section);
  }
}

void CConfigCheck::CheckRepeatedKey(const FileObjectLine& line, CSection& section) {
  const auto [entry, isNew] = section.firstLines.try_emplace(line.key, line.number);
  if (!isNew) {
    Report(line, line.keyColumn, CheckRule::DuplicateKey, QuotedShort(line.key),
           "each key once; it stands in line " + std::to_string(entry->second) + " too");
  }
}

void CConfigCheck::CheckVersion(const FileObjectLine& line, const CSection& section) {
  if (line.number == section.lastVersion) {
    CheckVersionNumber(line, section);
  }
  if (line.number == section.firstVersion && section.version == 2 && section.hasAttributes) {
    Report(line, line.keyColumn, CheckRule::LateVersion, QuotedShort(line.key),
           "the section's first item");
  }
}

void CConfigCheck::CheckVersionNumber(const FileObjectLine& line, const CSection& section) {
  if (section.version == 1) {
    Report(line, line.valueColumn, CheckRule::VersionOneItem, QuotedShort(line.value),
           "no AttrVersion in a section of version 1");
  } else if (section.version != 2) {
    Report(line, line.valueColumn, CheckRule::UnknownVersion, QuotedShort(line.value),
           "version 2 after the first comma, as in '0,2'");
  }
}

void CConfigCheck::CheckMisspeltVersion(const FileObjectLine& line) {
  decoding::CNearMiss nearMiss(line.key);
  nearMiss.Offer(ATTRIB_VERSION_KEY);
  if (nearMiss.Best()) {
    Report(line, line.keyColumn, CheckRule::MisspeltVersion, QuotedShort(line.key),
           "the version item, if this is meant to be it", ToUtf8(ATTRIB_VERSION_KEY));
  }
}

void CConfigCheck::CheckVersionOne(const FileObjectLine& line, CSection& section) {
  const int mark = ATTRIB_MARK.GetLength();
  if (StartsWith(line.key, NodeMark())) {
    CheckAttribute(line, section, mark + 1, true);
  } else if (StartsWith(line.key, ATTRIB_MARK)) {
    CheckAttribute(line, section, mark, false);
  } else if (line.key.Left(mark).CompareNoCase(ATTRIB_MARK) == 0) {
    Report(line, line.keyColumn, CheckRule::MisspeltMark, QuotedShort(line.key),
           "the mark '@tr' before an attribute's path", ToUtf8(ATTRIB_MARK + line.key.Mid(mark)));
  } else if (line.key != ATTRIB_VERSION_KEY) {
    CheckOtherItem(line, L"the mark '@tr' before it in version 1");
  }
}

void CConfigCheck::CheckVersionTwo(const FileObjectLine& line, CSection& section) {
  if (StartsWith(line.key, NodeMark())) {
    CheckAttribute(line, section, ATTRIB_MARK.GetLength() + 1, true);
    return;
  }
  if (line.value.Find(L',') < 0 && !View(line.key).ends_with(View(ATTRIB_ORDERINFO))) {
    CheckOtherItem(line, L"flags and a comma before the text");
    return;
  }
  if (StartsWith(line.key, ATTRIB_MARK)) {
    Report(line, line.keyColumn, CheckRule::MarkInVersionTwo, QuotedShort(line.key),
           "no mark before the path", ToUtf8(line.key.Mid(ATTRIB_MARK.GetLength())));
  }
  CheckAttribute(line, section, 0, false);
}

void CConfigCheck::CheckAttribute(const FileObjectLine& line, CSection& section, int prefix,
                                  bool nodeScoped) {
  section.hasAttributes = true;
  CheckIndent(line);
  const CString path = line.key.Mid(prefix);
  const bool isRead = CheckItemValue(line, LastName(path), m_definitions, m_findings);
  section.keys.Check({line.number, line.keyColumn + prefix, line.key, path, nodeScoped}, isRead);
}

// Only a definition tells that such an item was meant to be an attribute.
void CConfigCheck::CheckOtherItem(const FileObjectLine& line, const CString& expected) {
  if (m_definitions != nullptr && m_definitions->GetAttribDefRec(LastName(line.key)) != nullptr) {
    Report(line, line.keyColumn, CheckRule::NotAnAttribute, QuotedShort(line.key),
           ToUtf8(expected));
  }
}

}  // namespace

void CheckConfigLines(const std::vector<FileObjectLine>& lines, CAttribDefMap* definitions,
                      CFindingList& findings) {
  CConfigCheck(definitions, findings).Run(lines);
}

}  // namespace lum::tool
