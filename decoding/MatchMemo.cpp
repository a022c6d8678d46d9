// A table of fixed size. A key stands in one of the few places after its hash's own, so a search is
// short whatever the keys are.
#include "decoding/MatchMemo.h"

namespace lum::decoding {
namespace {

constexpr std::size_t kPlaces = 8;

std::size_t HashKeyWords(const MatchKey& key) {
  constexpr MatchKey::Words kFactors = {0x9E3779B97F4A7C15, 0xC2B2AE3D27D4EB4F, 0x165667B19E3779F9,
                                        0xD6E8FEB86659FD93, 0xA0761D6478BD642F, 0xE7037ED1A0B428DB};
  std::uint64_t hash = 0;
  for (std::size_t i = 0; i < kFactors.size(); ++i) {
    hash ^= key.words[i] * kFactors[i];
  }
  hash ^= hash >> 32;
  return static_cast<std::size_t>((hash * kFactors[0]) >> 40);
}

}  // namespace

CMatchMemo::CMatchMemo() : m_entries(kMaxKeys) {}

bool CMatchMemo::Find(const MatchKey& key, std::span<const std::size_t>& messages) const {
  const std::size_t hash = HashKeyWords(key);
  for (std::size_t i = 0; i < kPlaces; ++i) {
    const Entry& entry = m_entries[(hash + i) % kMaxKeys];
    if (!entry.isUsed) {
      return false;
    }
    if (entry.key == key) {
      messages = List(entry);
      return true;
    }
  }
  return false;
}

std::span<const std::size_t> CMatchMemo::List(const Entry& entry) const {
  return std::span(m_numbers).subspan(entry.first, entry.count);
}

/// The first that is free or the key's own; else another key's.
CMatchMemo::Entry& CMatchMemo::Place(const MatchKey& key) {
  const std::size_t hash = HashKeyWords(key);
  for (std::size_t i = 0; i < kPlaces; ++i) {
    Entry& entry = m_entries[(hash + i) % kMaxKeys];
    if (!entry.isUsed || entry.key == key) {
      return entry;
    }
  }
  return m_entries[hash % kMaxKeys];
}

std::span<const std::size_t> CMatchMemo::Remember(const MatchKey& key,
                                                  std::span<const std::size_t> messages) {
  if (m_numbers.size() + messages.size() > kMaxNumbers) {
    m_entries.assign(kMaxKeys, {});
    m_numbers.clear();
  }
  Entry& entry = Place(key);
  entry = {key, static_cast<std::uint32_t>(m_numbers.size()),
           static_cast<std::uint32_t>(messages.size()), true};
  m_numbers.insert(m_numbers.end(), messages.begin(), messages.end());
  return List(entry);
}

}  // namespace lum::decoding
