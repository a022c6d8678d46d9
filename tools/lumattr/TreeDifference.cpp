// CAttributeMap::Compare decides which values differ; a walk over both trees and its result finds
// the paths, the texts of the files and the flags. Missing nodes are found by the walk itself: a
// result of Compare leaves out removed nodes named OrderInfo below the first level.
#include "tools/lumattr/TreeDifference.h"

#include <map>
#include <string_view>
#include <utility>

#include "catalogue/AttributeNames.h"
#include "tools/lumattr/Text.h"
#include "tools/lumattr/TreeWalk.h"

namespace lum::tool {
namespace {

using Change = TreeDifference::Change;

/// The children of a node by name and occurrence.
class CChildren {
 public:
  explicit CChildren(const CAttributeMap& parent) : m_parent(&parent) {
    for (int pos = 0; pos < parent.Count(); ++pos) {
      std::vector<int>& places = m_places[parent[pos].Mnemonic()];
      m_occurrences.push_back(static_cast<int>(places.size()));
      places.push_back(pos);
    }
  }

  /// The place in the sibling list, or -1.
  int Find(const PathStep& step) const {
    const auto places = m_places.find(step.name);
    const auto occurrence = static_cast<std::size_t>(step.occurrence);
    if (places == m_places.end() || occurrence >= places->second.size()) {
      return -1;
    }
    return places->second[occurrence];
  }
  PathStep Step(int pos) const {
    return {(*m_parent)[pos].Mnemonic(), m_occurrences[static_cast<std::size_t>(pos)]};
  }

 private:
  const CAttributeMap* m_parent;
  std::map<CString, std::vector<int>> m_places;
  std::vector<int> m_occurrences;
};

/// A node as Compare sees it and with the text of its file.
struct CNode {
  const CAttributeMap* typed;
  const CAttributeMap* stored;

  CNode Child(int pos) const { return {&(*typed)[pos], &(*stored)[pos]}; }
  bool HasValue() const { return stored->Value().Type() != CLumType::TYPE_UNDEFINED; }
  bool HasItem() const { return HasValue() || stored->Flags() != 0; }
  std::optional<CString> Value() const {
    CString text;
    return stored->Value().GetValueStr(text) != 0 ? std::optional(text) : std::nullopt;
  }
};

CString TextOf(const CAttributeMap& node) {
  CString text;
  node.Value().GetValueStr(text);
  return text;
}

// Whether Compare found a node's value changed. `found` is its entry in Compare's result, which may
// stand there for the sake of its children or of later occurrences only. Such an entry is undefined
// as is one that says the value went away, so that case is told from the trees.
bool IsValueChanged(const CNode& before, const CNode& after, const CAttributeMap* found) {
  constexpr auto kUndefined = CLumType::TYPE_UNDEFINED;
  if (found == nullptr || found->Value().Type() != kUndefined) {
    return found != nullptr;
  }
  return after.typed->Value().Type() == kUndefined &&
         !before.typed->IsFlagSet(CAttributeRec::FLAG_KEEP_VALUE) &&
         !TextOf(*before.typed).IsEmpty();
}

class CDifferenceWalk {
 public:
  explicit CDifferenceWalk(bool withFlags) : m_withFlags(withFlags) {}

  std::vector<TreeDifference> Run(const SectionTree& before, const SectionTree& after) {
    CAttributeMap found;
    before.typed.Compare(after.typed, found,
                         CAttributeMap::COMPARE_VALUES | CAttributeMap::COMPARE_ADDED);
    Enter({&before.typed, &before.stored}, {&after.typed, &after.stored}, &found);
    while (!m_levels.empty()) {
      Continue();
    }
    return std::move(m_differences);
  }

 private:
  /// Two nodes on the way down, paired, and how far their children are compared.
  struct CLevel {
    CNode before;
    CNode after;
    const CAttributeMap* found;  // Null when Compare found nothing below.
    CChildren beforeChildren;
    CChildren afterChildren;
    CChildren foundChildren;
    std::size_t pathLength;  // Of the nodes' own path.
    int next = 0;            // Counts on through the children of both.
  };

