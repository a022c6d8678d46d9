// The columns of a message: the items "NAME.Formula", "NAME.Unit" and so on of its section.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "decoding/ProfileFaults.h"

namespace lum::decoding {

/// Compiles a formula; what is wrong becomes a fault at its place.
std::optional<CExpression> CompileFormula(const PlacedText& text, CProfileFaults& faults);

/// Reads one message's columns, item by item.
class CColumnReader {
 public:
  explicit CColumnReader(CProfileFaults& faults) : m_faults(faults) {}

  void Take(const PlacedText& key, const PlacedText& value);
  /// The columns in the order of their first items, once all items were taken.
  std::vector<ColumnRule> Finish();
  bool HasColumns() const { return !m_drafts.empty(); }

 private:
  struct Draft {
    ColumnRule rule;
    // Texts are left out of the places.
    PlacedText first;
    std::optional<PlacedText> raw;
    std::optional<PlacedText> formula;
    std::optional<PlacedText> sentinels;
  };

  Draft* FindOrMake(const PlacedText& name);
  void TakeUnknown(const PlacedText& key);
  void TakeFormula(std::string_view property, const PlacedText& value, Draft& draft);
  void TakeProperty(std::string_view property, const PlacedText& value, Draft& draft);
  void TakeDigits(const PlacedText& value, ColumnRule& rule);
  void TakeSentinels(const PlacedText& value, Draft& draft);
  void CheckFormulas(const Draft& draft);
  void ApplySentinels(Draft& draft);

  CProfileFaults& m_faults;
  std::vector<Draft> m_drafts;
  std::map<std::string, std::size_t, std::less<>> m_index;
  bool m_hasTooMany = false;
};

}  // namespace lum::decoding
