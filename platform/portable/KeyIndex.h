// CKeyIndex: finds objects of a pool by the hashes of their keys. The keys themselves stay in the
// objects; the table holds hashes and places alone, side by side, so that it stays small, is copied
// as it is and a look-up touches little memory.
//
// Whoever writes a file may choose keys whose hashes are equal. So no search goes further than
// kLongestRun places, which keys that are not chosen so never need, and a key that finds no place
// there goes to an ordered map: its look-up takes a logarithmic time, whatever the keys are.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
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
  // The upper half of a product depends on all bits: numbered keys do not crowd.
  return static_cast<CKeyHash>(hash * kFactor >> 32);
}
inline CKeyHash HashKey(const CString& key) { return HashKey(CFileTextOf(key)); }

/// Of every call, `keyText()` gives the key in question as CFileText's OrderedForm does; it is only
/// called when keys crowd.
class CKeyIndex {
  static constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);

 public:
  /// So far from the place that its hash names an object may stand.
  static constexpr std::size_t kLongestRun = 128;

  /// The object of that hash for which `hasKey(object)` holds; kNoIndex when there is none.
  template <typename HasKey, typename KeyText>
  CPoolIndex Find(CKeyHash hash, HasKey hasKey, KeyText keyText) const {
    if (m_slots.empty()) {
      return kNoIndex;
    }
    std::size_t place = Home(hash);
    for (std::size_t left = kLongestRun; left > 0; --left, place = Next(place)) {
      const Slot& slot = m_slots[place];
      if (slot.object == kNoIndex) {
        break;
      }
      if (slot.hash == hash && hasKey(slot.object)) {
        return slot.object;
      }
    }
    return m_crowded.empty() ? kNoIndex : FindCrowded(keyText());
  }

  /// Makes room for so many objects.
  void Reserve(std::size_t count) {
    if (count * 2 > m_slots.size()) {
      Grow(std::bit_ceil(std::max(count * 2, kSmallest)));
    }
  }

  /// Where the object of a key goes.
  class CRoom {
    friend class CKeyIndex;
    std::size_t m_place = kNowhere;
    CPoolIndex* m_crowded = nullptr;
  };

  /// Does what of adding an object needs memory. Until that is done or the next change nothing is
  /// found that was not there before.
  /// Precondition: the key is not there.
  template <typename KeyText>
  CRoom MakeRoom(CKeyHash hash, KeyText keyText) {
    Reserve(m_count + 1);
    CRoom room;
    room.m_place = PlaceOf(hash, kNoIndex);
    if (room.m_place == kNowhere) {
      room.m_crowded = &m_crowded.emplace(keyText(), kNoIndex).first->second;
    }
    return room;
  }

  /// Precondition: nothing was changed since the room was made for a key of that hash.
  void Enter(const CRoom& room, CKeyHash hash, CPoolIndex object) {
    if (room.m_crowded != nullptr) {
      *room.m_crowded = object;
    } else {
      m_slots[room.m_place] = {hash, object};
      ++m_count;
    }
  }

  /// Precondition: the key is not there.
  template <typename KeyText>
  void Add(CKeyHash hash, CPoolIndex object, KeyText keyText) {
    Enter(MakeRoom(hash, keyText), hash, object);
  }

  /// Precondition: `object` is there, under that hash; `successor` has the same key.
  template <typename KeyText>
  void Replace(CKeyHash hash, CPoolIndex object, CPoolIndex successor, KeyText keyText) {
    if (const std::size_t place = PlaceOf(hash, object); place != kNowhere) {
      m_slots[place].object = successor;
    } else {
      m_crowded[keyText()] = successor;
    }
  }

  /// Precondition: `object` is there, under that hash.
  template <typename KeyText>
  void Remove(CKeyHash hash, CPoolIndex object, KeyText keyText) {
    if (const std::size_t place = PlaceOf(hash, object); place != kNowhere) {
      Empty(place);
      --m_count;
    } else {
      m_crowded.erase(keyText());
    }
  }

  /// Gives an object another key. Of the two texts, the new one alone may need memory.
  /// Precondition: `object` is there, under the old hash; the new key is not.
  template <typename OldText, typename NewText>
  void Rename(CKeyHash oldHash, CKeyHash newHash, CPoolIndex object, OldText oldText,
              NewText newText) {
    // Asked first: afterwards the new place could be taken for the old one.
    const bool isCrowded = PlaceOf(oldHash, object) == kNowhere;
    Add(newHash, object, newText);
    if (isCrowded) {
      m_crowded.erase(oldText());
    } else {
      // The old place has no gap before it, so it comes before the new one.
      Empty(PlaceOf(oldHash, object));
      --m_count;
    }
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
  /// The place of an object under a hash, or with kNoIndex the free one where it goes; kNowhere
  /// when it is not in the table, or has no place there.
  std::size_t PlaceOf(CKeyHash hash, CPoolIndex object) const {
    std::size_t place = Home(hash);
    for (std::size_t left = kLongestRun; left > 0; --left, place = Next(place)) {
      if (m_slots[place].object == object) {
        return place;
      }
    }
    return kNowhere;
  }

  CPoolIndex FindCrowded(const std::string& key) const {
    const auto found = m_crowded.find(key);
    return found == m_crowded.end() ? kNoIndex : found->second;
  }

  void Empty(std::size_t hole) {
    // What follows without a gap moves up, unless it would come to stand before its home. What
    // stands further away than a run is long has its home behind the hole.
    for (std::size_t place = Next(hole);
         m_slots[place].object != kNoIndex && Distance(hole, place) <= kLongestRun;
         place = Next(place)) {
      if (Distance(Home(m_slots[place].hash), place) >= Distance(hole, place)) {
        m_slots[hole] = m_slots[place];
        hole = place;
      }
    }
    m_slots[hole] = Slot();
  }

  /// Begins behind a free place: then everything that was entered before an object stood before it,
  /// and none comes to stand further from its home than it did.
  void Grow(std::size_t size) {
    std::vector<Slot> smaller(size);
    smaller.swap(m_slots);
    const auto isFree = [](const Slot& slot) { return slot.object == kNoIndex; };
    const auto start = std::find_if(smaller.begin(), smaller.end(), isFree);
    EnterAll(start, smaller.end());
    EnterAll(smaller.begin(), start);
  }

  template <typename Iterator>
  void EnterAll(Iterator first, Iterator end) {
    for (; first != end; ++first) {
      if (first->object != kNoIndex) {
        m_slots[PlaceOf(first->hash, kNoIndex)] = *first;
      }
    }
  }

  std::vector<Slot> m_slots;  ///< A power of two, at least half of them free.
  std::size_t m_count = 0;    ///< Of the objects in the table.
  std::map<std::string, CPoolIndex> m_crowded;
};

}  // namespace lum::detail
