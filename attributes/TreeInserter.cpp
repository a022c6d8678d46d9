// Putting read items into a tree.
#include "attributes/TreeInserter.h"

#include <algorithm>
#include <memory>

#include "definitions/AttribDefMap.h"

namespace lum::detail {
namespace {

/// Sets a node from an item. The kind is decided by the name alone, whatever the node held before.
bool SetLeaf(CAttributeMap& node, unsigned int flags, const CString& text) {
  const CString& name = node.Mnemonic();
  node.SetFlags(flags);
  if (View(name).starts_with(L'@')) {
    NodeAccess::SetValue(node, std::make_unique<CLumName>());
    return node.Value().SetValueStr(text);
  }
  const CAttribDefRec* definition = CAttribDefMap::GetAttribDefMap().GetAttribDefRec(name);
  if (definition != nullptr && definition->DefaultValue() != nullptr) {
    NodeAccess::SetValueCopy(node, *definition->DefaultValue());
    return node.Value().SetValueStr(text);
  }
  NodeAccess::SetValue(node, std::make_unique<CLumAnything>(text));
  return true;
}

}  // namespace

const CString& CNameCache::Get(std::wstring_view name) {
  constexpr std::size_t kSpread = 31;
  std::size_t place = name.size();
  if (!name.empty()) {
    place += kSpread * (static_cast<std::size_t>(name.front()) +
                        kSpread * (static_cast<std::size_t>(name[name.size() / 2]) +
                                   kSpread * static_cast<std::size_t>(name.back())));
  }
  CString& cached = m_names[place % m_names.size()];
  if (View(cached) != name) {
    cached = ToCString(name);
  }
  return cached;
}

bool CTreeInserter::Insert(std::wstring_view path, unsigned int flags, const CString& text) {
  CKeyPath rest(path);
  CAttributeMap& start = LastCommonGroup(rest);
  CAttributeMap& deepest = DescendExisting(start, rest);
  if (!TakePlaceholders(deepest, rest)) {
    return false;
  }
  CAttributeMap* leaf = CreateMissing(deepest, rest);
  return leaf != nullptr && SetLeaf(*leaf, flags, text);
}

/// The deepest group that the path shares with that of the item before, to which it goes on.
CAttributeMap& CTreeInserter::LastCommonGroup(CKeyPath& path) {
  const std::wstring_view whole = path.Rest();
  const auto common = static_cast<std::size_t>(
      std::mismatch(whole.begin(), whole.end(), m_lastPath.begin(), m_lastPath.end()).first -
      whole.begin());
  while (!m_steps.empty() && m_steps.back().end > common) {
    m_steps.pop_back();
  }
  m_lastPath.resize(common);
  m_lastPath += whole.substr(common);
  if (m_steps.empty()) {
    return m_root;
  }
  path = CKeyPath(whole.substr(m_steps.back().end));
  return *m_steps.back().group;
}

void CTreeInserter::NoteStep(const CKeyPath& path, CAttributeMap& group) {
  if (!path.AtEnd()) {
    m_steps.push_back({m_lastPath.size() - path.Rest().size(), &group});
  }
}

/// Follows a path as far as its nodes exist and takes what was followed off it.
CAttributeMap& CTreeInserter::DescendExisting(CAttributeMap& start, CKeyPath& path) {
  CAttributeMap* node = &start;
  while (!path.AtEnd()) {
    CKeyPath rest = path;
    const CKeyPiece piece = rest.Next();
    CAttributeMap* child = NodeAccess::FindChild(*node, piece.name, piece.occurrence);
    if (child == nullptr) {
      break;
    }
    node = child;
    path = rest;
    NoteStep(path, *node);
  }
  return *node;
}

/// Counts the placeholders that the rest of a path needs below `node`, where its first piece is
/// missing, and takes them off what this load may still create.
bool CTreeInserter::TakePlaceholders(const CAttributeMap& node, CKeyPath path) {
  long long needed = 0;
  bool first = true;
  while (!path.AtEnd()) {
    const CKeyPiece piece = path.Next();
    if (piece.occurrence < 0) {
      break;
    }
    if (piece.occurrence > 0) {
      needed += piece.occurrence - (first ? NodeAccess::CountChildren(node, piece.name) : 0);
    }
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
    created = &NodeAccess::CreateChild(*created, m_names.Get(piece.name), piece.occurrence);
    NoteStep(path, *created);
  }
  return created;
}

}  // namespace lum::detail
