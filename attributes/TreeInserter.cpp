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
  CAttributeMap& start = LastCommonGroup(path);
  SplitRest(path);
  std::size_t existing = 0;
  CAttributeMap& deepest = DescendExisting(start, existing);
  const Pieces missing = Pieces(m_pieces).subspan(existing);
  if (!TakePlaceholders(deepest, missing)) {
    return false;
  }
  CAttributeMap* leaf = CreateMissing(deepest, missing);
  return leaf != nullptr && SetLeaf(*leaf, flags, text);
}

/// The deepest group that the path shares with that of the item before. The steps end there. Mostly
/// that is the group before; else the paths are compared once, however many steps there are.
CAttributeMap& CTreeInserter::LastCommonGroup(std::wstring_view path) {
  const std::wstring_view last = m_lastPath;
  if (!m_steps.empty() && !path.starts_with(last.substr(0, m_steps.back().end))) {
    const auto end = std::mismatch(path.begin(), path.end(), last.begin(), last.end()).first;
    const auto common = static_cast<std::size_t>(end - path.begin());
    while (!m_steps.empty() && m_steps.back().end > common) {
      m_steps.pop_back();
    }
  }
  m_lastPath.assign(path);
  return m_steps.empty() ? m_root : *m_steps.back().group;
}

/// Takes the part of a path below the last step apart.
void CTreeInserter::SplitRest(std::wstring_view path) {
  const std::size_t begin = m_steps.empty() ? 0 : m_steps.back().end;
  m_pieces.clear();
  for (CKeyPath rest(path.substr(begin)); !rest.AtEnd();) {
    const CKeyPiece piece = rest.Next();
    m_pieces.push_back({piece, rest.AtEnd() ? 0 : path.size() - rest.Rest().size()});
  }
}

/// A group's part of the path ends with its dot.
void CTreeInserter::NoteStep(const Piece& piece, CAttributeMap& group) {
  if (piece.end != 0) {
    m_steps.push_back({piece.end, &group});
  }
}

/// Follows the pieces as far as their nodes exist and counts them.
CAttributeMap& CTreeInserter::DescendExisting(CAttributeMap& start, std::size_t& existing) {
  CAttributeMap* node = &start;
  for (; existing < m_pieces.size(); ++existing) {
    const Piece& piece = m_pieces[existing];
    CAttributeMap* child = NodeAccess::FindChild(*node, piece.name, piece.occurrence);
    if (child == nullptr) {
      break;
    }
    node = child;
    NoteStep(piece, *node);
  }
  return *node;
}

/// Counts the placeholders that pieces need below `node`, where the first one is missing, and takes
/// them off what this load may still create.
bool CTreeInserter::TakePlaceholders(const CAttributeMap& node, Pieces missing) {
  long long needed = 0;
  bool first = true;
  for (const Piece& piece : missing) {
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
CAttributeMap* CTreeInserter::CreateMissing(CAttributeMap& node, Pieces missing) {
  CAttributeMap* created = &node;
  for (const Piece& piece : missing) {
    if (piece.occurrence < 0) {
      return nullptr;
    }
    created = &NodeAccess::CreateChild(*created, m_names.Get(piece.name), piece.occurrence);
    NoteStep(piece, *created);
  }
  return created;
}

}  // namespace lum::detail
