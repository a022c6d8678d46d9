// Walks over children that know each one's occurrence or partner.
#pragma once

#include "attributes/NodeAccess.h"

namespace lum::detail {

/// Walks the children of one node in order. They may not change meanwhile.
class CSiblingWalk {
 public:
  explicit CSiblingWalk(const CAttributeMap& parent)
      : m_list(NodeAccess::ListBelow(parent)), m_children(NodeAccess::Children(parent)) {}

  /// The next child, or null after the last.
  const CAttributeMap* Next() {
    return m_next == m_children.size() ? nullptr : m_children[m_next++];
  }
  /// The occurrence of the child that Next gave last.
  int Occurrence() const { return m_list->OccurrenceAt(Pos()); }
  std::size_t Pos() const noexcept { return m_next - 1; }

 private:
  const CChildList* m_list;
  Siblings m_children;
  std::size_t m_next = 0;
};

/// Walks the children of one node beside those of another, which may get further children at its
/// end meanwhile. While both have the same names in the same order, which is the usual case, the
/// partners stand at the same place and nothing has to be looked up.
class CPairWalk {
 public:
  CPairWalk(const CAttributeMap& walked, const CAttributeMap& other)
      : m_walk(walked), m_other(&other) {}

  /// The next child, or null after the last.
  const CAttributeMap* Next() {
    m_child = m_walk.Next();
    if (m_inStep && m_child != nullptr) {
      m_inStep = StandsBeside();
    }
    return m_child;
  }
  /// The occurrence of the child that Next gave last.
  int Occurrence() const { return m_walk.Occurrence(); }
  /// The child of the other node with that child's name and occurrence, or null.
  CAttributeMap* Partner() const {
    return m_inStep ? NodeAccess::Children(*m_other)[m_walk.Pos()]
                    : NodeAccess::FindChild(*m_other, View(m_child->Mnemonic()), Occurrence());
  }
  /// Whether that child and all before it have the same places on both sides.
  bool IsInStep() const noexcept { return m_inStep; }

 private:
  bool StandsBeside() const {
    const Siblings others = NodeAccess::Children(*m_other);
    return m_walk.Pos() < others.size() && others[m_walk.Pos()]->Mnemonic() == m_child->Mnemonic();
  }

  CSiblingWalk m_walk;
  const CAttributeMap* m_child = nullptr;
  const CAttributeMap* m_other;
  bool m_inStep = true;
};

}  // namespace lum::detail
