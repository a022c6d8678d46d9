// Library-internal: puts read items into a tree, for the duration of one load.
#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "attributes/ItemCodec.h"
#include "attributes/NodeAccess.h"

namespace lum::detail {

/// Texts that come again and again are made once: nodes of one name share it.
class CNameCache {
 public:
  /// The name as a string; valid until the next call.
  const CString& Get(std::wstring_view name);

 private:
  std::array<CString, 256> m_names;  ///< Each at the place that its characters name.
};

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
  /// A group on the path of the item before: items of one group mostly follow each other.
  struct Step {
    std::size_t end;  ///< Of the group's part of the path, with the dot.
    CAttributeMap* group;
  };

  struct Piece : CKeyPiece {
    std::size_t end;  ///< Of a group as in its Step; 0 of the last piece.
  };
  using Pieces = std::span<const Piece>;

  CAttributeMap& LastCommonGroup(std::wstring_view path);
  void SplitRest(std::wstring_view path);
  CAttributeMap& DescendExisting(CAttributeMap& start, std::size_t& existing);
  bool TakePlaceholders(const CAttributeMap& node, Pieces missing);
  CAttributeMap* CreateMissing(CAttributeMap& node, Pieces missing);
  void NoteStep(const Piece& piece, CAttributeMap& group);

  CAttributeMap& m_root;
  long long m_placeholdersLeft = kMaxPlaceholdersPerLoad;
  std::wstring m_lastPath;
  std::vector<Step> m_steps;
  std::vector<Piece> m_pieces;  ///< Of the path that is being inserted, below the last step.
  CNameCache m_names;
};

}  // namespace lum::detail
