// Adding and removing children, and their flags.
#include <memory>
#include <vector>

#include "attributes/AttributeMap.h"
#include "attributes/NodeAccess.h"
#include "definitions/AttribDefMap.h"

using lum::detail::CChildList;
using lum::detail::COwnedNode;
using lum::detail::NodeAccess;

CAttributeMap& CAttributeMap::Add(const CString& name) { return NodeAccess::Append(*this, name); }

CAttributeMap& CAttributeMap::Add(const CAttributeMap& node) {
  return NodeAccess::Append(*this, COwnedNode(new CAttributeMap(node)));
}

CAttributeMap& CAttributeMap::Add(const CString& name, const CLumType& value, unsigned int flags) {
  return NodeAccess::Append(*this, name, value, flags);
}

CAttributeMap& CAttributeMap::Insert(int n, const CString& name, const CLumType& value,
                                     unsigned int flags) {
  NodeAccess::Insert(*this, static_cast<std::size_t>(FindAttribute(name, n)),
                     NodeAccess::MakeNode(name, value, flags));
  return *NodeAccess::Children(*this)[static_cast<std::size_t>(n)];
}

CAttributeRec* CAttributeMap::AppendNew(const CString& name) {
  if (Has(name)) {
    return nullptr;
  }
  const CAttribDefRec* definition = CAttribDefMap::GetAttribDefMap().GetAttribDefRec(name);
  if (definition == nullptr || definition->DefaultValue() == nullptr) {
    return nullptr;
  }
  return &Add(name, *definition->DefaultValue(), 0);
}

CAttributeRec* CAttributeMap::AppendNew(const CString& name, const CLumType& value) {
  return Has(name) ? nullptr : &Add(name, value, 0);
}

void CAttributeMap::Remove(int pos) {
  const auto place = static_cast<std::size_t>(pos);
  const COwnedNode removed(NodeAccess::Children(*this)[place]);
  NodeAccess::ListBelow(*this)->Remove(place);
}

bool CAttributeMap::Remove(const CString& name, int n) {
  const int pos = FindAttribute(name, n);
  if (pos < 0) {
    return false;
  }
  Remove(pos);
  return true;
}

void CAttributeMap::RemoveAll(const CString& name) {
  // The caller's string may be the name of a child that goes.
  const CString removedName(name);  // NOLINT(performance-unnecessary-copy-initialization)
  CChildList* children = NodeAccess::ListBelow(*this);
  if (children == nullptr) {
    return;
  }
  children->RemoveIf([&removedName](CAttributeMap* child) {
    const bool isRemoved = child->Mnemonic() == removedName;
    if (isRemoved) {
      NodeAccess::DeleteNode(child);
    }
    return isRemoved;
  });
}

bool CAttributeMap::DisableAttribute(const CString& name, bool disable) {
  CAttributeMap* child = GetAttrMap(name);
  if (child == nullptr) {
    return false;
  }
  child->Disable(disable);
  return true;
}

bool CAttributeMap::HasEditableAttributes() const {
  std::vector<const CAttributeMap*> groups = {this};
  while (!groups.empty()) {
    const CAttributeMap* group = groups.back();
    groups.pop_back();
    for (const CAttributeMap* child : NodeAccess::Children(*group)) {
      if (!child->IsFlagSet(FLAG_EDITABLE)) {
        continue;
      }
      if (!child->IsFlagSet(FLAG_GROUP)) {
        return true;
      }
      groups.push_back(child);
    }
  }
  return false;
}

bool CAttributeMap::HasEditorAttributes() const { return HasEditableAttributes(); }
