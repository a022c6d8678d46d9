// The tree node's life: construction, deep copies, moves, destruction. None of it recurses, so a
// tree may be as deep as memory allows.
#include "attributes/AttributeMap.h"

#include <memory>
#include <utility>

#include "attributes/NodeAccess.h"

using lum::detail::NodeAccess;

namespace {

/// A node whose children are being copied, and how far the copy has come.
struct CCopyFrame {
  const CAttributeMap* from;
  CAttributeMap* to;
  std::size_t next;
};

/// Appends deep copies of the children of `from`, in order, a node before what is below it.
void CopyChildren(const CAttributeMap& from, CAttributeMap& to) {
  std::vector<CCopyFrame> frames;
  const auto enter = [&frames](const CAttributeMap& source, CAttributeMap& target) {
    const std::size_t count = NodeAccess::Children(source).size();
    if (count != 0) {
      NodeAccess::Children(target).reserve(count);
      frames.push_back({&source, &target, 0});
    }
  };
  enter(from, to);
  while (!frames.empty()) {
    CCopyFrame& frame = frames.back();
    const NodeAccess::Nodes& children = NodeAccess::Children(*frame.from);
    if (frame.next == children.size()) {
      frames.pop_back();
      continue;
    }
    const CAttributeMap& child = *children[frame.next++];
    enter(child, NodeAccess::AppendCopyOfNode(*frame.to, child));
  }
}

/// Deletes a node and everything below it: children from the last to the first, a node after what
/// is below it. Needs no memory: while a child is being deleted, its place in the parent's list
/// holds the way back, the parent's own parent.
void DeleteSubtree(CAttributeMap* node) noexcept {
  CAttributeMap* parent = nullptr;
  while (node != nullptr) {
    NodeAccess::Nodes& children = NodeAccess::Children(*node);
    if (!children.empty()) {
      CAttributeMap* child = std::exchange(children.back(), parent);
      parent = std::exchange(node, child);
      continue;
    }
    delete node;
    node = parent;
    if (node != nullptr) {
      parent = NodeAccess::Children(*node).back();
      NodeAccess::Children(*node).pop_back();
    }
  }
}

void DeleteAll(NodeAccess::Nodes& nodes) noexcept {
  while (!nodes.empty()) {
    CAttributeMap* last = nodes.back();
    nodes.pop_back();
    DeleteSubtree(last);
  }
}

}  // namespace

CAttributeMap::CAttributeMap() : CAttributeMap(CString()) {}

CAttributeMap::CAttributeMap(const CString& name) : CAttributeRec(name, CLumUndefined(), 0) {}

CAttributeMap::CAttributeMap(const CString& name, const CLumType& value, unsigned int flags)
    : CAttributeRec(name, value, flags) {}

CAttributeMap::CAttributeMap(const CString& name, CLumType* value, unsigned int flags)
    : CAttributeRec(name, value, flags) {}

CAttributeMap::CAttributeMap(const CAttributeMap& other)
    : CAttributeRec(other), m_lastSelected(other.m_lastSelected) {
  try {
    CopyChildren(other, *this);
  } catch (...) {
    DeleteAll(m_children);
    throw;
  }
}

CAttributeMap::CAttributeMap(CAttributeMap&& other) noexcept
    : CAttributeRec(std::move(other)),
      m_children(std::exchange(other.m_children, {})),
      m_lastSelected(other.m_lastSelected) {}

CAttributeMap& CAttributeMap::operator=(const CAttributeMap& other) {
  if (this != &other) {
    // The copy is complete before anything here goes: `other` may be one of this node's own
    // descendants, and a copy that runs out of memory leaves this node as it was.
    *this = CAttributeMap(other);
  }
  return *this;
}

CAttributeMap& CAttributeMap::operator=(CAttributeMap&& other) noexcept {
  if (this != &other) {
    // What `other` gives away is taken before anything here goes, for the same reason.
    NodeAccess::Nodes replaced =
        std::exchange(m_children, std::exchange(other.m_children, NodeAccess::Nodes()));
    m_lastSelected = other.m_lastSelected;
    CAttributeRec::operator=(std::move(other));
    DeleteAll(replaced);
  }
  return *this;
}

CAttributeMap::~CAttributeMap() { DeleteAll(m_children); }

void CAttributeMap::RemoveAll() { DeleteAll(m_children); }
