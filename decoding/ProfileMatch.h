// The conditions of a message: the items "Match.…" of its section.
#pragma once

#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "decoding/ProfileFaults.h"

namespace lum::decoding {

/// What such keys begin with.
inline constexpr std::string_view kMatchMark = "Match.";

/// All keys, "Match.Field.N" for the conditions on fields.
std::span<const std::string_view> MatchKeys();

/// Whether records of a format can meet a condition on that part.
bool CanOccur(MatchTerm::Part part, LogFormat format);
/// Whether only the format J1939 tells that part.
bool IsOfJ1939(MatchTerm::Part part);

/// Reads one message's conditions, item by item.
class CMatchReader {
 public:
  explicit CMatchReader(CProfileFaults& faults) : m_faults(faults) {}

  /// Takes one item whose key begins with kMatchMark.
  void Take(const PlacedText& key, const PlacedText& value);
  /// The conditions, once all items were taken.
  std::vector<MatchTerm> Finish();
  /// Where each condition stands.
  const std::vector<PlacedText>& Places() const { return m_places; }

 private:
  struct Row;
  static const Row* FindRow(std::string_view key);
  void TakeNumber(const Row& row, const PlacedText& key, const PlacedText& value);
  void TakeId(const PlacedText& key, const PlacedText& value);
  void TakeMask(const PlacedText& key, const PlacedText& value);
  void TakeField(const PlacedText& key, const PlacedText& value);
  void TakePattern(MatchTerm term, const PlacedText& key, const PlacedText& value);
  void Add(MatchTerm term, const PlacedText& key, const PlacedText& value);

  CProfileFaults& m_faults;
  std::vector<MatchTerm> m_terms;
  std::vector<PlacedText> m_places;  // Without their texts.
  PlacedText m_maskPlace;
  std::optional<std::uint32_t> m_mask;
  bool m_maskIsExtended = false;
  bool m_hasId = false;
};

}  // namespace lum::decoding
