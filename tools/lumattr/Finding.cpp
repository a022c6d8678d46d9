// The table of rules and the bounded list of findings.
#include "tools/lumattr/Finding.h"

#include <algorithm>
#include <array>
#include <tuple>
#include <utility>

#include "tools/lumattr/Text.h"

namespace lum::tool {
namespace {

constexpr const char* kAll = "all";
constexpr const char* kConfig = "configuration";
constexpr const char* kDefs = "definitions";

constexpr std::array kRules = {
    CCheckRule{CheckRule::InvalidBytes, "invalid-bytes", kAll,
               "The line holds bytes that the file's encoding does not allow."},
    CCheckRule{CheckRule::ControlCharacter, "control-character", kAll,
               "The line holds a control character other than a tab."},
    CCheckRule{CheckRule::UnknownLine, "unknown-line", kConfig,
               "The line is no section, item, comment or blank line; readers skip it."},
    CCheckRule{CheckRule::OutsideSection, "outside-section", kConfig,
               "The item stands above the first section, where no reader looks."},
    CCheckRule{CheckRule::IndentedLine, "indented-line", kConfig,
               "Ordered loading takes the blanks before the line as part of it."},
    CCheckRule{CheckRule::DuplicateSection, "duplicate-section", kConfig,
               "The section appeared before; ordered loading sees its first block only."},
    CCheckRule{CheckRule::DuplicateKey, "duplicate-key", kConfig,
               "The key appeared before in the section; the last line counts."},
    CCheckRule{CheckRule::UnknownVersion, "unknown-version", kConfig,
               "The section has a format version that readers refuse, with all it holds."},
    CCheckRule{CheckRule::LateVersion, "late-version", kConfig,
               "AttrVersion stands below attributes; ordered loading reads those as version 1."},
    CCheckRule{CheckRule::VersionOneItem, "version-1-item", kConfig,
               "AttrVersion says 1; ordered loading takes any AttrVersion for version 2."},
    CCheckRule{CheckRule::MisspeltVersion, "misspelt-version", kConfig,
               "The section has no AttrVersion, but a key that is nearly that."},
    CCheckRule{CheckRule::MisspeltMark, "misspelt-mark", kConfig,
               "In version 1 an attribute's key begins with @tr, case included."},
    CCheckRule{CheckRule::MarkInVersionTwo, "mark-in-version-2", kConfig,
               "In version 2 the mark @tr becomes part of the attribute's name."},
    CCheckRule{CheckRule::NotAnAttribute, "not-an-attribute", kConfig,
               "The item's name has a definition, but readers take the item for no attribute."},
    CCheckRule{CheckRule::EmptyName, "empty-name", kConfig, "A name on the key's path is empty."},
    CCheckRule{CheckRule::BlanksAroundName, "blanks-around-name", kConfig,
               "A name on the key's path has blanks around it, which count."},
    CCheckRule{CheckRule::UnbalancedParenthesis, "unbalanced-parenthesis", kConfig,
               "A name on the key's path has a parenthesis without its counterpart."},
    CCheckRule{CheckRule::NameHoldsParenthesis, "name-parenthesis", kConfig,
               "A name on the key's path holds parentheses that are no occurrence."},
    CCheckRule{CheckRule::NameHoldsEquals, "name-equals", kConfig,
               "The key was cut at a \"=\" that seems to belong to the name."},
    CCheckRule{CheckRule::MalformedOccurrence, "malformed-occurrence", kConfig,
               "The text in parentheses is no occurrence as writers write it."},
    CCheckRule{CheckRule::NegativeOccurrence, "negative-occurrence", kConfig,
               "The occurrence is negative; readers skip the item."},
    CCheckRule{CheckRule::HugeOccurrence, "huge-occurrence", kConfig,
               "The occurrence needs more placeholders than a load creates; the item is skipped."},
    CCheckRule{CheckRule::MissingOccurrence, "missing-occurrence", kConfig,
               "An earlier occurrence of the name is missing; readers put an empty one there."},
    CCheckRule{CheckRule::SameAttribute, "same-attribute", kConfig,
               "Another key of the section addresses the same attribute; the later item counts."},
    CCheckRule{CheckRule::UnknownMnemonic, "unknown-mnemonic", kConfig,
               "The name has no definition (only with --defs)."},
    CCheckRule{CheckRule::MissingFlags, "missing-flags", kConfig,
               "The value has no comma, so readers skip the item."},
    CCheckRule{CheckRule::UnreadableFlags, "unreadable-flags", kConfig,
               "The flags before the comma are no number; readers skip the item."},
    CCheckRule{CheckRule::InexactFlags, "inexact-flags", kConfig,
               "The flags before the comma are no plain number and read as another one."},
    CCheckRule{CheckRule::TransientFlag, "transient-flag", kConfig,
               "The flags say transient; the next save drops the attribute and all below it."},
    CCheckRule{
        CheckRule::OrderInfo, "order-info", kConfig,
        "A name that ends with OrderInfo, or a later OrderInfo, is read unlike it is written."},
    CCheckRule{CheckRule::RefusedText, "refused-text", kConfig,
               "The attribute's kind does not read the whole text (only with --defs)."},
    CCheckRule{CheckRule::CutAtSlashes, "cut-at-slashes", kConfig,
               "Ordered loading cuts the line at \"//\"."},
    CCheckRule{CheckRule::TrailingBlanks, "trailing-blanks", kConfig,
               "The value ends with blanks, which ordered loading drops."},
    CCheckRule{CheckRule::MissingItem, "missing-item", kDefs,
               "The definition line has fewer items than its type needs."},
    CCheckRule{CheckRule::EmptyMnemonic, "empty-mnemonic", kDefs,
               "The definition has no mnemonic."},
    CCheckRule{CheckRule::UnaddressableMnemonic, "unaddressable-mnemonic", kDefs,
               "The mnemonic cannot be a name in a key of a configuration file."},
    CCheckRule{CheckRule::CarriedOver, "carried-over", kDefs,
               "The number is unreadable; the one of the definition before is used."},
    CCheckRule{CheckRule::IdentifierRange, "identifier-range", kDefs,
               "The identifier does not fit 16 bits and is cut."},
    CCheckRule{CheckRule::UnknownType, "unknown-type", kDefs,
               "The value type is no known code; the definition gets no default value."},
    CCheckRule{CheckRule::LastType, "last-type", kDefs,
               "The last definition's type makes no value, so the load reports failure."},
    CCheckRule{CheckRule::RefusedDefault, "refused-default", kDefs,
               "The value type does not read the whole default text."},
    CCheckRule{CheckRule::DuplicateMnemonic, "duplicate-mnemonic", kDefs,
               "The mnemonic was defined before; the last definition counts."},
    CCheckRule{CheckRule::DuplicateIdentifier, "duplicate-identifier", kDefs,
               "The identifier was used before; the last definition takes it over."},
    CCheckRule{CheckRule::ChecksumMark, "checksum-mark", kDefs,
               "The line looks like a definition but holds a checksum mark, so it is skipped."},
    CCheckRule{
        CheckRule::NotAComment, "not-a-comment", kDefs,
        "The line looks like a comment but is read as a definition; comments begin with //."},
    CCheckRule{CheckRule::LineTooLong, "line-too-long", kDefs,
               "The line is longer than the reader takes and is skipped."},
    CCheckRule{CheckRule::ControlWithoutComma, "control-without-comma", kDefs,
               "The control line has no comma and is ignored."},
    CCheckRule{CheckRule::ControlWithoutDefinition, "control-without-definition", kDefs,
               "No definition of the file has the control line's mnemonic."},
    CCheckRule{CheckRule::ControlBeforeDefinition, "control-before-definition", kDefs,
               "The control line stands above its definition, which does not get the text."},
    CCheckRule{CheckRule::DuplicateControl, "duplicate-control", kDefs,
               "The mnemonic had a control line before; the last one counts."},
};

constexpr bool RulesStandInOrder() {
  for (std::size_t place = 0; place < kRules.size(); ++place) {
    if (static_cast<std::size_t>(kRules[place].rule) != place) {
      return false;
    }
  }
  return kRules.back().rule == CheckRule::DuplicateControl;
}
static_assert(RulesStandInOrder());

constexpr int kLongestQuote = 60;

}  // namespace

std::span<const CCheckRule> CheckRules() { return kRules; }

const char* CheckRuleName(CheckRule rule) { return kRules[static_cast<std::size_t>(rule)].name; }

std::string QuotedShort(const CString& text) {
  const bool isLong = text.GetLength() > kLongestQuote;
  return isLong ? Quoted(text.Left(kLongestQuote)) + "..." : Quoted(text);
}

bool CFindingList::IsBefore(const CEntry& a, const CEntry& b) {
  return std::tie(a.finding.line, a.finding.column, a.order) <
         std::tie(b.finding.line, b.finding.column, b.order);
}

void CFindingList::Add(CFinding finding) {
  CEntry entry{std::move(finding), m_total++};
  if (m_heap.size() < m_max) {
    m_heap.push_back(std::move(entry));
    std::push_heap(m_heap.begin(), m_heap.end(), IsBefore);
  } else if (!m_heap.empty() && IsBefore(entry, m_heap.front())) {
    std::pop_heap(m_heap.begin(), m_heap.end(), IsBefore);
    m_heap.back() = std::move(entry);
    std::push_heap(m_heap.begin(), m_heap.end(), IsBefore);
  }
}

std::vector<CFinding> CFindingList::TakeSorted() {
  std::sort_heap(m_heap.begin(), m_heap.end(), IsBefore);
  std::vector<CFinding> findings;
  findings.reserve(m_heap.size());
  for (CEntry& entry : m_heap) {
    findings.push_back(std::move(entry.finding));
  }
  m_heap.clear();
  return findings;
}

}  // namespace lum::tool
