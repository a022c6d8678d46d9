// A record's messages are those whose conditions on its identifier, channel and address hold, which
// are remembered, and whose conditions on its fields and line hold, which are asked each time.
#include "decoding/Decoder.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <optional>

#include "decoding/FormulaInputs.h"
#include "decoding/MatchMemo.h"
#include "decoding/RecordParts.h"

namespace lum::decoding {
namespace {

using Part = MatchTerm::Part;

bool IsAskedEachTime(const MatchTerm& term) {
  return term.part == Part::FieldCount || term.part == Part::Field || term.part == Part::Line;
}

template <typename Test>
bool AnyTerm(const Profile& profile, Test test) {
  return std::any_of(profile.messages.begin(), profile.messages.end(), [&](const auto& message) {
    return std::any_of(message.match.begin(), message.match.end(), test);
  });
}

bool UsesPart(const Profile& profile, Part part) {
  return AnyTerm(profile, [part](const MatchTerm& term) { return term.part == part; });
}

/// Zeros follow; the length stands in another word, since a text can end with them.
void PutText(std::string_view text, std::size_t word, MatchKey& key) {
  // An empty text may lead nowhere, which memcpy must not be given.
  if (!text.empty()) {
    std::memcpy(&key.words[word], text.data(), text.size());
  }
}

/// A bit says that it is a bus record: one of all zeros is not like a line of text.
std::uint64_t BusWord(const BusParts& bus) {
  return std::uint64_t{bus.id} | std::uint64_t{bus.isExtended} << 32 | std::uint64_t{1} << 33 |
         std::uint64_t{bus.priority} << 40 | std::uint64_t{bus.source} << 48 |
         std::uint64_t{bus.destination} << 56;
}

// Cells are filled where they are: one that is made elsewhere and copied would be waited for.
void SetAbsent(const Evaluation& evaluation, bool isRaw, Cell& cell) {
  cell.value = 0.0;
  cell.step = evaluation.step;
  cell.isOfRaw = isRaw;
  switch (evaluation.absence) {
    case AbsenceReason::EmptyInput:
      cell.state = CellState::NotAvailable;
      cell.reason = CellReason::EmptyInput;
      break;
    case AbsenceReason::MissingInput:
      cell.state = CellState::Undecodable;
      cell.reason = CellReason::MissingInput;
      break;
    default:
      cell.state = CellState::Undecodable;
      cell.reason = CellReason::NoValue;
      break;
  }
}

void SetNumber(CellState state, CellReason reason, double value, Cell& cell) {
  cell.state = state;
  cell.reason = reason;
  cell.value = value;
  cell.step = 0;
  cell.isOfRaw = false;
}

bool ContainsOne(const std::vector<NumberRange>& ranges, double number) {
  return std::any_of(ranges.begin(), ranges.end(),
                     [number](const NumberRange& range) { return range.Contains(number); });
}

bool IsAmongSentinels(const ColumnRule& column, double number, Cell& cell) {
  if (ContainsOne(column.notAvailable, number)) {
    SetNumber(CellState::NotAvailable, CellReason::NotAvailableNumber, number, cell);
    return true;
  }
  if (ContainsOne(column.error, number)) {
    SetNumber(CellState::Error, CellReason::ErrorNumber, number, cell);
    return true;
  }
  return false;
}

/// Whether the number stands for something else; the cell then says for what. Most columns have no
/// such numbers.
bool IsSentinel(const ColumnRule& column, double number, Cell& cell) {
  return !(column.notAvailable.empty() && column.error.empty()) &&
         IsAmongSentinels(column, number, cell);
}

void SetChecked(const ColumnRule& column, double value, Cell& cell) {
  if (!std::isfinite(value)) {
    SetNumber(CellState::Error, CellReason::NotANumber, value, cell);
  } else if (column.range && !column.range->Contains(value)) {
    SetNumber(CellState::Error, CellReason::OutOfRange, value, cell);
  } else {
    SetNumber(CellState::Value, CellReason::None, value, cell);
  }
}

void DecodeWithoutRaw(const ColumnRule& column, CFormulaInputs& inputs, Cell& cell) {
  const Evaluation value = column.formula->Evaluate(inputs);
  if (!value.HasValue()) {
    SetAbsent(value, false, cell);
  } else if (!IsSentinel(column, value.value, cell)) {
    SetChecked(column, value.value, cell);
  }
}

void DecodeColumn(const ColumnRule& column, CFormulaInputs& inputs, Cell& cell) {
  if (!column.raw) {
    DecodeWithoutRaw(column, inputs, cell);
    return;
  }
  const Evaluation raw = column.raw->Evaluate(inputs);
  if (!raw.HasValue()) {
    SetAbsent(raw, true, cell);
  } else if (IsSentinel(column, raw.value, cell)) {
    return;
  } else if (!column.formula) {
    SetChecked(column, raw.value, cell);
  } else {
    inputs.SetNumber(Input::Raw, raw.value);
    const Evaluation value = column.formula->Evaluate(inputs);
    value.HasValue() ? SetChecked(column, value.value, cell) : SetAbsent(value, false, cell);
  }
}

}  // namespace

struct CDecoder::State {
  explicit State(const Profile& rules);

