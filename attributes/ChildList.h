// CChildList: the children of one node. Few are searched one by one, which is faster than hashing
// and needs no memory; many that are searched again and again get an index.
#pragma once

#include <atomic>
#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

#include "attributes/ChildIndex.h"

namespace lum::detail {

/// Up to so many children are never indexed.
inline constexpr std::size_t kScannedChildren = 16;

/// Lists nodes, which it does not own: NodeAccess destroys them. The searches may run in several
/// threads at once while none changes the list.
class CChildList {
 public:
  explicit CChildList(CAttributeMap& parent) noexcept : m_parent(&parent) {}
  CChildList(const CChildList&) = delete;
  CChildList& operator=(const CChildList&) = delete;
  ~CChildList() { DropIndex(); }

  Siblings Nodes() const noexcept { return m_nodes; }
  /// The node whose children these are.
  CAttributeMap& Parent() const noexcept { return *m_parent; }
  void SetParent(CAttributeMap& parent) noexcept { m_parent = &parent; }
  /// The list that the parent stands in, or null.
  CChildList* Above() const noexcept { return m_above; }
  void SetAbove(CChildList* above) noexcept { m_above = above; }

  void Reserve(std::size_t count) { m_nodes.reserve(count); }
  void Append(CAttributeMap& node) {
    m_nodes.push_back(&node);
    if (m_index.load(std::memory_order_relaxed) != nullptr) {
      IndexNewChildren();
    }
  }
  void Insert(std::size_t pos, CAttributeMap& node);
  /// Takes the node at a place out.
  void Remove(std::size_t pos) noexcept;
  /// Takes the last node out of a list that is about to go, which must not be searched any more.
  CAttributeMap* TakeLast() noexcept {
    CAttributeMap* last = m_nodes.back();
    m_nodes.pop_back();
    return last;
  }
  /// Takes out the nodes that `isRemoved` says, in their order.
  template <typename IsRemoved>
  void RemoveIf(IsRemoved isRemoved) {
    DropIndex();
    std::erase_if(m_nodes, isRemoved);
  }
  /// To be called before the node in this list takes another name.
  void NoteRename(const CAttributeMap& node, std::wstring_view newName) noexcept;

  /// The place of the child with that name and occurrence, or -1.
  int Find(std::wstring_view name, int occurrence) const noexcept;
  /// How many children have that name.
  int Count(std::wstring_view name) const noexcept;
  /// The occurrence of the child at a place. Precondition: the place exists.
  int OccurrenceAt(std::size_t pos) const noexcept;

 private:
  /// An index is built when searches have passed so many children for each one that there is, which
  /// takes about as long as building it: no order of searches and changes takes more than twice the
  /// time that it would take without indexes.
  static constexpr std::size_t kScansBeforeIndex = 8;

  const CChildIndex* Index() const noexcept;
  const CChildIndex* BuildIndex() const noexcept;
  void IndexNewChildren() noexcept;
  void DropIndex() noexcept;
  void NoteScanned(std::size_t children) const noexcept;
  int CountBefore(std::size_t end, std::wstring_view name) const noexcept;

  std::vector<CAttributeMap*> m_nodes;
  CAttributeMap* m_parent;
  CChildList* m_above = nullptr;
  /// Owned. A search that finds none may build it; changes of the list are never concurrent.
  mutable std::atomic<CChildIndex*> m_index = nullptr;
  mutable std::atomic<std::size_t> m_scanned = 0;
};

}  // namespace lum::detail
