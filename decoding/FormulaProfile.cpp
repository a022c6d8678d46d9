// Profiles of formulas alone, as a command line gives them.
#include <algorithm>
#include <set>
#include <string>
#include <utility>

#include "decoding/ProfileColumns.h"
#include "decoding/Utf8Text.h"

namespace lum::decoding {
namespace {

constexpr std::size_t kNoName = std::string_view::npos;

/// The place of the "=" behind a column's name. No formula has one outside of its quoted texts.
std::size_t NameEnd(std::string_view text) {
  const std::size_t place = text.find_first_of("=\"'");
  return place != kNoName && text[place] == '=' ? place : kNoName;
}

class CFormulaColumns {
 public:
  CFormulaColumns(MessageRule& message, CProfileFaults& faults)
      : m_message(message), m_faults(faults) {}

  void Take(const PlacedText& text) {
    const std::size_t end = NameEnd(text.text);
    const PlacedText formula = (end == kNoName ? text : text.From(end + 1)).WithoutBlanks();
    const PlacedText name = (end == kNoName ? text : text.First(end)).WithoutBlanks();
    std::optional<CExpression> compiled = CompileFormula(formula, m_faults);
    if (compiled && compiled->Uses(Input::Raw)) {
      m_faults.Add(formula, "'raw' in a column without a raw formula",
                   "a formula of the record's parts");
    }
    if (IsGoodName(name, end != kNoName)) {
      AddColumn(name, std::move(compiled));
    }
  }

 private:
  /// An empty text without a name is no formula, which was told.
  bool IsGoodName(const PlacedText& name, bool isGiven) {
    if (name.text.empty()) {
      if (isGiven) {
        m_faults.Add(name, "no name before '='", "NAME=FORMULA or the formula alone");
      }
      return false;
    }
    const bool isNew = m_names.emplace(name.text).second;
    if (!isNew) {
      m_faults.Add(name, "the column " + QuotedPart(name.text) + " again", "another name");
    }
    return isNew;
  }

  void AddColumn(const PlacedText& name, std::optional<CExpression> formula) {
    ColumnRule column;
    column.name = name.text;
    column.displayName = name.text;
    column.line = name.line;
    column.formula = std::move(formula);
    m_message.columns.push_back(std::move(column));
  }

  MessageRule& m_message;
  CProfileFaults& m_faults;
  std::set<std::string, std::less<>> m_names;
};

}  // namespace

Profile ProfileOfFormulas(const std::vector<std::string>& formulas,
                          std::vector<ProfileFault>& faults) {
  CProfileFaults found(faults);
  MessageRule message;
  CFormulaColumns columns(message, found);
  const std::size_t count = std::min(formulas.size(), kMaxMessageColumns);
  for (std::size_t i = 0; i < count; ++i) {
    columns.Take({formulas[i], static_cast<int>(i) + 1, 1});
  }
  if (formulas.empty()) {
    found.Add({}, "no formula", "at least one");
  } else if (count < formulas.size()) {
    found.Add({{}, static_cast<int>(count) + 1, 1}, "one formula too many",
              "at most " + std::to_string(kMaxMessageColumns) + " formulas");
  }
  found.Finish();
  Profile profile;
  profile.messages.push_back(std::move(message));
  return profile;
}

}  // namespace lum::decoding
