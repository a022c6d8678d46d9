// An open-addressing table of hashes and places; the names stay in the children.
#include "attributes/ChildIndex.h"

#include <algorithm>
#include <bit>

namespace lum::detail {
namespace {

/// Occurrences of one name are spread over the table like different names. The factor is odd, so no
/// two of them have the same hash.
std::uint32_t HashKey(std::uint32_t nameHash, int occurrence) noexcept {
  constexpr std::uint32_t kSpread = 0x85EBCA6B;
  return nameHash + static_cast<std::uint32_t>(occurrence) * kSpread;
}

}  // namespace

void CChildIndex::IndexNewChildren(Siblings siblings) {
  MakeRoom(siblings.size());
  while (m_places.size() < siblings.size()) {
    IndexChild(siblings, static_cast<std::uint32_t>(m_places.size()));
  }
}

void CChildIndex::IndexChild(Siblings siblings, std::uint32_t pos) {
  const std::wstring_view name = View(siblings[pos]->Mnemonic());
  const std::uint32_t nameHash = HashText(name);
  const std::uint32_t first = ChildOf(siblings, name, nameHash, 0);
  const int occurrence = first != kFree ? m_places[first].count : 0;
  const std::uint32_t hash = HashKey(nameHash, occurrence);
  if (const std::size_t place = PlaceOf(hash, kFree); place != kNowhere) {
    m_slots[place] = {hash, pos};
  } else {
    m_crowded[std::wstring(name)].emplace(occurrence, pos);
  }
  m_places.push_back({occurrence, 1});
  m_places[first != kFree ? first : pos].count = occurrence + 1;
}

bool CChildIndex::Rename(Siblings siblings, const CAttributeMap& child,
                         std::wstring_view newName) noexcept {
  const std::wstring_view oldName = View(child.Mnemonic());
  const std::uint32_t oldHash = HashText(oldName);
  const std::uint32_t newHash = HashText(newName);
  const std::uint32_t pos = ChildOf(siblings, oldName, oldHash, 0);
  if (m_places[pos].count != 1 || ChildOf(siblings, newName, newHash, 0) != kFree ||
      !m_crowded.empty()) {
    return false;
  }
  RemoveSlot(PlaceOf(HashKey(oldHash, 0), pos));
  const std::size_t place = PlaceOf(HashKey(newHash, 0), kFree);
  if (place == kNowhere) {
    return false;
  }
  m_slots[place] = {HashKey(newHash, 0), pos};
  return true;
}

int CChildIndex::Find(Siblings siblings, std::wstring_view name, int occurrence) const noexcept {
  const std::uint32_t pos = ChildOf(siblings, name, HashText(name), occurrence);
  return pos != kFree ? static_cast<int>(pos) : -1;
}

int CChildIndex::Count(Siblings siblings, std::wstring_view name) const noexcept {
  const std::uint32_t first = ChildOf(siblings, name, HashText(name), 0);
  return first != kFree ? m_places[first].count : 0;
}

void CChildIndex::MakeRoom(std::size_t children) {
  if (m_places.empty()) {
    m_places.reserve(children);
  }
  // Neighbouring slots share a cache line: a full table that fits the cache beats an empty one.
  const std::size_t needed = children + children / 4 + 1;
  if (needed <= m_slots.size()) {
    return;
  }
  std::vector<Slot> smaller(std::bit_ceil(needed));
  smaller.swap(m_slots);
  // Behind a free place everything that was entered before an entry stood before it: none comes to
  // stand further from its home than it did.
  const auto start = std::find_if(smaller.begin(), smaller.end(),
                                  [](const Slot& slot) { return slot.pos == kFree; });
  Enter(start, smaller.end());
  Enter(smaller.begin(), start);
}

void CChildIndex::Enter(std::vector<Slot>::const_iterator first,
                        std::vector<Slot>::const_iterator end) {
  for (; first != end; ++first) {
    if (first->pos == kFree) {
      continue;
    }
    std::size_t place = first->hash & (m_slots.size() - 1);
    while (m_slots[place].pos != kFree) {
      place = Next(place);
    }
    m_slots[place] = *first;
  }
}

/// What follows without a gap moves up, unless it would come to stand before its home. What stands
/// further away than a run is long has its home behind the hole.
void CChildIndex::RemoveSlot(std::size_t place) noexcept {
  const auto distance = [this](std::size_t from, std::size_t to) {
    return (to - from) & (m_slots.size() - 1);
  };
  for (std::size_t next = Next(place);
       m_slots[next].pos != kFree && distance(place, next) <= kLongestRun; next = Next(next)) {
    if (distance(m_slots[next].hash, next) >= distance(place, next)) {
      m_slots[place] = m_slots[next];
      place = next;
    }
  }
  m_slots[place] = Slot();
}

std::uint32_t CChildIndex::ChildOf(Siblings siblings, std::wstring_view name,
                                   std::uint32_t nameHash, int occurrence) const noexcept {
  const std::uint32_t hash = HashKey(nameHash, occurrence);
  std::size_t place = hash & (m_slots.size() - 1);
  for (std::size_t left = kLongestRun; left > 0; --left, place = Next(place)) {
    const Slot& slot = m_slots[place];
    if (slot.pos == kFree) {
      break;
    }
    // Of one name, only the wanted occurrence has this hash.
    if (slot.hash == hash && View(siblings[slot.pos]->Mnemonic()) == name) {
      return slot.pos;
    }
  }
  return m_crowded.empty() ? kFree : FindCrowded(name, occurrence);
}

std::size_t CChildIndex::PlaceOf(std::uint32_t hash, std::uint32_t pos) const noexcept {
  std::size_t place = hash & (m_slots.size() - 1);
  for (std::size_t left = kLongestRun; left > 0; --left, place = Next(place)) {
    if (m_slots[place].pos == pos) {
      return place;
    }
  }
  return kNowhere;
}

std::uint32_t CChildIndex::FindCrowded(std::wstring_view name, int occurrence) const noexcept {
  const auto ofName = m_crowded.find(name);
  if (ofName == m_crowded.end()) {
    return kFree;
  }
  const auto found = ofName->second.find(occurrence);
  return found == ofName->second.end() ? kFree : found->second;
}

}  // namespace lum::detail