  std::optional<MatchKey> KeyOf(const LogRecord& record) const;
  void FindCandidates(const LogRecord& record);
  std::span<const std::size_t> Candidates(const LogRecord& record);
  bool HoldsEachTime(std::size_t message, const LogRecord& record) const;

  const Profile& profile;
  bool usesChannel;
  bool usesAddress;
  bool asksEachTime;
  CMatchMemo memo;
  std::vector<std::size_t> candidates;
  std::vector<std::size_t> matches;
  CFormulaInputs inputs;
  std::vector<Cell> cells;
};

CDecoder::State::State(const Profile& rules)
    : profile(rules),
      usesChannel(UsesPart(rules, Part::Channel)),
      usesAddress(UsesPart(rules, Part::Sentence)),
      asksEachTime(AnyTerm(rules, IsAskedEachTime)) {
  std::size_t most = 0;
  for (const MessageRule& message : rules.messages) {
    most = std::max(most, message.columns.size());
  }
  cells.resize(most);
  candidates.reserve(rules.messages.size());
  matches.reserve(rules.messages.size());
}

/// Nothing when a text is too long to be remembered.
std::optional<MatchKey> CDecoder::State::KeyOf(const LogRecord& record) const {
  MatchKey key;
  if (record.isBus) {
    key.words[0] = BusWord(record.bus);
    key.words[1] = record.bus.pgn;
  }
  if (usesChannel && record.isBus) {
    if (record.bus.channel.size() > MatchKey::kMaxText) {
      return std::nullopt;
    }
    key.words[1] |= std::uint64_t{record.bus.channel.size()} << 32;
    PutText(record.bus.channel, 2, key);
  }
  if (usesAddress) {
    if (record.address.size() > MatchKey::kMaxText) {
      return std::nullopt;
    }
    key.words[1] |= std::uint64_t{record.address.size()} << 40;
    PutText(record.address, 4, key);
  }
  return key;
}

void CDecoder::State::FindCandidates(const LogRecord& record) {
  candidates.clear();
  for (std::size_t i = 0; i < profile.messages.size(); ++i) {
    const std::vector<MatchTerm>& terms = profile.messages[i].match;
    const bool isOne = std::all_of(terms.begin(), terms.end(), [&](const MatchTerm& term) {
      return IsAskedEachTime(term) || Holds(term, record);
    });
    if (isOne) {
      candidates.push_back(i);
    }
  }
}

std::span<const std::size_t> CDecoder::State::Candidates(const LogRecord& record) {
  const std::optional<MatchKey> key = KeyOf(record);
  std::span<const std::size_t> known;
  if (key && memo.Find(*key, known)) {
    return known;
  }
  FindCandidates(record);
  return key ? memo.Remember(*key, candidates) : std::span<const std::size_t>(candidates);
}

bool CDecoder::State::HoldsEachTime(std::size_t message, const LogRecord& record) const {
  const std::vector<MatchTerm>& terms = profile.messages[message].match;
  return std::all_of(terms.begin(), terms.end(), [&record](const MatchTerm& term) {
    return !IsAskedEachTime(term) || Holds(term, record);
  });
}

CDecoder::CDecoder(const Profile& profile) : m_state(std::make_unique<State>(profile)) {}
CDecoder::~CDecoder() = default;

std::span<const std::size_t> CDecoder::Match(const LogRecord& record) {
  State& state = *m_state;
  if (record.kind != RecordKind::Data) {
    return {};
  }
  const std::span<const std::size_t> candidates = state.Candidates(record);
  if (!state.asksEachTime) {
    return candidates;
  }
  state.matches.clear();
  for (const std::size_t message : candidates) {
    if (state.HoldsEachTime(message, record)) {
      state.matches.push_back(message);
    }
  }
  return state.matches;
}

Row CDecoder::Decode(const LogRecord& record, std::size_t message) {
  State& state = *m_state;
  const MessageRule& rule = state.profile.messages[message];
  const std::span<Cell> cells = std::span(state.cells).first(rule.columns.size());
  SetInputs(state.inputs, record);
  Cell* cell = cells.data();
  for (const ColumnRule& column : rule.columns) {
    DecodeColumn(column, state.inputs, *cell++);
  }
  return {&record, &rule, message, cells};
}

}  // namespace lum::decoding
