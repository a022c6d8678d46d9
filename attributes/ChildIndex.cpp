// The look-up of children by name and occurrence, and the walk that counts occurrences.
#include "attributes/ChildIndex.h"

namespace lum::detail {

CAttributeMap* CChildIndex::Find(std::wstring_view name, int occurrence) {
  if (occurrence < 0) {
    return nullptr;
  }
  if (IsScanned()) {
    for (CAttributeMap* child : *m_children) {
      if (View(child->Mnemonic()) == name && occurrence-- == 0) {
        return child;
      }
    }
    return nullptr;
  }
  const Occurrences* found = Lookup(name);
  const auto place = static_cast<std::size_t>(occurrence);
  return found != nullptr && place < found->size() ? (*found)[place] : nullptr;
}

int CChildIndex::Count(std::wstring_view name) {
  if (IsScanned()) {
    int count = 0;
    for (const CAttributeMap* child : *m_children) {
      count += View(child->Mnemonic()) == name ? 1 : 0;
    }
    return count;
  }
  const Occurrences* found = Lookup(name);
  return found != nullptr ? static_cast<int>(found->size()) : 0;
}

const CChildIndex::Occurrences* CChildIndex::Lookup(std::wstring_view name) {
  IndexNewChildren();
  const auto found = m_byName->find(name);
  return found != m_byName->end() ? &found->second : nullptr;
}

void CChildIndex::IndexNewChildren() {
  if (m_byName == nullptr) {
    m_byName = std::make_unique<Names>();
    m_byName->reserve(m_children->size());
  }
  for (; m_indexed < m_children->size(); ++m_indexed) {
    CAttributeMap* child = (*m_children)[m_indexed];
    (*m_byName)[child->Mnemonic()].push_back(child);
  }
}

CAttributeMap& FindCreateChild(CAttributeMap& parent, CChildIndex& index, std::wstring_view name,
                               int occurrence) {
  CAttributeMap* child = index.Find(name, occurrence);
  if (child == nullptr) {
    const CString childName = ToCString(name);
    for (int count = index.Count(name); count <= occurrence; ++count) {
      child = &NodeAccess::Append(parent, childName);
    }
  }
  return *child;
}

const CAttributeMap* CSiblingWalk::Next() {
  if (m_next == m_children->size()) {
    return nullptr;
  }
  const CAttributeMap* child = (*m_children)[m_next];
  m_occurrence = CountEarlier(View(child->Mnemonic()));
  ++m_next;
  return child;
}

int CSiblingWalk::CountEarlier(std::wstring_view name) {
  if (m_children->size() > kScannedChildren) {
    if (m_counts == nullptr) {
      m_counts = std::make_unique<std::unordered_map<std::wstring_view, int>>();
      m_counts->reserve(m_children->size());
    }
    return (*m_counts)[name]++;
  }
  int count = 0;
  for (std::size_t pos = 0; pos < m_next; ++pos) {
    count += View((*m_children)[pos]->Mnemonic()) == name ? 1 : 0;
  }
  return count;
}

}  // namespace lum::detail
