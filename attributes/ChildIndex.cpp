// An open-addressing table of hashes and places; the names stay in the children.
#include "attributes/ChildIndex.h"

#include <bit>
#include <cstring>

namespace lum::detail {
namespace {

/// Mixes the bytes of the characters in, eight at a time.
std::uint64_t HashBytes(std::wstring_view text) noexcept {
  constexpr std::uint64_t kSpread = 0x9E3779B97F4A7C15;
  constexpr std::size_t kStep = sizeof(std::uint64_t) / sizeof(wchar_t);
  std::uint64_t hash = text.size();
  for (; text.size() >= kStep; text.remove_prefix(kStep)) {
    std::uint64_t bytes = 0;
    std::memcpy(&bytes, text.data(), sizeof bytes);
    hash = (hash ^ bytes) * kSpread;
    hash ^= hash >> 32;
  }
  for (const wchar_t ch : text) {
    hash = (hash ^ static_cast<std::uint64_t>(ch)) * kSpread;
    hash ^= hash >> 32;
  }
  return hash;
}

/// Names are often numbered and used in their order. Those that differ in the last character but
/// one alone get neighbouring hashes, up to sixteen, so that a pass over many finds several in each
/// piece of memory that it touches.
std::uint32_t HashName(std::wstring_view name) noexcept {
  constexpr std::uint32_t kNeighbours = 16;
  constexpr std::uint32_t kSpread = 0x9E3779B1;
  if (name.size() < 2) {
    return static_cast<std::uint32_t>(HashBytes(name));
  }
  const auto front = static_cast<std::uint32_t>(HashBytes(name.substr(0, name.size() - 2)));
  const auto lastButOne = static_cast<std::uint32_t>(name[name.size() - 2]);
  const auto last = static_cast<std::uint32_t>(name.back());
  return front + ((last << 17) ^ (lastButOne / kNeighbours)) * kSpread + lastButOne % kNeighbours;
}

/// Occurrences of one name are spread over the table like different names.
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
  const std::uint32_t nameHash = HashName(name);
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
  const std::size_t oldPlace = SlotOf(siblings, oldName, HashName(oldName), 0);
  const std::uint32_t newHash = HashName(newName);
  const std::uint32_t pos = m_slots[oldPlace].pos;
  if (m_places[pos].count != 1 ||
      m_slots[SlotOf(siblings, newName, newHash, 0)].pos != kFree) {
    return false;
  }
  RemoveSlot(oldPlace);
  m_slots[SlotOf(siblings, newName, newHash, 0)] = {HashKey(newHash, 0), pos};
  return true;
}

int CChildIndex::Find(Siblings siblings, std::wstring_view name, int occurrence) const noexcept {
  const Slot& slot = m_slots[SlotOf(siblings, name, HashName(name), occurrence)];
  return slot.pos != kFree ? static_cast<int>(slot.pos) : -1;
}

int CChildIndex::Count(Siblings siblings, std::wstring_view name) const noexcept {
  const Slot& first = m_slots[SlotOf(siblings, name, HashName(name), 0)];
  return first.pos != kFree ? m_places[first.pos].count : 0;
}

void CChildIndex::MakeRoom(std::size_t children) {
  if (m_places.empty()) {
    m_places.reserve(children);
  }
  if (children * 2 <= m_slots.size()) {
    return;
  }
  std::vector<Slot> smaller(std::bit_ceil(children * 2));
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
    if (slot.pos == kFree || (slot.hash == hash && m_places[slot.pos].occurrence == occurrence &&
                              View(siblings[slot.pos]->Mnemonic()) == name)) {
      return place;
    }
  }
}

}  // namespace lum::detail
