// Keys are read here as the library reads them (StripAttributeIndex, one occurrence after the
// other), so that a finding says what a reader really does.
#include "tools/lumattr/KeyRules.h"

#include <algorithm>
#include <string_view>

#include "decoding/NearMiss.h"
#include "definitions/AttribDefMap.h"
#include "tools/lumattr/Text.h"

namespace lum::tool {

namespace {

bool IsBlank(wchar_t ch) { return ch == L' ' || ch == L'\t'; }

bool HasBlanksAround(const CString& name) {
  return !name.IsEmpty() && (IsBlank(name[0]) || IsBlank(name[name.GetLength() - 1]));
}

bool EndsWithParenthesis(const CString& text) {
  return !text.IsEmpty() && text[text.GetLength() - 1] == L')';
}

bool IsAllDigits(const CString& text) {
  const std::wstring_view view(text.GetString(), static_cast<std::size_t>(text.GetLength()));
  return !view.empty() && view.find_first_not_of(L"0123456789") == std::wstring_view::npos;
}

// "-1", with blanks around it or not.
bool IsNegative(CString number) {
  number.Trim();
  return number.GetLength() > 1 && number[0] == L'-' && IsAllDigits(number.Mid(1)) &&
         number.FindOneOf(L"123456789") > 0;
}

// Nine digits fit an int.
constexpr int kSafeDigits = 9;

bool IsWritersOccurrence(const CString& number) {
  return IsAllDigits(number) && number[0] != L'0' && number.GetLength() <= kSafeDigits;
}

CString Numbered(const CString& name, int occurrence) {
  CString text(name);
  AppendAttributeIndex(text, occurrence);
  return text;
}

}  // namespace

CKeyRules::CKeyRules(CAttribDefMap* definitions, CFindingList& findings)
    : m_definitions(definitions), m_findings(findings) {}

void CKeyRules::Report(const CKeyPath& path, const CName& name, CheckRule rule,
                       const std::string& expected, const std::string& suggestion) {
  m_findings.Add({path.line, name.column, rule, QuotedShort(name.text), expected, suggestion});
}

void CKeyRules::Check(const CKeyPath& path, bool isRead) {
  std::size_t parent = path.nodeScoped ? 1 : 0;
  CNode* node = nullptr;
  for (int begin = 0; begin <= path.path.GetLength();) {
    const int dot = path.path.Find(L'.', begin);
    const int end = dot < 0 ? path.path.GetLength() : dot;
    CName name;
    name.text = path.path.Mid(begin, end - begin);
    name.column = path.column + begin;
    isRead = CheckName(path, name) && isRead;
    node = isRead ? Descend(path, name, parent) : nullptr;
    isRead = node != nullptr;
    parent = isRead ? node->id : 0;
    begin = end + 1;
  }
  if (node != nullptr) {
    TakePlace(path, *node);
  }
}

// False when readers skip the item because of this name.
bool CKeyRules::CheckName(const CKeyPath& path, CName& name) {
  name.name = name.text;
  name.occurrence = StripAttributeIndex(name.name);
  if (name.name.IsEmpty()) {
    Report(path, name, CheckRule::EmptyName, "a name before and after every '.'");
  } else if (HasBlanksAround(name.name)) {
    CString trimmed(name.name);
    Report(path, name, CheckRule::BlanksAroundName, "a name without blanks around it",
           ToUtf8(trimmed.Trim(L" \t")));
  }
  if (EndsWithParenthesis(name.text) && name.text.Find(L'(') >= 0) {
    return CheckOccurrence(path, name);
  }
  CheckParentheses(path, name);
  return true;
}

// A name that readers find no occurrence in.
void CKeyRules::CheckParentheses(const CKeyPath& path, const CName& name) {
  const int open = name.text.Find(L'(');
  const int close = name.text.ReverseFind(L')');
  if (open < 0 && close < 0) {
    return;
  }
  if (open >= 0 && close > open) {
    Report(path, name, CheckRule::NameHoldsParenthesis,
           "an occurrence at the end of the name or no parentheses");
  } else {
    Report(path, name, CheckRule::UnbalancedParenthesis, "'(' and ')' around an occurrence");
  }
}

bool CKeyRules::CheckOccurrence(const CKeyPath& path, const CName& name) {
  const int open = name.text.Find(L'(');
  return CheckNumber(path, name, name.text.Mid(open + 1, name.text.GetLength() - open - 2));
}

bool CKeyRules::CheckNumber(const CKeyPath& path, const CName& name, const CString& number) {
  if (IsAllDigits(number) && number.GetLength() > kSafeDigits) {
    Report(path, name, CheckRule::HugeOccurrence, "an occurrence that a load can create");
    return name.occurrence >= 0 && name.occurrence <= kMaxPlaceholdersPerLoad;
  }
  if (name.occurrence < 0 || IsNegative(number)) {
    Report(path, name, CheckRule::NegativeOccurrence,
           "an occurrence of 1 or more; readers skip the item");
    return name.occurrence >= 0;
  }
  if (!IsWritersOccurrence(number)) {
    Report(path, name, CheckRule::MalformedOccurrence,
           "a whole number of 1 or more in parentheses or none for the first",
           ToUtf8(Numbered(name.name, name.occurrence)));
  }
  return true;
}

std::string CKeyRules::NearestMnemonic(const CString& name) {
  if (m_suggestionsLeft == 0 || !m_findings.MayCompare(m_definitions->Count())) {
    return {};
  }
  --m_suggestionsLeft;
  decoding::CNearMiss nearMiss(name);
  for (int place = 0; place < m_definitions->Count(); ++place) {
    nearMiss.Offer((*m_definitions)[place].Mnemonic());
  }
  return nearMiss.Best() ? ToUtf8(*nearMiss.Best()) : std::string();
}

void CKeyRules::CheckMnemonic(const CKeyPath& path, const CName& name) {
  if (m_definitions == nullptr || name.name.IsEmpty() || name.name[0] == L'@' ||
      name.name == L"AttrVersion" || name.name == L"OrderInfo" ||
      m_definitions->GetAttribDefRec(name.name) != nullptr) {
    return;
  }
  Report(path, name, CheckRule::UnknownMnemonic, "a mnemonic of the definitions",
         NearestMnemonic(name.name));
}

// The node that a reader finds or creates for a name, or null when it skips the item there.
CKeyRules::CNode* CKeyRules::Descend(const CKeyPath& path, const CName& name, std::size_t parent) {
  if (m_nodeCount >= kMaxNodes) {
    return nullptr;
  }
  const auto [entry, isNew] = m_siblings.try_emplace(CSiblingsKey{parent, name.name});
  if (isNew) {
    CheckMnemonic(path, name);
  }
  CSiblings& siblings = entry->second;
  const int placeholders = std::max(0, name.occurrence - siblings.count);
  if (placeholders > m_placeholdersLeft) {
    Report(path, name, CheckRule::HugeOccurrence, "an occurrence that a load can create");
    return nullptr;
  }
  m_placeholdersLeft -= placeholders;
  siblings.count = std::max(siblings.count, name.occurrence + 1);
  const auto [place, isNewNode] = siblings.byOccurrence.try_emplace(name.occurrence);
  if (isNewNode) {
    place->second = {m_nodeCount++, path.line, name.column, 0, CString()};
  }
  return &place->second;
}

// Lines with the very same key are a matter of duplicate-key.
void CKeyRules::TakePlace(const CKeyPath& path, CNode& node) {
  if (node.itemLine != 0 && node.itemKey != path.key) {
    m_findings.Add({path.line,
                    path.column,
                    CheckRule::SameAttribute,
                    QuotedShort(path.key),
                    "one item for an attribute; line " + std::to_string(node.itemLine) +
                        " addresses it as " + QuotedShort(node.itemKey),
                    {}});
  }
  node.itemLine = path.line;
  node.itemKey = path.key;
}

void CKeyRules::Finish() {
  for (const auto& [key, siblings] : m_siblings) {
    int next = 0;
    for (const auto& [occurrence, node] : siblings.byOccurrence) {
      if (occurrence != next) {
        m_findings.Add({node.line,
                        node.column,
                        CheckRule::MissingOccurrence,
                        QuotedShort(Numbered(key.name, occurrence)),
                        "an item of " + QuotedShort(Numbered(key.name, next)) + " as well",
                        {}});
        break;
      }
      next = occurrence + 1;
    }
  }
}

}  // namespace lum::tool
