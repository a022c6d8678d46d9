// The look-up of children by name and occurrence, and the walks over children.
#include "attributes/ChildIndex.h"

#include <algorithm>
#include <bit>

namespace lum::detail {
namespace {

/// Names are often numbered and used in their order. Those that differ in the last character but
/// one alone get neighbouring hashes, up to sixteen, so that a pass over many finds several in each
/// piece of memory that it touches.
std::uint32_t HashName(std::wstring_view name) {
  constexpr std::uint32_t kNeighbours = 16;
  constexpr std::uint32_t kSpread = 0x9E3779B1;
  if (name.size() < 2) {
    return static_cast<std::uint32_t>(std::hash<std::wstring_view>()(name));
  }
  const auto front =
      static_cast<std::uint32_t>(std::hash<std::wstring_view>()(name.substr(0, name.size() - 2)));
  const auto lastButOne = static_cast<std::uint32_t>(name[name.size() - 2]);
  const auto last = static_cast<std::uint32_t>(name.back());
  return front + ((last << 17) ^ (lastButOne / kNeighbours)) * kSpread + lastButOne % kNeighbours;
}

/// Occurrences of one name are spread over the table like different names.
std::uint32_t HashKey(std::uint32_t nameHash, int occurrence) {
  constexpr std::uint32_t kSpread = 0x85EBCA6B;
  return nameHash + static_cast<std::uint32_t>(occurrence) * kSpread;
}

}  // namespace

// ---- CChildIndex

CAttributeMap* CChildIndex::Find(std::wstring_view name, int occurrence) {
  if (occurrence < 0) {
    return nullptr;
  }
  if (IsScanned()) {
    for (CAttributeMap* child : *m_children) {
      if (View(child->Mnemonic()) == name && occurrence-- == 0) {
        return child;
      }
    }
    return nullptr;
  }
  IndexNewChildren();
  const Slot& slot = SlotOf(name, HashName(name), occurrence);
  return slot.pos != kFree ? (*m_children)[slot.pos] : nullptr;
}

int CChildIndex::Count(std::wstring_view name) {
  if (IsScanned()) {
    return CountBefore(m_children->size(), name);
  }
  IndexNewChildren();
  const Slot& first = SlotOf(name, HashName(name), 0);
  return first.pos != kFree ? m_places[first.pos].count : 0;
}

int CChildIndex::OccurrenceAt(std::size_t pos) {
  if (IsScanned()) {
    return CountBefore(pos, NameAt(pos));
  }
  IndexNewChildren();
  return m_places[pos].occurrence;
}

int CChildIndex::CountBefore(std::size_t end, std::wstring_view name) const {
  int count = 0;
  for (std::size_t pos = 0; pos < end; ++pos) {
    count += NameAt(pos) == name ? 1 : 0;
  }
  return count;
}

void CChildIndex::IndexNewChildren() {
  const std::size_t count = m_children->size();
  if (m_places.size() == count) {
    return;
  }
  MakeRoom(count);
  while (m_places.size() < count) {
    IndexChild(static_cast<std::uint32_t>(m_places.size()));
  }
}

void CChildIndex::IndexChild(std::uint32_t pos) {
  const std::wstring_view name = NameAt(pos);
  const std::uint32_t nameHash = HashName(name);
  Slot* slot = &SlotOf(name, nameHash, 0);
  int occurrence = 0;
  if (slot->pos != kFree) {
    occurrence = m_places[slot->pos].count++;
    slot = &SlotOf(name, nameHash, occurrence);
  }
  *slot = {HashKey(nameHash, occurrence), pos};
  m_places.push_back({occurrence, 1});
}

void CChildIndex::MakeRoom(std::size_t children) {
  if (children * 2 <= m_slots.size()) {
    return;
  }
  if (m_places.empty()) {
    m_places.reserve(children);
  }
  std::vector<Slot> smaller(std::bit_ceil(children * 2));
  smaller.swap(m_slots);
  const std::size_t mask = m_slots.size() - 1;
  for (const Slot& moved : smaller) {
    if (moved.pos != kFree) {
      std::size_t place = moved.hash & mask;
      while (m_slots[place].pos != kFree) {
        place = (place + 1) & mask;
      }
      m_slots[place] = moved;
    }
  }
}

/// The slot that holds the key, or the free one where it goes.
CChildIndex::Slot& CChildIndex::SlotOf(std::wstring_view name, std::uint32_t nameHash,
                                       int occurrence) {
  const std::uint32_t hash = HashKey(nameHash, occurrence);
  const std::size_t mask = m_slots.size() - 1;
  for (std::size_t place = hash & mask;; place = (place + 1) & mask) {
    Slot& slot = m_slots[place];
    if (slot.pos == kFree || (slot.hash == hash && m_places[slot.pos].occurrence == occurrence &&
                              NameAt(slot.pos) == name)) {
      return slot;
    }
  }
}

// ---- Creating children

CAttributeMap& CreateChild(CAttributeMap& parent, CChildIndex& index, std::wstring_view name,
                           int occurrence) {
  const CString childName = ToCString(name);
  // Without the wanted one, the first of a name tells that there is none at all.
  for (int missing = occurrence == 0 ? 0 : occurrence - index.Count(name); missing > 0; --missing) {
    NodeAccess::Append(parent, childName);
  }
  return NodeAccess::Append(parent, childName);
}

CAttributeMap& FindCreateChild(CAttributeMap& parent, CChildIndex& index, std::wstring_view name,
                               int occurrence) {
  CAttributeMap* child = index.Find(name, occurrence);
  return child != nullptr ? *child : CreateChild(parent, index, name, occurrence);
}

// ---- CPairWalk

const CAttributeMap* CPairWalk::Next() {
  m_child = m_walk.Next();
  if (m_inStep && m_child != nullptr) {
    const std::size_t pos = m_walk.Pos();
    m_inStep = pos < m_others->size() && (*m_others)[pos]->Mnemonic() == m_child->Mnemonic();
  }
  return m_child;
}

CAttributeMap* CPairWalk::Partner() {
  return m_inStep ? (*m_others)[m_walk.Pos()]
                  : m_otherIndex.Find(View(m_child->Mnemonic()), Occurrence());
}

}  // namespace lum::detail
