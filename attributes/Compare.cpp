// Comparing: builds the difference tree of two trees, pairing children by name and occurrence.
//
// One pass walks the other tree and reports what was added or changed, a second one walks this tree
// and reports what was removed. Either pass keeps its own stack; the differences below a pair of
// nodes are collected apart and attached to the pair's entry only when there are any.
#include <deque>
#include <memory>

#include "attributes/AttributeMap.h"
#include "attributes/ItemCodec.h"
#include "attributes/Overload.h"
#include "attributes/SiblingWalk.h"
#include "attributes/ValueComparison.h"

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
    if (found == nullptr) {
      found = std::make_unique<CAttributeMap>();
    }
    return found->FindCreate(child.Mnemonic(), children.Occurrence());
  }

  const CAttributeMap* walked;
  const CAttributeMap* partner;
  CPairWalk children;
  std::unique_ptr<CAttributeMap> found;  ///< None while there are no differences.
};

bool SameCount(const CAttributeMap& a, const CAttributeMap& b) {
  return NodeAccess::Children(a).size() == NodeAccess::Children(b).size();
}

class CComparisonPass {
 public:
  explicit CComparisonPass(CPassRules rules) : m_rules(rules) {}

  /// Walks one tree beside the other and adds what it finds to the children of `diff`. Returns
  /// whether both have the same names in the same order everywhere.
  bool Run(const CAttributeMap& walked, const CAttributeMap& partner, CAttributeMap& diff) {
    CPairFrame& root = Enter(walked, partner);
    root.found = std::make_unique<CAttributeMap>();
    NodeAccess::ReplaceChildren(*root.found, diff);
    while (const CAttributeMap* child = NextChild()) {
      VisitChild(*child);
    }
    NodeAccess::ReplaceChildren(diff, *root.found);
    m_frames.clear();
    return m_sameShape;
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

  CPairFrame& Enter(const CAttributeMap& walked, const CAttributeMap& partner) {
    m_sameShape = m_sameShape && SameCount(walked, partner);
    return m_frames.emplace_back(walked, partner);
  }

  void VisitChild(const CAttributeMap& child) {
    CPairFrame& frame = m_frames.back();
    const CAttributeMap* partner = frame.children.Partner();
    m_sameShape = m_sameShape && frame.children.IsInStep();
    if (partner == nullptr) {
      if (m_rules.reportUnpaired) {
        frame.Entry(child) = child;
      }
    } else if (!NodeAccess::Children(child).empty()) {
      Enter(child, *partner);
    } else {
      m_sameShape = m_sameShape && NodeAccess::Children(*partner).empty();
      CompareValues(frame, child, *partner);
    }
  }

  void LeavePair() {
    const CPairFrame& done = m_frames.back();
    CPairFrame& above = m_frames[m_frames.size() - 2];
    if (done.found != nullptr) {
      AttachBelow(above.Entry(*done.walked), *done.found);
    }
    CompareValues(above, *done.walked, *done.partner);
    m_frames.pop_back();
  }

  /// Only the removals of the first level can meet an entry that has differences already.
  void AttachBelow(CAttributeMap& entry, CAttributeMap& below) const {
    if (!m_rules.dropOrderInfo) {
      NodeAccess::ReplaceChildren(entry, below);
    } else if (entry.Count() == 0) {
      NodeAccess::MoveChildren(below, entry,
                               [](const CAttributeMap& child) { return !IsOrderInfo(child); });
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
  bool m_sameShape = true;
};

}  // namespace
}  // namespace lum::detail

bool CAttributeMap::Compare(const CAttributeMap& other, CAttributeMap& diff,
                            unsigned int flags) const {
  using lum::detail::CComparisonPass;
  CAttributeMap found;
  const bool values = (flags & COMPARE_VALUES) != 0;
  const bool added = (flags & COMPARE_ADDED) != 0;
  bool sameShape = false;
  if (values || added) {
    sameShape =
        CComparisonPass({.reportUnpaired = added, .compareValues = values, .dropOrderInfo = false})
            .Run(other, *this, found);
  }
  // Where both trees have the same names in the same order, nothing can have been removed.
  if (!sameShape && (flags & COMPARE_REMOVED) != 0) {
    CComparisonPass({.reportUnpaired = true, .compareValues = false, .dropOrderInfo = true})
        .Run(*this, other, found);
  }
  lum::detail::NodeAccess::ReplaceChildren(diff, found);
  return diff.Count() > 0;
}
