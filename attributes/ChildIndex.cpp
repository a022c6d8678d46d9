// An open-addressing table of hashes and places; the names stay in the children.
#include "attributes/ChildIndex.h"

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
  int occurrence = 0;
  if (m_slots[place].pos != kFree) {
    occurrence = m_places[m_slots[place].pos].count++;
    place = SlotOf(siblings, name, nameHash, occurrence);
  }
  m_slots[place] = {HashKey(nameHash, occurrence), pos};
  m_places.push_back({occurrence, 1});
}

bool CChildIndex::Rename(Siblings siblings, const CAttributeMap& child,
                         std::wstring_view newName) noexcept {
  const std::wstring_view oldName = View(child.Mnemonic());
  const std::size_t oldPlace = SlotOf(siblings, oldName, HashText(oldName), 0);
  const std::uint32_t newHash = HashText(newName);
  const std::uint32_t pos = m_slots[oldPlace].pos;
  if (m_places[pos].count != 1 || m_slots[SlotOf(siblings, newName, newHash, 0)].pos != kFree) {
    return false;
  }
  RemoveSlot(oldPlace);
  m_slots[SlotOf(siblings, newName, newHash, 0)] = {HashKey(newHash, 0), pos};
  return true;
}

int CChildIndex::Find(Siblings siblings, std::wstring_view name, int occurrence) const noexcept {
  const Slot& slot = m_slots[SlotOf(siblings, name, HashText(name), occurrence)];
  return slot.pos != kFree ? static_cast<int>(slot.pos) : -1;
}

int CChildIndex::Count(Siblings siblings, std::wstring_view name) const noexcept {
  const Slot& first = m_slots[SlotOf(siblings, name, HashText(name), 0)];
  return first.pos != kFree ? m_places[first.pos].count : 0;
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
  for (const Slot& moved : smaller) {
    if (moved.pos != kFree) {
      std::size_t place = moved.hash & (m_slots.size() - 1);
      while (m_slots[place].pos != kFree) {
        place = Next(place);
      }
      m_slots[place] = moved;
    }
  }
}

/// What follows without a gap moves up, unless it would come to stand before its home.
void CChildIndex::RemoveSlot(std::size_t place) noexcept {
  const auto distance = [this](std::size_t from, std::size_t to) {
    return (to - from) & (m_slots.size() - 1);
  };
  for (std::size_t next = Next(place); m_slots[next].pos != kFree; next = Next(next)) {
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
  for (;; place = Next(place)) {
    const Slot& slot = m_slots[place];
    // Of one name, only the wanted occurrence has this hash.
    if (slot.pos == kFree || (slot.hash == hash && View(siblings[slot.pos]->Mnemonic()) == name)) {
      return place;
    }
  }
}

}  // namespace lum::detail
