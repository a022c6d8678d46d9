// Look-up of one node's children by name and occurrence, and the walk that counts occurrences, both
// for algorithms that touch many children of one parent. Few children are scanned; many are
// indexed, so that a whole pass over them takes time in proportion to their number.
#pragma once

#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "attributes/NodeAccess.h"
#include "values/TextView.h"

namespace lum::detail {

/// Up to so many children are scanned, which is faster than hashing and needs no memory.
inline constexpr std::size_t kScannedChildren = 8;

/// Hashes names and views of names alike, so that a look-up needs no string of its own.
struct CNameHash {
  using is_transparent = void;
  std::size_t operator()(std::wstring_view name) const {
    return std::hash<std::wstring_view>()(name);
  }
  std::size_t operator()(const CString& name) const { return (*this)(View(name)); }
};

struct CNameEqual {
  using is_transparent = void;
  bool operator()(const CString& a, std::wstring_view b) const { return View(a) == b; }
  bool operator()(std::wstring_view a, const CString& b) const { return a == View(b); }
  bool operator()(const CString& a, const CString& b) const { return View(a) == View(b); }
};

/// Finds the children of one node. The node may get further children at its end while the index
/// exists, but none may be removed or renamed.
class CChildIndex {
 public:
  explicit CChildIndex(const CAttributeMap& parent) : m_children(&NodeAccess::Children(parent)) {}

  /// The child of that name and occurrence, or null.
  CAttributeMap* Find(std::wstring_view name, int occurrence);
  /// How many children have that name.
  int Count(std::wstring_view name);

 private:
  using Occurrences = std::vector<CAttributeMap*>;
  using Names = std::unordered_map<CString, Occurrences, CNameHash, CNameEqual>;

  bool IsScanned() const noexcept { return m_children->size() <= kScannedChildren; }
  const Occurrences* Lookup(std::wstring_view name);
  void IndexNewChildren();

  const NodeAccess::Nodes* m_children;
  std::size_t m_indexed = 0;
  std::unique_ptr<Names> m_byName;
};

/// The child of `parent` with that name and occurrence, through the index of `parent`; children
/// with an undefined value are appended until it exists.
CAttributeMap& FindCreateChild(CAttributeMap& parent, CChildIndex& index, std::wstring_view name,
                               int occurrence);

/// Walks the children of one node in order and counts each one's occurrence. The children may not
/// change meanwhile.
class CSiblingWalk {
 public:
  explicit CSiblingWalk(const CAttributeMap& parent) : m_children(&NodeAccess::Children(parent)) {}

  /// The next child, or null after the last.
  const CAttributeMap* Next();
  /// The occurrence of the child that Next gave last.
  int Occurrence() const noexcept { return m_occurrence; }

 private:
  int CountEarlier(std::wstring_view name);

  const NodeAccess::Nodes* m_children;
  std::size_t m_next = 0;
  int m_occurrence = 0;
  std::unique_ptr<std::unordered_map<std::wstring_view, int>> m_counts;
};

}  // namespace lum::detail
