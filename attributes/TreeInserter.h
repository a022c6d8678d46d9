// Library-internal: puts read items into a tree, for the duration of one load.
#pragma once

#include <string_view>
#include <unordered_map>

#include "attributes/ChildIndex.h"
#include "attributes/ItemCodec.h"

namespace lum::detail {

/// Makes or finds the node of each item below one root and sets it. While an inserter exists,
/// nothing else may change the tree.
class CTreeInserter {
 public:
  explicit CTreeInserter(CAttributeMap& root) : m_root(root) {}

  /// False when the item is rejected: for a negative occurrence on its path (the groups before it
  /// stay), for more placeholders than the load may still create (nothing is created then), or
  /// because the value that its name demands does not accept the text (the node then holds that
  /// kind's default).
  bool Insert(std::wstring_view path, unsigned int flags, const CString& text);
  bool Insert(const CAttributeItem& item) { return Insert(item.path, item.flags, item.text); }

 private:
  CChildIndex& IndexOf(const CAttributeMap& parent);
  CAttributeMap& DescendExisting(CKeyPath& path);
  bool TakePlaceholders(CAttributeMap& node, CKeyPath path);
  CAttributeMap* CreateMissing(CAttributeMap& node, CKeyPath path);

  CAttributeMap& m_root;
  long long m_placeholdersLeft = kMaxPlaceholdersPerLoad;
  std::unordered_map<const CAttributeMap*, CChildIndex> m_indexes;
  CChildIndex m_smallIndex{m_root};
};

}  // namespace lum::detail
