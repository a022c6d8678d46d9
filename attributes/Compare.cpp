// Comparing: builds the difference tree of two trees, pairing children by name and occurrence.
//
// One pass walks the other tree and reports what was added or changed, a second one walks this tree
// and reports what was removed. Either pass keeps its own stack; the differences below a pair of
// nodes are collected apart and attached to the pair's entry only when there are any.
#include <algorithm>
#include <cmath>
#include <deque>

#include "attributes/AttributeMap.h"
#include "attributes/ChildIndex.h"
#include "attributes/ItemCodec.h"
#include "attributes/Overload.h"
#include "values/TextView.h"

namespace lum::detail {
namespace {

/// What tells the two passes apart.
struct CPassRules {
  bool reportUnpaired;  ///< Nodes without a partner are copied into the difference tree.
  bool compareValues;   ///< The walked node's value and flags are reported when values differ.
  bool dropOrderInfo;   ///< "OrderInfo" nodes found below a pair are left out, as a merge does.
};

/// A pair of nodes whose children are being compared, and the differences found below it.
struct CPairFrame {
  CPairFrame(const CAttributeMap& walkedNode, const CAttributeMap& partnerNode)
      : walked(&walkedNode), partner(&partnerNode), children(walkedNode, partnerNode) {}

  /// The entry of the child that was visited last; made when it is not there.
  CAttributeMap& Entry(const CAttributeMap& child) {
    return FindCreateChild(found, foundIndex, View(child.Mnemonic()), children.Occurrence());
  }

  const CAttributeMap* walked;
  const CAttributeMap* partner;
  CPairWalk children;
  CAttributeMap found;
  CChildIndex foundIndex{found};
};

/// Values that both are one number are equal within the platform's tolerance, whatever their texts.
/// A protected value of this tree never differs in its text.
bool AreValuesEqual(const CAttributeMap& own, const CAttributeMap& other) {
  CString otherText;
  CString ownText;
  other.Value().GetValueStr(otherText);
  own.Value().GetValueStr(ownText);
  double a = 0.0;
  double b = 0.0;
  if (otherText.Find(L',') < 0 && ownText.Find(L',') < 0 && other.Value().GetDouble(a) != 0 &&
      own.Value().GetDouble(b) != 0) {
    return std::abs(a - b) <= Epsilon(std::max(std::abs(a), std::abs(b)) * 10.0);
  }
  return own.IsFlagSet(CAttributeRec::FLAG_KEEP_VALUE) || otherText == ownText;
}

/// Moves the children of `from` to the end of those of `to`, except "OrderInfo" ones.
void MoveMergedChildren(CAttributeMap& from, CAttributeMap& to) {
  NodeAccess::Nodes& sources = NodeAccess::Children(from);
  NodeAccess::Nodes& targets = NodeAccess::Children(to);
  targets.reserve(targets.size() + sources.size());
  auto kept = sources.begin();
  for (CAttributeMap* child : sources) {
    if (IsOrderInfo(*child)) {
      *kept++ = child;
    } else {
      targets.push_back(child);
    }
  }
  sources.erase(kept, sources.end());
}

class CComparisonPass {
 public:
  explicit CComparisonPass(CPassRules rules) : m_rules(rules) {}

  /// Walks one tree beside the other and adds what it finds to the children of `diff`.
  void Run(const CAttributeMap& walked, const CAttributeMap& partner, CAttributeMap& diff) {
    CPairFrame& root = m_frames.emplace_back(walked, partner);
    NodeAccess::Children(root.found).swap(NodeAccess::Children(diff));
    while (const CAttributeMap* child = NextChild()) {
      VisitChild(*child);
    }
    NodeAccess::Children(diff).swap(NodeAccess::Children(root.found));
    m_frames.clear();
  }

 private:
  /// The next child to visit, after leaving all pairs that are done; null when the root is.
  const CAttributeMap* NextChild() {
    for (;;) {
      if (const CAttributeMap* child = m_frames.back().children.Next()) {
        return child;
      }
      if (m_frames.size() == 1) {
        return nullptr;
      }
      LeavePair();
    }
  }

  void VisitChild(const CAttributeMap& child) {
    CPairFrame& frame = m_frames.back();
    const CAttributeMap* partner = frame.children.Partner();
    if (partner == nullptr) {
      if (m_rules.reportUnpaired) {
        frame.Entry(child) = child;
      }
    } else if (child.Count() != 0) {
      m_frames.emplace_back(child, *partner);
    } else {
      CompareValues(frame, child, *partner);
    }
  }

  void LeavePair() {
    CPairFrame& done = m_frames.back();
    CPairFrame& above = m_frames[m_frames.size() - 2];
    if (done.found.Count() != 0) {
      AttachBelow(above.Entry(*done.walked), done.found);
    }
    CompareValues(above, *done.walked, *done.partner);
    m_frames.pop_back();
  }

  /// Only the removals of the first level can meet an entry that has differences already.
  void AttachBelow(CAttributeMap& entry, CAttributeMap& below) const {
    if (!m_rules.dropOrderInfo) {
      NodeAccess::Children(entry).swap(NodeAccess::Children(below));
    } else if (entry.Count() == 0) {
      MoveMergedChildren(below, entry);
    } else {
      Overlay(entry, below, {.addNew = true});
    }
  }

  void CompareValues(CPairFrame& frame, const CAttributeMap& walked,
                     const CAttributeMap& partner) const {
    if (m_rules.compareValues && !AreValuesEqual(partner, walked)) {
      CAttributeMap& entry = frame.Entry(walked);
      entry.SetValue(walked.Value());
      entry.SetFlags(walked.Flags());
    }
  }

  CPassRules m_rules;
  std::deque<CPairFrame> m_frames;
};

}  // namespace
}  // namespace lum::detail

bool CAttributeMap::Compare(const CAttributeMap& other, CAttributeMap& diff,
                            unsigned int flags) const {
  using lum::detail::CComparisonPass;
  CAttributeMap found;
  const bool values = (flags & COMPARE_VALUES) != 0;
  const bool added = (flags & COMPARE_ADDED) != 0;
  if (values || added) {
    CComparisonPass({.reportUnpaired = added, .compareValues = values, .dropOrderInfo = false})
        .Run(other, *this, found);
  }
  if ((flags & COMPARE_REMOVED) != 0) {
    CComparisonPass({.reportUnpaired = true, .compareValues = false, .dropOrderInfo = true})
        .Run(*this, other, found);
  }
  diff.RemoveAll();
  diff.m_children.swap(found.m_children);
  return diff.Count() > 0;
}
