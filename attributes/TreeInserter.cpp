// Putting read items into a tree.
#include "attributes/TreeInserter.h"

#include <memory>

#include "definitions/AttribDefMap.h"
#include "values/TextView.h"

namespace lum::detail {
namespace {

/// Sets a node from an item. The kind is decided by the name alone, whatever the node held before.
bool SetLeaf(CAttributeMap& node, unsigned int flags, const CString& text) {
  const CString& name = node.Mnemonic();
  node.SetFlags(flags);
  std::unique_ptr<CLumType> value;
  if (View(name).starts_with(L'@')) {
    value = std::make_unique<CLumName>();
  } else if (const CAttribDefRec* definition =
                 CAttribDefMap::GetAttribDefMap().GetAttribDefRec(name);
             definition != nullptr && definition->DefaultValue() != nullptr) {
    value.reset(definition->DefaultValue()->MakeCopy());
  } else {
    NodeAccess::SetValue(node, std::make_unique<CLumAnything>(text));
    return true;
  }
  const bool accepted = value->SetValueStr(text);
  NodeAccess::SetValue(node, std::move(value));
  return accepted;
}

}  // namespace

bool CTreeInserter::Insert(std::wstring_view path, unsigned int flags, const CString& text) {
  CKeyPath rest(path);
  CAttributeMap& deepest = DescendExisting(rest);
  if (!TakePlaceholders(deepest, rest)) {
    return false;
  }
  CAttributeMap* leaf = CreateMissing(deepest, rest);
  return leaf != nullptr && SetLeaf(*leaf, flags, text);
}

/// Follows a path as far as its nodes exist and takes what was followed off it.
CAttributeMap& CTreeInserter::DescendExisting(CKeyPath& path) {
  CAttributeMap* node = &m_root;
  while (!path.AtEnd()) {
    CKeyPath rest = path;
    const CKeyPiece piece = rest.Next();
    CAttributeMap* child = IndexOf(*node).Find(piece.name, piece.occurrence);
    if (child == nullptr) {
      break;
    }
    node = child;
    path = rest;
  }
  return *node;
}

/// Counts the placeholders that the rest of a path needs below `node`, where its first piece is
/// missing, and takes them off what this load may still create.
bool CTreeInserter::TakePlaceholders(CAttributeMap& node, CKeyPath path) {
  long long needed = 0;
  bool first = true;
  while (!path.AtEnd()) {
    const CKeyPiece piece = path.Next();
    if (piece.occurrence < 0) {
      break;
    }
    const bool mayHaveSome = first && piece.occurrence > 0;
    needed += piece.occurrence - (mayHaveSome ? IndexOf(node).Count(piece.name) : 0);
    first = false;
  }
  if (needed > m_placeholdersLeft) {
    return false;
  }
  m_placeholdersLeft -= needed;
  return true;
}

/// Null when the path has a negative occurrence.
CAttributeMap* CTreeInserter::CreateMissing(CAttributeMap& node, CKeyPath path) {
  CAttributeMap* created = &node;
  while (!path.AtEnd()) {
    const CKeyPiece piece = path.Next();
    if (piece.occurrence < 0) {
      return nullptr;
    }
    created = &CreateChild(*created, IndexOf(*created), piece.name, piece.occurrence);
  }
  return created;
}

/// Indexes of large parents are kept for the whole load; small ones are scanned.
CChildIndex& CTreeInserter::IndexOf(const CAttributeMap& parent) {
  if (NodeAccess::Children(parent).size() <= kScannedChildren) {
    m_smallIndex = CChildIndex(parent);
    return m_smallIndex;
  }
  return m_indexes.try_emplace(&parent, parent).first->second;
}

}  // namespace lum::detail
