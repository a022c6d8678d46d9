// Flags are judged by the form that writers give them; what readers make of another form is asked
// of the reader itself.
#include "tools/lumattr/ValueRules.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "attributes/AttributeMap.h"
#include "definitions/AttribDefMap.h"
#include "tools/lumattr/KindText.h"
#include "tools/lumattr/SectionItems.h"
#include "tools/lumattr/Text.h"

namespace lum::tool {
namespace {

constexpr std::wstring_view kDigits = L"0123456789";
constexpr std::wstring_view kHexDigits = L"0123456789abcdefABCDEF";
constexpr std::wstring_view kOrderInfo = L"OrderInfo";
constexpr const char* kFlagsForm = "a decimal number or a hexadecimal one after 0x";

/// What every rule needs.
struct CItem {
  const FileObjectLine& line;
  const CString& name;
  CFindingList& findings;

  /// `offset` counts from the value's first character.
  void Report(CheckRule rule, int offset, const std::string& found,
              const std::string& expected) const {
    findings.Add({line.number, line.valueColumn + offset, rule, found, expected, {}});
  }
};

bool ConsistsOf(std::wstring_view text, std::wstring_view characters) {
  return !text.empty() && text.find_first_not_of(characters) == std::wstring_view::npos;
}

// Precondition: only digits.
bool FitsFlagWord(std::wstring_view digits) {
  const std::size_t first = std::min(digits.find_first_not_of(L'0'), digits.size());
  const std::wstring_view significant = digits.substr(first);
  constexpr std::wstring_view kLargest = L"4294967295";
  return significant.size() < kLargest.size() ||
         (significant.size() == kLargest.size() && significant <= kLargest);
}

bool FitsHexFlagWord(std::wstring_view digits) {
  const std::size_t first = std::min(digits.find_first_not_of(L'0'), digits.size());
  return digits.size() - first <= 8;
}

// As writers and people write flags.
bool IsPlainFlags(std::wstring_view field) {
  if (field.starts_with(L"0x") || field.starts_with(L"0X")) {
    return ConsistsOf(field.substr(2), kHexDigits) && FitsHexFlagWord(field.substr(2));
  }
  return ConsistsOf(field, kDigits) && FitsFlagWord(field);
}

// What a reader makes of a flags field; nothing when it skips the item.
std::optional<unsigned int> FlagsAsRead(const CString& field) {
  constexpr int kLongestNumber = 1000;
  const CString section(L"s");
  const CString key(L"k");
  FileObject scratch;
  scratch.SetItem(section, key, field.Left(kLongestNumber) + L",", true);
  CAttributeMap tree;
  LoadAttributesWithKey(tree, scratch, section, CString(), false);
  if (!tree.Has(key)) {
    return std::nullopt;
  }
  return tree.Find(key).Flags();
}

// "Name=with=0,3": the name's own "=" ended the key.
bool LooksLikeCutName(std::wstring_view field) {
  const std::size_t equals = field.rfind(L'=');
  return equals != std::wstring_view::npos && IsPlainFlags(field.substr(equals + 1));
}

void CheckTransient(const CItem& item, const CString& field, unsigned int flags) {
  if ((flags & CAttributeRec::FLAG_TRANSIENT) != 0) {
    item.Report(CheckRule::TransientFlag, 0, QuotedShort(field), "flags without 0x8000 in a file");
  }
}

bool CheckFlags(const CItem& item, CString field) {
  field.TrimRight(L" \t");
  if (IsPlainFlags(View(field))) {
    CheckTransient(item, field, ReadSectionItem(L"k", field + L",", 2).flags);
    return true;
  }
  const std::optional<unsigned int> flags = FlagsAsRead(field);
  if (flags) {
    item.Report(CheckRule::InexactFlags, 0, QuotedShort(field),
                std::string(kFlagsForm) + "; read as " + std::to_string(*flags));
  } else if (LooksLikeCutName(View(field))) {
    item.Report(CheckRule::NameHoldsEquals, 0, QuotedShort(field), "a name without '='");
  } else {
    item.Report(CheckRule::UnreadableFlags, 0, QuotedShort(field), kFlagsForm);
  }
  return flags.has_value();
}

void CheckKind(const CItem& item, const CString& text, int offset, CAttribDefMap* definitions) {
  const CAttribDefRec* definition =
      definitions == nullptr ? nullptr : definitions->GetAttribDefRec(item.name);
  if (definition == nullptr || definition->DefaultValue() == nullptr ||
      View(item.name).starts_with(L'@')) {
    return;
  }
  const CLumType::LUM_TYPE kind = definition->DefaultValue()->Type();
  if (const auto reason = WhyKindRefuses(kind, text)) {
    item.Report(CheckRule::RefusedText, offset, QuotedShort(text),
                "a text of kind " + KindName(kind) + " (" + *reason + ")");
  }
}

void CheckSlashes(const CItem& item) {
  const int place = item.line.text.Find(L"//");
  if (place >= 0) {
    item.findings.Add({item.line.number,
                       place + 1,
                       CheckRule::CutAtSlashes,
                       QuotedShort(item.line.text.Mid(place)),
                       "a text without '//'",
                       {}});
  }
}

void CheckTrailingBlanks(const CItem& item) {
  CString trimmed(item.line.value);
  trimmed.TrimRight();
  if (trimmed.GetLength() < item.line.value.GetLength()) {
    item.Report(CheckRule::TrailingBlanks, trimmed.GetLength(),
                QuotedShort(item.line.value.Mid(trimmed.GetLength())), "no blanks at the end");
  }
}

// Readers go by the end of the whole key, writers by the name.
bool ReadsAsOrderInfo(const CItem& item) { return View(item.line.key).ends_with(kOrderInfo); }

void CheckOrderInfo(const CItem& item) {
  if (View(item.name) != kOrderInfo) {
    item.findings.Add({item.line.number,
                       item.line.keyColumn,
                       CheckRule::OrderInfo,
                       QuotedShort(item.line.key),
                       "a name that does not end with 'OrderInfo'; flags are read as text",
                       {}});
  }
}

}  // namespace

bool CheckItemValue(const FileObjectLine& line, const CString& name, CAttribDefMap* definitions,
                    CFindingList& findings) {
  const CItem item{line, name, findings};
  CheckSlashes(item);
  CheckTrailingBlanks(item);
  if (ReadsAsOrderInfo(item)) {
    CheckOrderInfo(item);
    return true;
  }
  if (View(name) == kOrderInfo) {
    findings.Add({line.number,
                  line.keyColumn,
                  CheckRule::OrderInfo,
                  QuotedShort(line.key),
                  "one 'OrderInfo' only; a later one is written without the flags it is read with",
                  {}});
  }
  const int comma = line.value.Find(L',');
  if (comma < 0) {
    item.Report(CheckRule::MissingFlags, 0, QuotedShort(line.value), "flags, a comma and the text");
    return false;
  }
  if (!CheckFlags(item, line.value.Left(comma))) {
    return false;
  }
  CString text = line.value.Mid(comma + 1);
  text.TrimLeft();
  CheckKind(item, text, line.value.GetLength() - text.GetLength(), definitions);
  return true;
}

}  // namespace lum::tool