  void Enter(const CNode& before, const CNode& after, const CAttributeMap* found) {
    static const CAttributeMap nothing;
    m_levels.push_back({before, after, found, CChildren(*before.typed), CChildren(*after.typed),
                        CChildren(found != nullptr ? *found : nothing), m_path.size()});
  }

  void Continue() {
    CLevel& level = m_levels.back();
    m_path.resize(level.pathLength);
    const int beforeCount = level.before.typed->Count();
    const int pos = level.next++;
    if (pos < beforeCount) {
      VisitBefore(level, pos);
    } else if (pos - beforeCount < level.after.typed->Count()) {
      VisitAfter(level, pos - beforeCount);
    } else {
      m_levels.pop_back();
    }
  }

  void VisitBefore(const CLevel& level, int pos) {
    const PathStep step = level.beforeChildren.Step(pos);
    const CNode before = level.before.Child(pos);
    AppendStep(step);
    const int place = level.afterChildren.Find(step);
    if (place < 0) {
      AddSubtree(before, Change::Removed);
      return;
    }
    const CNode after = level.after.Child(place);
    const int foundPlace = level.foundChildren.Find(step);
    const CAttributeMap* found = foundPlace < 0 ? nullptr : &(*level.found)[foundPlace];
    ComparePair(before, after, found);
    if (before.typed->Count() + after.typed->Count() > 0) {
      Enter(before, after, found);  // `level` is not valid any more.
    }
  }

  void VisitAfter(const CLevel& level, int pos) {
    const PathStep step = level.afterChildren.Step(pos);
    if (level.beforeChildren.Find(step) < 0) {
      AppendStep(step);
      AddSubtree(level.after.Child(pos), Change::Added);
    }
  }

  void ComparePair(const CNode& before, const CNode& after, const CAttributeMap* found) {
    if (IsValueChanged(before, after, found)) {
      AddPair(before, after, Change::Value);
    }
    if (m_withFlags && before.stored->Flags() != after.stored->Flags()) {
      AddPair(before, after, Change::Flags);
    }
  }

  // Paths are copied for what differs only: on the way down a deep tree they are long.
  void AddPair(const CNode& before, const CNode& after, Change change) {
    m_differences.push_back({change, m_path, before.Value(), after.Value(), before.stored->Flags(),
                             after.stored->Flags()});
  }

  // A group without an item is there as long as something stands below it.
  void AddSubtree(const CNode& top, Change change) {
    if (top.HasItem()) {
      AddOne(top, m_path, change);
    }
    CTreeWalk walk(*top.typed, *top.stored);
    while (walk.Next()) {
      const CNode node{&walk.Node(), &walk.Other()};
      if (node.HasItem()) {
        AddOne(node, m_path + KEY_DIVCHAR + walk.Path(), change);
      }
    }
  }

  void AddOne(const CNode& node, const std::wstring& path, Change change) {
    if (change == Change::Added) {
      m_differences.push_back({change, path, {}, node.Value(), 0, node.stored->Flags()});
    } else {
      m_differences.push_back({change, path, node.Value(), {}, node.stored->Flags(), 0});
    }
  }

  void AppendStep(const PathStep& step) {
    if (m_levels.size() > 1) {
      m_path += KEY_DIVCHAR;
    }
    m_path += View(FormatStep(step));
  }

  bool m_withFlags;
  std::vector<CLevel> m_levels;
  std::wstring m_path;
  std::vector<TreeDifference> m_differences;
};

}  // namespace

std::vector<TreeDifference> FindTreeDifferences(const SectionTree& before, const SectionTree& after,
                                                bool withFlags) {
  return CDifferenceWalk(withFlags).Run(before, after);
}

}  // namespace lum::tool
