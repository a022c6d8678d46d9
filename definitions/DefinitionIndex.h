// Library-internal: finds the records of a definition table by their mnemonics and identifiers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
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
class CMnemonicIndex {
 public:
  /// The place of the record of that mnemonic that was entered last.
  int Find(const DefinitionRecords& records, std::wstring_view mnemonic) const {
    return m_slots.empty() ? kNoRecord
                           : m_slots[SlotOf(records, mnemonic, HashText(mnemonic))].place;
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
    Slot& slot = m_slots[SlotOf(records, mnemonic, hash)];
    m_count += slot.place == kNoRecord ? 1 : 0;
    slot = {hash, static_cast<int>(records.size()) - 1};
  }

 private:
  /// An entry stands at its home, the slot that its hash names, or after it without a gap.
  struct Slot {
    std::uint32_t hash = 0;
    int place = kNoRecord;
  };

  static constexpr std::size_t kSmallest = 16;

  std::size_t Home(std::uint32_t hash) const { return hash & (m_slots.size() - 1); }
  std::size_t Next(std::size_t slot) const { return (slot + 1) & (m_slots.size() - 1); }

  /// The slot of the mnemonic's entry, or the free one where it belongs.
  std::size_t SlotOf(const DefinitionRecords& records, std::wstring_view mnemonic,
                     std::uint32_t hash) const {
    for (std::size_t place = Home(hash);; place = Next(place)) {
      const Slot& slot = m_slots[place];
      if (slot.place == kNoRecord ||
          (slot.hash == hash &&
           View(records[static_cast<std::size_t>(slot.place)]->Mnemonic()) == mnemonic)) {
        return place;
      }
    }
  }

  void Grow() {
    std::vector<Slot> smaller(m_slots.empty() ? kSmallest : m_slots.size() * 2);
    smaller.swap(m_slots);
    for (const Slot& entry : smaller) {
      if (entry.place != kNoRecord) {
        std::size_t place = Home(entry.hash);
        while (m_slots[place].place != kNoRecord) {
          place = Next(place);
        }
        m_slots[place] = entry;
      }
    }
  }

  std::vector<Slot> m_slots;  ///< A power of two, at least half of them free.
  std::size_t m_count = 0;
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
