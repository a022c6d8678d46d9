// Adding and removing children, and their flags.
#include <memory>
#include <utility>

#include "attributes/AttributeMap.h"
#include "attributes/NodeAccess.h"
#include "definitions/AttribDefMap.h"

using lum::detail::NodeAccess;

CAttributeMap& CAttributeMap::Add(const CString& name) { return NodeAccess::Append(*this, name); }

CAttributeMap& CAttributeMap::Add(const CAttributeMap& node) {
  return NodeAccess::Append(*this, std::make_unique<CAttributeMap>(node));
}

CAttributeMap& CAttributeMap::Add(const CString& name, const CLumType& value, unsigned int flags) {
  return NodeAccess::Append(*this, std::make_unique<CAttributeMap>(name, value, flags));
}

CAttributeMap& CAttributeMap::Insert(int n, const CString& name, const CLumType& value,
                                     unsigned int flags) {
  auto child = std::make_unique<CAttributeMap>(name, value, flags);
  m_children.insert(m_children.begin() + FindAttribute(name, n), child.get());
  (void)child.release();
  return *m_children[static_cast<std::size_t>(n)];
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
  const auto place = m_children.begin() + pos;
  const std::unique_ptr<CAttributeMap> removed(*place);
  m_children.erase(place);
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
  auto kept = m_children.begin();
  for (CAttributeMap* child : m_children) {
    if (child->Mnemonic() == removedName) {
      delete child;
    } else {
      *kept++ = child;
    }
  }
  m_children.erase(kept, m_children.end());
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
    for (const CAttributeMap* child : group->m_children) {
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
