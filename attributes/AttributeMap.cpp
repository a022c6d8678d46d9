// The tree node's life: construction, deep copies, moves, destruction.
#include "attributes/AttributeMap.h"

#include <utility>

#include "attributes/NodeAccess.h"

using lum::detail::NodeAccess;

CAttributeMap::CAttributeMap() : CAttributeMap(CString()) {}

CAttributeMap::CAttributeMap(const CString& name) : CAttributeRec(name, CLumUndefined(), 0) {}

CAttributeMap::CAttributeMap(const CString& name, const CLumType& value, unsigned int flags)
    : CAttributeRec(name, value, flags) {}

CAttributeMap::CAttributeMap(const CAttributeMap& other) : CAttributeRec(other) {
  m_lastSelected = other.m_lastSelected;
  try {
    NodeAccess::CopyChildren(other, *this);
  } catch (...) {
    NodeAccess::DeleteChildren(*this);
    throw;
  }
}

CAttributeMap::CAttributeMap(CAttributeMap&& other) noexcept : CAttributeRec(std::move(other)) {
  // NOLINTNEXTLINE(bugprone-use-after-move): the record alone was moved from.
  m_lastSelected = other.m_lastSelected;
  NodeAccess::SetListBelow(*this, NodeAccess::TakeListBelow(other));
}

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
    auto taken = NodeAccess::TakeListBelow(other);
    auto replaced = NodeAccess::TakeListBelow(*this);
    NodeAccess::SetListBelow(*this, std::move(taken));
    m_lastSelected = other.m_lastSelected;
    CAttributeRec::operator=(std::move(other));
    NodeAccess::DeleteNodes(std::move(replaced));
  }
  return *this;
}

CAttributeMap::~CAttributeMap() {
  if (m_hasListBelow) {
    NodeAccess::DeleteChildren(*this);
  }
}

int CAttributeMap::Count() const noexcept {
  return static_cast<int>(NodeAccess::Children(*this).size());
}

void CAttributeMap::RemoveAll() { NodeAccess::DeleteChildren(*this); }
