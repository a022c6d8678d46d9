// CKeyIndex: finds objects of a pool by the hashes of their keys. The keys themselves stay in the
// objects; the table holds hashes and places alone, side by side, so that it stays small, is copied
// as it is and a look-up touches little memory.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/FrameworkString.h"
#include "platform/portable/AsciiText.h"
#include "platform/portable/FileText.h"
#include "platform/portable/IndexPool.h"

namespace lum::detail {

using CKeyHash = std::uint32_t;

/// Mixes all bytes in, so that keys that differ in their last digits alone stand far apart.
inline CKeyHash HashKey(const CFileText& key) {
  constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15;
  const std::string_view bytes = key.bytes;
  std::uint64_t hash = bytes.size();
  const auto mix = [&](std::uint64_t word) {
    hash = (hash ^ word) * kFactor;
    hash ^= hash >> 32;
  };
  if (bytes.size() < 8) {
    mix(ReadWord(bytes.data(), bytes.size()));
  } else {
    ForEachEight(bytes.size(), [&](std::size_t place) { mix(ReadWord(bytes.data() + place, 8)); });
  }
  return static_cast<CKeyHash>(hash);
}
inline CKeyHash HashKey(const CString& key) { return HashKey(CFileTextOf(key)); }

class CKeyIndex {
 public:
  /// The object of that hash for which `hasKey(object)` holds; kNoIndex when there is none.
  template <typename HasKey>
  CPoolIndex Find(CKeyHash hash, HasKey hasKey) const {
    if (m_slots.empty()) {
      return kNoIndex;
    }
    for (std::size_t place = Home(hash);; place = Next(place)) {
      const Slot& slot = m_slots[place];
      if (slot.object == kNoIndex || (slot.hash == hash && hasKey(slot.object))) {
        return slot.object;
      }
    }
  }

  /// Makes room for so many objects.
  void Reserve(std::size_t count) {
    if (count * 2 > m_slots.size()) {
      Grow(std::bit_ceil(std::max(count * 2, kSmallest)));
    }
  }

  /// Makes the next Add one that needs no memory.
  void MakeRoom() { Reserve(m_count + 1); }

  /// Precondition: the key is not there.
  void Add(CKeyHash hash, CPoolIndex object) {
    MakeRoom();
    m_slots[PlaceOf(hash, kNoIndex)] = {hash, object};
    ++m_count;
  }

  /// Precondition: `object` is there, under that hash; `successor` has the same key.
  void Replace(CKeyHash hash, CPoolIndex object, CPoolIndex successor) {
    m_slots[PlaceOf(hash, object)].object = successor;
  }

  /// Precondition: `object` is there, under that hash.
  void Remove(CKeyHash hash, CPoolIndex object) {
    std::size_t hole = PlaceOf(hash, object);
    // What follows without a gap moves up, unless it would come to stand before its home.
    for (std::size_t place = Next(hole); m_slots[place].object != kNoIndex; place = Next(place)) {
      if (Distance(Home(m_slots[place].hash), place) >= Distance(hole, place)) {
        m_slots[hole] = m_slots[place];
        hole = place;
      }
    }
    m_slots[hole] = Slot();
    --m_count;
  }

 private:
  /// An object stands at its home, the place that its hash names, or after it without a gap.
  struct Slot {
    CKeyHash hash = 0;
    CPoolIndex object = kNoIndex;
  };

  static constexpr std::size_t kSmallest = 8;

  std::size_t Home(CKeyHash hash) const { return hash & (m_slots.size() - 1); }
  std::size_t Next(std::size_t place) const { return (place + 1) & (m_slots.size() - 1); }
  std::size_t Distance(std::size_t from, std::size_t to) const {
    return (to - from) & (m_slots.size() - 1);
  }
  std::size_t PlaceOf(CKeyHash hash, CPoolIndex object) const {
    std::size_t place = Home(hash);
    while (m_slots[place].object != object) {
      place = Next(place);
    }
    return place;
  }
  void Grow(std::size_t size) {
    std::vector<Slot> smaller(size);
    smaller.swap(m_slots);
    for (const Slot& moved : smaller) {
      if (moved.object != kNoIndex) {
        m_slots[PlaceOf(moved.hash, kNoIndex)] = moved;
      }
    }
  }

  std::vector<Slot> m_slots;  ///< A power of two, at least half of them free.
  std::size_t m_count = 0;
};

}  // namespace lum::detail
