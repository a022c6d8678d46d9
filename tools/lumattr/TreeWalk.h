// A walk over a tree in the order of its lines, parents first, that uses no call stack however deep
// the tree is.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "attributes/AttributeMap.h"
#include "tools/lumattr/AttributePath.h"

namespace lum::tool {

/// Visits every node below a root. The trees must live unchanged meanwhile.
class CTreeWalk {
 public:
  explicit CTreeWalk(const CAttributeMap& root) : CTreeWalk(root, root) {}
  /// Visits two trees of the same shape side by side.
  CTreeWalk(const CAttributeMap& root, const CAttributeMap& sameShape);

  /// Moves to the next node, at first to the first one; false when there is none left.
  bool Next();

  const CAttributeMap& Node() const { return *m_levels.back().node; }
  const CAttributeMap& Other() const { return *m_levels.back().other; }
  /// 1 for the root's children.
  int Depth() const { return static_cast<int>(m_levels.size()) - 1; }
  int Occurrence() const { return m_levels.back().occurrence; }
  PathStep Step() const { return {Node().Mnemonic(), Occurrence()}; }
  /// The canonical dotted path, valid until the next call of Next.
  const std::wstring& Path() const { return m_path; }

 private:
  /// A node on the way down and how far its children are visited.
  struct Level {
    const CAttributeMap* node;
    const CAttributeMap* other;
    int occurrence;
    std::size_t pathLength;  ///< Of the parent's path.
    int nextChild = 0;
    std::map<CString, int> seen;  ///< Visited children by name.
  };

  void Descend();

  std::vector<Level> m_levels;
  std::wstring m_path;
};

}  // namespace lum::tool
