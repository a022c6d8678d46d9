// Counting and finding children, by place and by name and occurrence.
#include "attributes/AttributeMap.h"
#include "attributes/NodeAccess.h"
#include "values/SharedObject.h"

using lum::detail::CChildList;
using lum::detail::CSharedObject;
using lum::detail::NodeAccess;
using lum::detail::View;

namespace {

constinit CSharedObject<const CAttributeMap> g_emptyNode;
// Not the empty node's value, which nobody may get hold of to change it.
constinit CSharedObject<CLumUndefined> g_missingValue;

}  // namespace

const CAttributeMap& CAttributeMap::NullAttribute() { return g_emptyNode.Get(); }

int CAttributeMap::Count(const CString& name) const {
  return NodeAccess::CountChildren(*this, View(name));
}

const CAttributeMap& CAttributeMap::operator[](int pos) const {
  return pos < Count() ? *NodeAccess::Children(*this)[static_cast<std::size_t>(pos)]
                       : NullAttribute();
}

CAttributeMap& CAttributeMap::FindCreateIndex(int pos) {
  while (Count() <= pos) {
    NodeAccess::Append(*this, CString());
  }
  return *NodeAccess::Children(*this)[static_cast<std::size_t>(pos)];
}

int CAttributeMap::RetrieveIndex(int pos) const {
  return NodeAccess::ListBelow(*this)->OccurrenceAt(static_cast<std::size_t>(pos));
}

int CAttributeMap::FindAttribute(const CString& name, int n) const {
  const CChildList* children = NodeAccess::ListBelow(*this);
  return children != nullptr ? children->Find(View(name), n) : -1;
}

bool CAttributeMap::Has(const CString& name, int n) const { return FindAttribute(name, n) >= 0; }

const CAttributeMap& CAttributeMap::Find(const CString& name, int n) const {
  const CAttributeMap* child = GetAttrMap(name, n);
  return child != nullptr ? *child : NullAttribute();
}

CAttributeMap& CAttributeMap::FindCreate(const CString& name, int n) {
  CAttributeMap* child = GetAttrMap(name, n);
  return child != nullptr ? *child : NodeAccess::CreateChild(*this, name, n);
}

const CAttributeMap* CAttributeMap::GetAttrMap(const CString& name, int n) const {
  return NodeAccess::FindChild(*this, View(name), n);
}

CAttributeMap* CAttributeMap::GetAttrMap(const CString& name, int n) {
  return NodeAccess::FindChild(*this, View(name), n);
}

const CLumType& CAttributeMap::FindValue(const CString& name, int n) const {
  return Find(name, n).Value();
}

CLumType& CAttributeMap::FindValue(const CString& name, int n) {
  CAttributeMap* child = GetAttrMap(name, n);
  return child != nullptr ? child->Value() : g_missingValue.Get();
}
