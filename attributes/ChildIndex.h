// Look-up of one node's children by name and occurrence, and walks over children that know each
// one's occurrence or partner, for algorithms that touch many children of one parent. Few children
// are scanned; many are indexed, so that a whole pass over them takes time in proportion to their
// number.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "attributes/NodeAccess.h"
#include "values/TextView.h"

namespace lum::detail {

/// Up to so many children are scanned, which is faster than hashing and needs no memory.
inline constexpr std::size_t kScannedChildren = 8;

/// Finds the children of one node. The node may get further children at its end while the index
/// exists, but none may be removed or renamed.
class CChildIndex {
 public:
  explicit CChildIndex(const CAttributeMap& parent) : m_children(&NodeAccess::Children(parent)) {}

  /// The child of that name and occurrence, or null.
  CAttributeMap* Find(std::wstring_view name, int occurrence);
  /// How many children have that name.
  int Count(std::wstring_view name);
  /// The occurrence of the child at a place. Precondition: the place exists.
  int OccurrenceAt(std::size_t pos);

 private:
  /// An entry of the open-addressing table, whose key is a name and an occurrence.
  struct Slot {
    std::uint32_t hash = 0;
    std::uint32_t pos = kFree;
  };
  struct Place {
    int occurrence;
    int count;  ///< Of occurrence 0: how many children have its name.
  };

  static constexpr std::uint32_t kFree = 0xFFFFFFFF;

  bool IsScanned() const noexcept { return m_children->size() <= kScannedChildren; }
  std::wstring_view NameAt(std::size_t pos) const { return View((*m_children)[pos]->Mnemonic()); }
  int CountBefore(std::size_t end, std::wstring_view name) const;
  void IndexNewChildren();
  void IndexChild(std::uint32_t pos);
  void MakeRoom(std::size_t children);
  Slot& SlotOf(std::wstring_view name, std::uint32_t nameHash, int occurrence);

  const NodeAccess::Nodes* m_children;
  std::vector<Place> m_places;  ///< Of the children that are indexed.
  std::vector<Slot> m_slots;    ///< A power of two, at least half of them free.
};

/// Appends children with an undefined value to `parent` until there is one of that name and
/// occurrence, and returns it. Precondition: there is none, and `occurrence` is not negative.
CAttributeMap& CreateChild(CAttributeMap& parent, CChildIndex& index, std::wstring_view name,
                           int occurrence);
/// The child of `parent` with that name and occurrence; created when it is not there.
CAttributeMap& FindCreateChild(CAttributeMap& parent, CChildIndex& index, std::wstring_view name,
                               int occurrence);

/// Walks the children of one node in order. The children may not change meanwhile.
class CSiblingWalk {
 public:
  explicit CSiblingWalk(const CAttributeMap& parent)
      : m_children(&NodeAccess::Children(parent)), m_index(parent) {}

  /// The next child, or null after the last.
  const CAttributeMap* Next() {
    return m_next == m_children->size() ? nullptr : (*m_children)[m_next++];
  }
  /// The occurrence of the child that Next gave last.
  int Occurrence() { return m_index.OccurrenceAt(Pos()); }
  std::size_t Pos() const noexcept { return m_next - 1; }

 private:
  const NodeAccess::Nodes* m_children;
  std::size_t m_next = 0;
  CChildIndex m_index;
};

/// Walks the children of one node beside those of another, which may get further children at its
/// end meanwhile. While both have the same names in the same order, which is the usual case, the
/// partners stand at the same place and nothing has to be looked up.
class CPairWalk {
 public:
  CPairWalk(const CAttributeMap& walked, const CAttributeMap& other)
      : m_walk(walked), m_others(&NodeAccess::Children(other)), m_otherIndex(other) {}

  /// The next child, or null after the last.
  const CAttributeMap* Next();
  /// The occurrence of the child that Next gave last.
  int Occurrence() { return m_walk.Occurrence(); }
  /// The child of the other node with that child's name and occurrence, or null.
  CAttributeMap* Partner();

 private:
  CSiblingWalk m_walk;
  const CAttributeMap* m_child = nullptr;
  const NodeAccess::Nodes* m_others;
  CChildIndex m_otherIndex;
  bool m_inStep = true;
};

}  // namespace lum::detail
