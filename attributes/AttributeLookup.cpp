// Counting and finding children, by place and by name and occurrence. Nothing here allocates unless
// a child has to be made.
#include <algorithm>

#include "attributes/AttributeMap.h"
#include "attributes/NodeAccess.h"
#include "values/SharedObject.h"

using lum::detail::CSharedObject;
using lum::detail::NodeAccess;

namespace {

constinit CSharedObject<const CAttributeMap> g_emptyNode;
// Not the empty node's value, which nobody may get hold of to change it.
constinit CSharedObject<CLumUndefined> g_missingValue;

}  // namespace

const CAttributeMap& CAttributeMap::NullAttribute() { return g_emptyNode.Get(); }

int CAttributeMap::Count(const CString& name) const {
  return static_cast<int>(
      std::count_if(m_children.begin(), m_children.end(),
                    [&name](const CAttributeMap* child) { return child->Mnemonic() == name; }));
}

const CAttributeMap& CAttributeMap::operator[](int pos) const {
  return pos < Count() ? *m_children[static_cast<std::size_t>(pos)] : NullAttribute();
}

CAttributeMap& CAttributeMap::FindCreateIndex(int pos) {
  while (Count() <= pos) {
    NodeAccess::Append(*this, CString());
  }
  return *m_children[static_cast<std::size_t>(pos)];
}

int CAttributeMap::RetrieveIndex(int pos) const {
  const auto child = m_children.begin() + pos;
  const CString& name = (*child)->Mnemonic();
  return static_cast<int>(
      std::count_if(m_children.begin(), child,
                    [&name](const CAttributeMap* earlier) { return earlier->Mnemonic() == name; }));
}

int CAttributeMap::FindAttribute(const CString& name, int n) const {
  int count = 0;
  for (int pos = 0; pos < Count(); ++pos) {
    if (m_children[static_cast<std::size_t>(pos)]->Mnemonic() == name && count++ == n) {
      return pos;
    }
  }
  return -1;
}

bool CAttributeMap::Has(const CString& name, int n) const { return FindAttribute(name, n) >= 0; }

const CAttributeMap& CAttributeMap::Find(const CString& name, int n) const {
  const CAttributeMap* child = GetAttrMap(name, n);
  return child != nullptr ? *child : NullAttribute();
}

CAttributeMap& CAttributeMap::FindCreate(const CString& name, int n) {
  int count = 0;
  for (CAttributeMap* child : m_children) {
    if (child->Mnemonic() == name && count++ == n) {
      return *child;
    }
  }
  for (; count < n; ++count) {
    NodeAccess::Append(*this, name);
  }
  return NodeAccess::Append(*this, name);
}

const CAttributeMap* CAttributeMap::GetAttrMap(const CString& name, int n) const {
  const int pos = FindAttribute(name, n);
  return pos >= 0 ? m_children[static_cast<std::size_t>(pos)] : nullptr;
}

CAttributeMap* CAttributeMap::GetAttrMap(const CString& name, int n) {
  const int pos = FindAttribute(name, n);
  return pos >= 0 ? m_children[static_cast<std::size_t>(pos)] : nullptr;
}

const CLumType& CAttributeMap::FindValue(const CString& name, int n) const {
  return Find(name, n).Value();
}

CLumType& CAttributeMap::FindValue(const CString& name, int n) {
  CAttributeMap* child = GetAttrMap(name, n);
  return child != nullptr ? child->Value() : g_missingValue.Get();
}
