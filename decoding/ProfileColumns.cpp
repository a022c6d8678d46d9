#include "decoding/ProfileColumns.h"

#include <algorithm>
#include <utility>
#include <variant>

#include "decoding/ProfileMatch.h"
#include "decoding/ProfileNumbers.h"
#include "decoding/ProfileSentinels.h"
#include "decoding/Utf8Text.h"

namespace lum::decoding {
namespace {

constexpr std::string_view kColumnKeys[] = {"Raw",   "Formula",      "Unit",  "Digits",
                                            "Range", "NotAvailable", "Error", "Sentinels"};
constexpr std::string_view kSentinelKinds[] = {"J1939"};

bool IsColumnKey(const PlacedText& key, std::size_t point) {
  if (point == std::string_view::npos || point == 0 ||
      key.First(point).WithoutBlanks().text.size() != point) {
    return false;
  }
  const std::string_view property = key.text.substr(point + 1);
  return std::find(std::begin(kColumnKeys), std::end(kColumnKeys), property) !=
         std::end(kColumnKeys);
}

/// The key that was probably meant, with the column's name or of a condition.
std::string NearestKey(const PlacedText& key) {
  const std::size_t point = key.text.rfind('.');
  if (point != std::string_view::npos && point > 0) {
    const std::string nearest = Nearest(key.text.substr(point + 1), kColumnKeys);
    if (!nearest.empty()) {
      return std::string(key.First(point).WithoutBlanks().text) + "." + nearest;
    }
  }
  return Nearest(key.text, MatchKeys());
}

/// The place of a fault in a formula: its lines are one after the other in the profile's one.
PlacedText PlaceIn(const PlacedText& formula, const ExpressionError& error) {
  std::size_t lineBegin = 0;
  for (int line = 1; line < error.line; ++line) {
    lineBegin = std::min(formula.text.find('\n', lineBegin), formula.text.size() - 1) + 1;
  }
  PlacedText place = formula.From(lineBegin).WithoutText();
  place.column += error.column - 1;
  return place;
}

void Append(std::vector<NumberRange>& ranges, const std::vector<NumberRange>& more) {
  ranges.insert(ranges.end(), more.begin(), more.end());
}

}  // namespace

std::optional<CExpression> CompileFormula(const PlacedText& text, CProfileFaults& faults) {
  std::variant<CExpression, ExpressionError> compiled = CExpression::Compile(text.text);
  if (ExpressionError* error = std::get_if<ExpressionError>(&compiled)) {
    faults.Add(PlaceIn(text, *error), std::move(error->found), std::move(error->expected),
               std::move(error->suggestion));
    return std::nullopt;
  }
  return std::get<CExpression>(std::move(compiled));
}

void CColumnReader::Take(const PlacedText& key, const PlacedText& value) {
  const std::size_t point = key.text.rfind('.');
  if (!IsColumnKey(key, point)) {
    TakeUnknown(key);
    return;
  }
  if (Draft* draft = FindOrMake(key.First(point))) {
    TakeProperty(key.text.substr(point + 1), value, *draft);
  }
}

void CColumnReader::TakeUnknown(const PlacedText& key) {
  m_faults.Add(key, "unknown key " + QuotedPart(key.text),
               "a condition such as Match.Pgn or a column's item such as NAME.Formula",
               NearestKey(key));
}

CColumnReader::Draft* CColumnReader::FindOrMake(const PlacedText& name) {
  if (const auto known = m_index.find(name.text); known != m_index.end()) {
    return &m_drafts[known->second];
  }
  if (m_drafts.size() == kMaxMessageColumns) {
    if (!std::exchange(m_hasTooMany, true)) {
      m_faults.Add(name, "one column too many",
                   "at most " + std::to_string(kMaxMessageColumns) + " columns in a message");
    }
    return nullptr;
  }
  m_index.emplace(name.text, m_drafts.size());
  Draft& draft = m_drafts.emplace_back();
  draft.rule.name = name.text;
  draft.rule.displayName = name.text;
  draft.rule.line = name.line;
  draft.first = name.WithoutText();
  return &draft;
}

void CColumnReader::TakeProperty(std::string_view property, const PlacedText& value, Draft& draft) {
  ColumnRule& rule = draft.rule;
  if (property == "Unit") {
    rule.unit = value.text;
  } else if (property == "Digits") {
    TakeDigits(value, rule);
  } else if (property == "Range") {
    rule.range = ReadRange(value, m_faults);
  } else if (property == "NotAvailable") {
    Append(rule.notAvailable, ReadRangeList(value, m_faults));
  } else if (property == "Error") {
    Append(rule.error, ReadRangeList(value, m_faults));
  } else if (property == "Sentinels") {
    TakeSentinels(value, draft);
  } else {
    TakeFormula(property, value, draft);
  }
}

void CColumnReader::TakeFormula(std::string_view property, const PlacedText& value, Draft& draft) {
  const bool isRaw = property == "Raw";
  (isRaw ? draft.raw : draft.formula) = value.WithoutText();
  (isRaw ? draft.rule.raw : draft.rule.formula) = CompileFormula(value, m_faults);
}

void CColumnReader::TakeDigits(const PlacedText& value, ColumnRule& rule) {
  const std::optional<std::uint64_t> digits = ReadWholeNumber(value.text);
  if (!digits || *digits > kMaxColumnDigits) {
    m_faults.Add(value, QuotedPart(value.text),
                 "a whole number from 0 to " + std::to_string(kMaxColumnDigits));
    return;
  }
  rule.digits = static_cast<int>(*digits);
}

void CColumnReader::TakeSentinels(const PlacedText& value, Draft& draft) {
  if (value.text != kSentinelKinds[0]) {
    m_faults.Add(value, QuotedPart(value.text), std::string(kSentinelKinds[0]),
                 Nearest(value.text, kSentinelKinds));
    return;
  }
  draft.sentinels = value.WithoutText();
}

std::vector<ColumnRule> CColumnReader::Finish() {
  std::vector<ColumnRule> columns;
  columns.reserve(m_drafts.size());
  for (Draft& draft : m_drafts) {
    CheckFormulas(draft);
    ApplySentinels(draft);
    columns.push_back(std::move(draft.rule));
  }
  return columns;
}

void CColumnReader::CheckFormulas(const Draft& draft) {
  if (!draft.raw && !draft.formula) {
    m_faults.Add(
        draft.first, "the column " + QuotedPart(draft.rule.name) + " without a formula",
        QuotedPart(draft.rule.name + ".Formula") + " or " + QuotedPart(draft.rule.name + ".Raw"));
  }
  if (draft.rule.raw && draft.rule.raw->Uses(Input::Raw)) {
    m_faults.Add(*draft.raw, "'raw' in the raw formula itself", "a formula of the record's parts");
  }
  if (draft.rule.formula && !draft.raw && draft.rule.formula->Uses(Input::Raw)) {
    m_faults.Add(*draft.formula, "'raw' in a column without a raw formula",
                 QuotedPart(draft.rule.name + ".Raw"));
  }
}

void CColumnReader::ApplySentinels(Draft& draft) {
  // A formula that could not be compiled has its own fault.
  const std::optional<CExpression>& read = draft.raw ? draft.rule.raw : draft.rule.formula;
  if (!draft.sentinels || !read) {
    return;
  }
  const std::variant<Sentinels, std::string> sentinels = SentinelsOfFormula(read->Text());
  if (const std::string* reason = std::get_if<std::string>(&sentinels)) {
    m_faults.Add(
        *draft.sentinels, "J1939's numbers for " + *reason,
        "an unsigned field of known width, read by " + QuotedPart(draft.rule.name + ".Raw"));
    return;
  }
  draft.rule.notAvailable.push_back(std::get<Sentinels>(sentinels).notAvailable);
  draft.rule.error.push_back(std::get<Sentinels>(sentinels).error);
}

}  // namespace lum::decoding
