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
  std::size_t place = SlotOf(siblings, name, nameHash, 0);
  const std::uint32_t first = ChildAt(place, name, 0);
  int occurrence = 0;
  if (first != kFree) {
    occurrence = m_places[first].count;
    place = SlotOf(siblings, name, nameHash, occurrence);
  }
  if (place != kNowhere) {
    m_slots[place] = {HashKey(nameHash, occurrence), pos};
  } else {
    m_crowded[std::wstring(name)].emplace(occurrence, pos);
  }
  m_places.push_back({occurrence, 1});
  m_places[first != kFree ? first : pos].count = occurrence + 1;
}

bool CChildIndex::Rename(Siblings siblings, const CAttributeMap& child,
                         std::wstring_view newName) noexcept {
  const std::wstring_view oldName = View(child.Mnemonic());
  const std::size_t oldPlace = SlotOf(siblings, oldName, HashText(oldName), 0);
  const std::uint32_t newHash = HashText(newName);
  const std::size_t newPlace = SlotOf(siblings, newName, newHash, 0);
  if (!m_crowded.empty() || newPlace == kNowhere || m_slots[newPlace].pos != kFree) {
    return false;
  }
  const std::uint32_t pos = m_slots[oldPlace].pos;
  if (m_places[pos].count != 1) {
    return false;
  }
  RemoveSlot(oldPlace);
  m_slots[SlotOf(siblings, newName, newHash, 0)] = {HashKey(newHash, 0), pos};
  return true;
}

int CChildIndex::Find(Siblings siblings, std::wstring_view name, int occurrence) const noexcept {
  const std::size_t slot = SlotOf(siblings, name, HashText(name), occurrence);
  const std::uint32_t pos = ChildAt(slot, name, occurrence);
  return pos != kFree ? static_cast<int>(pos) : -1;
}

int CChildIndex::Count(Siblings siblings, std::wstring_view name) const noexcept {
  const std::uint32_t first = ChildAt(SlotOf(siblings, name, HashText(name), 0), name, 0);
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

std::size_t CChildIndex::SlotOf(Siblings siblings, std::wstring_view name, std::uint32_t nameHash,
                                int occurrence) const noexcept {
  const std::uint32_t hash = HashKey(nameHash, occurrence);
  std::size_t place = hash & (m_slots.size() - 1);
  for (std::size_t left = kLongestRun; left > 0; --left, place = Next(place)) {
    const Slot& slot = m_slots[place];
    // Of one name, only the wanted occurrence has this hash.
    if (slot.pos == kFree || (slot.hash == hash && View(siblings[slot.pos]->Mnemonic()) == name)) {
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
