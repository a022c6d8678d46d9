// The look-up of many siblings by name and occurrence.
//
// Whoever writes a file may choose names whose hashes are equal. So no search goes further than
// kLongestRun places, which names that are not chosen so never need, and a child that finds no
// place there goes to an ordered map: its look-up takes a logarithmic time, whatever the names are.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "attributes/AttributeMap.h"
#include "values/TextView.h"

namespace lum::detail {

/// The children of one node, in their order.
using Siblings = std::span<CAttributeMap* const>;

/// Finds siblings in constant time. Which ones they are is told to each call, and is the list that
/// was indexed. When children are removed, inserted or put elsewhere, the index is of no use any
/// more.
class CChildIndex {
 public:
  /// So far from the place that its hash names a child's entry may stand.
  static constexpr std::size_t kLongestRun = 1024;

  /// Indexes the children that were appended since the last call.
  void IndexNewChildren(Siblings siblings);
  /// Takes over a name that is about to become another one. False when other children share either
  /// name, or names crowd: the index is of no use any more then.
  bool Rename(Siblings siblings, const CAttributeMap& child, std::wstring_view newName) noexcept;

  /// The place of the child with that name and occurrence, or -1.
  int Find(Siblings siblings, std::wstring_view name, int occurrence) const noexcept;
  /// How many children have that name.
  int Count(Siblings siblings, std::wstring_view name) const noexcept;
  /// The occurrence of the child at a place.
  int OccurrenceAt(std::size_t pos) const noexcept { return m_places[pos].occurrence; }

 private:
  /// An entry of the open-addressing table, whose key is a name and an occurrence. It stands at its
  /// home, the place that its hash names, or after it without a gap.
  struct Slot {
    std::uint32_t hash = 0;
    std::uint32_t pos = kFree;
  };
  struct Place {
    int occurrence;
    int count;  ///< Of occurrence 0: how many children have its name.
  };

  static constexpr std::uint32_t kFree = 0xFFFFFFFF;
  static constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);

  void IndexChild(Siblings siblings, std::uint32_t pos);
  void MakeRoom(std::size_t children);
  void RemoveSlot(std::size_t place) noexcept;
  void Enter(std::vector<Slot>::const_iterator first, std::vector<Slot>::const_iterator end);
  /// The child of that name and occurrence, or kFree.
  std::uint32_t ChildOf(Siblings siblings, std::wstring_view name, std::uint32_t nameHash,
                        int occurrence) const noexcept;
  /// The place of a child's slot, or with kFree of the free one where an entry goes; kNowhere when
  /// there is none.
  std::size_t PlaceOf(std::uint32_t hash, std::uint32_t pos) const noexcept;
  std::uint32_t FindCrowded(std::wstring_view name, int occurrence) const noexcept;
  std::size_t Next(std::size_t place) const noexcept { return (place + 1) & (m_slots.size() - 1); }

  std::vector<Place> m_places;  ///< Of the children that are indexed.
  std::vector<Slot> m_slots;    ///< A power of two, at least a fifth of them free.
  /// By name first: looked up without a string being made.
  std::map<std::wstring, std::map<int, std::uint32_t>, std::less<>> m_crowded;
};

}  // namespace lum::detail
