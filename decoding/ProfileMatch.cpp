#include "decoding/ProfileMatch.h"

#include <algorithm>
#include <utility>

#include "decoding/FormulaInputs.h"
#include "decoding/ProfileNumbers.h"
#include "decoding/Utf8Text.h"

namespace lum::decoding {
namespace {

using Part = MatchTerm::Part;

constexpr std::string_view kFieldMark = "Field.";
constexpr std::uint32_t kLargestStandardId = 0x7FF;
constexpr std::uint32_t kLargestExtendedId = 0x1FFFFFFF;
constexpr std::size_t kStandardDigits = 3;
constexpr std::size_t kExtendedDigits = 8;
constexpr std::string_view kIdDigits =
    "3 hexadecimal digits up to 7FF or 8 up to 1FFFFFFF, as candump writes them";

constexpr std::string_view kMatchKeys[] = {"Match.Id",      "Match.IdMask",      "Match.Pgn",
                                           "Match.Source",  "Match.Destination", "Match.Priority",
                                           "Match.Channel", "Match.Sentence",    "Match.FieldCount",
                                           "Match.Field.N", "Match.Line"};

/// SAE J1939-21: when the PF byte is below 240, the PS byte is the destination and no part of the
/// number.
bool CanBePgn(std::uint32_t pgn) {
  const bool isPdu1 = ((pgn >> 8) & 0xFF) < 240;
  return !isPdu1 || (pgn & 0xFF) == 0;
}

/// Whether the number is an identifier or a mask of one, as its digits say.
bool IsId(std::string_view digits, std::uint32_t number) {
  return (digits.size() == kStandardDigits && number <= kLargestStandardId) ||
         (digits.size() == kExtendedDigits && number <= kLargestExtendedId);
}

}  // namespace

/// A kind of condition whose key is a plain word: a number up to `most`, or a pattern.
struct CMatchReader::Row {
  std::string_view name;
  Part part;
  bool isPattern;
  std::uint32_t most;
};

const CMatchReader::Row* CMatchReader::FindRow(std::string_view key) {
  static constexpr Row kRows[] = {
      {"Pgn", Part::Pgn, false, 0x3FFFF},
      {"Source", Part::Source, false, 255},
      {"Destination", Part::Destination, false, 255},
      {"Priority", Part::Priority, false, 7},
      {"FieldCount", Part::FieldCount, false, CFormulaInputs::kMaxFields},
      {"Channel", Part::Channel, true, 0},
      {"Sentence", Part::Sentence, true, 0},
      {"Line", Part::Line, true, 0},
  };
  const auto row = std::find_if(std::begin(kRows), std::end(kRows),
                                [key](const Row& candidate) { return candidate.name == key; });
  return row == std::end(kRows) ? nullptr : row;
}

std::span<const std::string_view> MatchKeys() { return kMatchKeys; }

bool IsOfJ1939(Part part) {
  return part == Part::Pgn || part == Part::Source || part == Part::Destination ||
         part == Part::Priority;
}

bool CanOccur(Part part, LogFormat format) {
  const bool isBus = format == LogFormat::Candump || format == LogFormat::J1939;
  switch (part) {
    case Part::Id:
    case Part::Channel:
      return isBus;
    case Part::Sentence:
      return format == LogFormat::Nmea;
    case Part::FieldCount:
    case Part::Field:
      return !isBus;
    case Part::Line:
      return true;
    default:
      return format == LogFormat::J1939;
  }
}

void CMatchReader::Take(const PlacedText& key, const PlacedText& value) {
  const std::string_view name = key.text.substr(kMatchMark.size());
  if (name == "Id") {
    TakeId(key, value);
  } else if (name == "IdMask") {
    TakeMask(key, value);
  } else if (name.starts_with(kFieldMark)) {
    TakeField(key, value);
  } else if (const Row* row = FindRow(name); row == nullptr) {
    m_faults.Add(key, "unknown key " + QuotedPart(key.text), "a condition such as Match.Pgn",
                 Nearest(key.text, kMatchKeys));
  } else if (row->isPattern) {
    MatchTerm term;
    term.part = row->part;
    TakePattern(std::move(term), key, value);
  } else {
    TakeNumber(*row, key, value);
  }
}

void CMatchReader::TakeNumber(const Row& row, const PlacedText& key, const PlacedText& value) {
  const std::optional<std::uint64_t> number = ReadWholeNumber(value.text);
  if (!number || *number > row.most) {
    m_faults.Add(value, QuotedPart(value.text),
                 "a whole number from 0 to " + std::to_string(row.most));
    return;
  }
  MatchTerm term;
  term.part = row.part;
  term.number = static_cast<std::uint32_t>(*number);
  if (term.part == Part::Pgn && !CanBePgn(term.number)) {
    m_faults.Add(value, "no message has the parameter group number " + QuotedPart(value.text),
                 "one whose last byte is 0, since the byte before is below 240");
    return;
  }
  Add(std::move(term), key, value);
}

void CMatchReader::TakeId(const PlacedText& key, const PlacedText& value) {
  m_hasId = true;
  const std::optional<std::uint32_t> number = ReadHexDigits(value.text);
  if (!number || !IsId(value.text, *number)) {
    m_faults.Add(value, QuotedPart(value.text), std::string(kIdDigits));
    return;
  }
  MatchTerm term;
  term.part = Part::Id;
  term.number = *number;
  term.isExtended = value.text.size() == kExtendedDigits;
  Add(std::move(term), key, value);
}

void CMatchReader::TakeMask(const PlacedText& key, const PlacedText& value) {
  m_maskPlace = key.WithoutText();
  const std::optional<std::uint32_t> number = ReadHexDigits(value.text);
  if (!number || !IsId(value.text, *number)) {
    m_faults.Add(value, QuotedPart(value.text), std::string(kIdDigits));
    m_hasId = true;  // One fault is enough.
    return;
  }
  m_mask = number;
  m_maskIsExtended = value.text.size() == kExtendedDigits;
}

void CMatchReader::TakeField(const PlacedText& key, const PlacedText& value) {
  const std::size_t mark = kMatchMark.size() + kFieldMark.size();
  const std::optional<std::uint64_t> field = ReadWholeNumber(key.text.substr(mark));
  if (!field || *field >= CFormulaInputs::kMaxFields) {
    m_faults.Add(key.From(mark), "the field number " + QuotedPart(key.text.substr(mark)),
                 "a whole number from 0 to " + std::to_string(CFormulaInputs::kMaxFields - 1));
    return;
  }
  MatchTerm term;
  term.part = Part::Field;
  term.number = static_cast<std::uint32_t>(*field);
  TakePattern(std::move(term), key, value);
}

void CMatchReader::TakePattern(MatchTerm term, const PlacedText& key, const PlacedText& value) {
  if (value.text.empty() || value.text.size() > kMaxMatchPattern) {
    m_faults.Add(value,
                 value.text.empty()
                     ? "no pattern"
                     : "a pattern of " + std::to_string(value.text.size()) + " bytes",
                 "a pattern of 1 to " + std::to_string(kMaxMatchPattern) + " bytes");
    return;
  }
  term.pattern = value.text;
  Add(std::move(term), key, value);
}

void CMatchReader::Add(MatchTerm term, const PlacedText& key, const PlacedText& value) {
  term.text = std::string(key.text) + "=" + std::string(value.text);
  m_terms.push_back(std::move(term));
  m_places.push_back(key.WithoutText());
}

std::vector<MatchTerm> CMatchReader::Finish() {
  const auto id = std::find_if(m_terms.begin(), m_terms.end(),
                               [](const MatchTerm& term) { return term.part == Part::Id; });
  if (m_mask && !m_hasId) {
    m_faults.Add(m_maskPlace, "a mask without an identifier", "Match.Id");
  } else if (m_mask && id != m_terms.end()) {
    if (m_maskIsExtended != id->isExtended) {
      m_faults.Add(m_maskPlace, "a mask of another length than the identifier",
                   id->isExtended ? "8 digits" : "3 digits");
    }
    id->mask = *m_mask;
  }
  return std::move(m_terms);
}

}  // namespace lum::decoding
