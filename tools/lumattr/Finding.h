// What `lumattr check` finds: the rules with their names and meanings, one finding, and the list
// that keeps the first findings of a file in the order of their places.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "platform/FrameworkString.h"

namespace lum::tool {

/// Everything `check` looks for. CheckRules() has one row for each, in this order.
enum class CheckRule {
  // Lines of any file.
  InvalidBytes,
  ControlCharacter,
  // Lines and sections of a configuration file.
  UnknownLine,
  OutsideSection,
  IndentedLine,
  DuplicateSection,
  DuplicateKey,
  // Format versions.
  UnknownVersion,
  LateVersion,
  VersionOneItem,
  MisspeltVersion,
  MisspeltMark,
  MarkInVersionTwo,
  NotAnAttribute,
  // Keys.
  EmptyName,
  BlanksAroundName,
  UnbalancedParenthesis,
  NameHoldsParenthesis,
  NameHoldsEquals,
  MalformedOccurrence,
  NegativeOccurrence,
  HugeOccurrence,
  MissingOccurrence,
  SameAttribute,
  UnknownMnemonic,
  // Values.
  MissingFlags,
  UnreadableFlags,
  InexactFlags,
  TransientFlag,
  OrderInfo,
  RefusedText,
  CutAtSlashes,
  TrailingBlanks,
  // Definition files.
  MissingItem,
  EmptyMnemonic,
  UnaddressableMnemonic,
  CarriedOver,
  IdentifierRange,
  UnknownType,
  LastType,
  RefusedDefault,
  DuplicateMnemonic,
  DuplicateIdentifier,
  ChecksumMark,
  NotAComment,
  LineTooLong,
  ControlWithoutComma,
  ControlWithoutDefinition,
  ControlBeforeDefinition,
  DuplicateControl,
};

/// One rule as people see it.
struct CCheckRule {
  CheckRule rule;
  const char* name;     ///< Stands in the output; never changes.
  const char* files;    ///< "all", "configuration" or "definitions".
  const char* meaning;  ///< One sentence.
};

/// All rules, in the order of the enumeration.
std::span<const CCheckRule> CheckRules();
/// The name of a rule.
const char* CheckRuleName(CheckRule rule);

/// One place in a file that a reader would skip or misread in silence.
struct CFinding {
  int line = 0;
  int column = 0;
  CheckRule rule = CheckRule::InvalidBytes;
  std::string found;
  std::string expected;
  std::string suggestion;  ///< What was probably meant, or nothing.
};

/// A text in quotes for people: cut to 60 characters, control characters escaped.
std::string QuotedShort(const CString& text);

/// Collects findings in any order and keeps those with the first places, so that a hostile file
/// costs no more memory than `max` findings.
class CFindingList {
 public:
  /// The check of one file compares at most so many words in search of what was probably meant:
  /// neither many unknown names nor many known ones make it slow.
  static constexpr int kMaxComparisons = 5'000'000;

  explicit CFindingList(std::size_t max) : m_max(max) {}

  void Add(CFinding finding);
  /// Whether a word may still be compared with so many others, which is then counted.
  bool MayCompare(int words) noexcept {
    m_comparisonsLeft = words <= m_comparisonsLeft ? m_comparisonsLeft - words : -1;
    return m_comparisonsLeft >= 0;
  }
  /// How many were added, those that were not kept included.
  std::size_t Total() const noexcept { return m_total; }
  /// The kept findings by line, column and order of adding. The list is empty afterwards.
  std::vector<CFinding> TakeSorted();

 private:
  struct CEntry {
    CFinding finding;
    std::size_t order;
  };
  static bool IsBefore(const CEntry& a, const CEntry& b);

  std::vector<CEntry> m_heap;  // The last place on top.
  std::size_t m_max;
  std::size_t m_total = 0;
  int m_comparisonsLeft = kMaxComparisons;  // Below zero once it was not enough.
};

}  // namespace lum::tool
