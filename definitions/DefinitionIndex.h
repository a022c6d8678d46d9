// Library-internal: finds the records of a definition table by their mnemonics and identifiers.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "definitions/AttribDefMap.h"
#include "values/TextView.h"

namespace lum::detail {

using DefinitionRecords = std::vector<std::shared_ptr<CAttribDefRec>>;

inline constexpr int kNoRecord = -1;

/// The mnemonics stay in the records; the index holds hashes and places alone, side by side, so
/// that a load allocates next to nothing for it and a look-up touches little memory. `records` are
/// always those that were entered.
///
/// Whoever writes a file may choose mnemonics whose hashes are equal. So no search goes further
/// than kLongestRun slots, which mnemonics that are not chosen so never need, and one that finds no
/// slot there goes to an ordered map: its look-up takes a logarithmic time, whatever the mnemonics
/// are.
class CMnemonicIndex {
 public:
  /// So far from the slot that its hash names an entry may stand.
  static constexpr std::size_t kLongestRun = 128;

  /// The place of the record of that mnemonic that was entered last.
  int Find(const DefinitionRecords& records, std::wstring_view mnemonic) const {
    if (m_slots.empty()) {
      return kNoRecord;
    }
    const std::size_t slot = SlotOf(records, mnemonic, HashText(mnemonic));
    const int place = slot == kNowhere ? kNoRecord : m_slots[slot].place;
    return place != kNoRecord || m_crowded.empty() ? place : FindCrowded(mnemonic);
  }

  /// Makes the next EnterLast one that needs no memory.
  void MakeRoom() {
    if ((m_count + 1) * 2 > m_slots.size()) {
      Grow();
    }
  }
  /// Enters the last of the records, in place of an earlier one of its mnemonic. Precondition:
  /// there is room.
  void EnterLast(const DefinitionRecords& records) {
    const std::wstring_view mnemonic = View(records.back()->Mnemonic());
    const std::uint32_t hash = HashText(mnemonic);
    const int last = static_cast<int>(records.size()) - 1;
    const std::size_t place = SlotOf(records, mnemonic, hash);
    if (place == kNowhere || (!m_crowded.empty() && m_crowded.contains(mnemonic))) {
      m_crowded.insert_or_assign(std::wstring(mnemonic), last);
      return;
    }
    Slot& slot = m_slots[place];
    m_count += slot.place == kNoRecord ? 1 : 0;
    slot = {hash, last};
  }

 private:
  /// An entry stands at its home, the slot that its hash names, or after it without a gap.
  struct Slot {
    std::uint32_t hash = 0;
    int place = kNoRecord;
  };

  static constexpr std::size_t kSmallest = 16;
  static constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);

  std::size_t Home(std::uint32_t hash) const { return hash & (m_slots.size() - 1); }
  std::size_t Next(std::size_t slot) const { return (slot + 1) & (m_slots.size() - 1); }

  /// The slot of the mnemonic's entry, or the free one where it belongs; kNowhere when it has
  /// neither.
  std::size_t SlotOf(const DefinitionRecords& records, std::wstring_view mnemonic,
                     std::uint32_t hash) const {
    std::size_t place = Home(hash);
    for (std::size_t left = kLongestRun; left > 0; --left, place = Next(place)) {
      const Slot& slot = m_slots[place];
      if (slot.place == kNoRecord ||
          (slot.hash == hash &&
           View(records[static_cast<std::size_t>(slot.place)]->Mnemonic()) == mnemonic)) {
        return place;
      }
    }
    return kNowhere;
  }

  int FindCrowded(std::wstring_view mnemonic) const {
    const auto found = m_crowded.find(mnemonic);
    return found == m_crowded.end() ? kNoRecord : found->second;
  }

  void Grow() {
    std::vector<Slot> smaller(m_slots.empty() ? kSmallest : m_slots.size() * 2);
    smaller.swap(m_slots);
    // Behind a free slot everything that was entered before an entry stood before it: none comes to
    // stand further from its home than it did.
    const auto start = std::find_if(smaller.begin(), smaller.end(),
                                    [](const Slot& slot) { return slot.place == kNoRecord; });
    Enter(start, smaller.end());
    Enter(smaller.begin(), start);
  }

  template <typename Iterator>
  void Enter(Iterator first, Iterator end) {
    for (; first != end; ++first) {
      if (first->place == kNoRecord) {
        continue;
      }
      std::size_t place = Home(first->hash);
      while (m_slots[place].place != kNoRecord) {
        place = Next(place);
      }
      m_slots[place] = *first;
    }
  }

  std::vector<Slot> m_slots;  ///< A power of two, at least half of them free.
  std::size_t m_count = 0;    ///< Of the entries that have a slot.
  std::map<std::wstring, int, std::less<>> m_crowded;
};

/// A place for each identifier up to the largest one there is: they have 16 bits.
class CIdentifierIndex {
 public:
  int Find(unsigned short id) const { return id < m_places.size() ? m_places[id] : kNoRecord; }

  /// Makes room for an identifier.
  void MakeRoom(unsigned short id) {
    if (id >= m_places.size()) {
      m_places.resize(std::size_t{id} + 1, kNoRecord);
    }
  }
  /// Enters the last of the records, in place of an earlier one of its identifier. Precondition:
  /// there is room for it.
  void EnterLast(const DefinitionRecords& records) {
    m_places[records.back()->Id()] = static_cast<int>(records.size()) - 1;
  }

 private:
  std::vector<int> m_places;
};

}  // namespace lum::detail

struct CAttribDefMap::Index {
  lum::detail::CMnemonicIndex mnemonics;
  lum::detail::CIdentifierIndex identifiers;
};
