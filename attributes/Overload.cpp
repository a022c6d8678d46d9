// Merging: lays one tree over another, pairing children by name and occurrence.
#include "attributes/Overload.h"

#include <deque>
#include <memory>

#include "attributes/ItemCodec.h"
#include "attributes/SiblingWalk.h"

namespace lum::detail {
namespace {

/// A pair of nodes whose children are being merged.
struct CMergeFrame {
  CMergeFrame(CAttributeMap& targetNode, const CAttributeMap& sourceNode)
      : target(&targetNode), sources(sourceNode, targetNode) {}

  CAttributeMap* target;
  CPairWalk sources;
};

unsigned int ProtectingFlags(bool strict) {
  return strict ? CAttributeRec::FLAG_KEEP_VALUE | CAttributeRec::FLAG_KEEP_VALUE_STRICT
                : CAttributeRec::FLAG_KEEP_VALUE;
}

/// Merges one node into its partner, without what is below.
void MergeNode(CAttributeMap& target, const CAttributeMap& source, bool copyFlags, bool strict) {
  const bool isProtected = (target.Flags() & ProtectingFlags(strict)) != 0;
  if (!isProtected && source.Value().Type() != CLumType::TYPE_UNDEFINED) {
    target.Value() = source.Value();
  }
  if (copyFlags) {
    target.SetFlags(source.Flags());
  }
  target.SetLastSelected(source.IsLastSelected());
}

bool IsBelow(const CAttributeMap& node, const CAttributeMap& tree) {
  const CChildList* around = NodeAccess::ListAround(node);
  while (around != nullptr && &around->Parent() != &tree) {
    around = around->Above();
  }
  return around != nullptr;
}

bool ShareNodes(const CAttributeMap& a, const CAttributeMap& b) {
  return &a == &b || IsBelow(a, b) || IsBelow(b, a);
}

}  // namespace

void Overlay(CAttributeMap& target, const CAttributeMap& source, COverlaySwitches switches) {
  std::deque<CMergeFrame> frames;
  frames.emplace_back(target, source);
  while (!frames.empty()) {
    CMergeFrame& frame = frames.back();
    const CAttributeMap* child = frame.sources.Next();
    if (child == nullptr) {
      frames.pop_back();
      continue;
    }
    const bool firstLevel = frames.size() == 1;
    if (IsOrderInfo(*child) && !(firstLevel && switches.orderInfo)) {
      continue;
    }
    CAttributeMap* partner = frame.sources.Partner();
    if (partner != nullptr) {
      MergeNode(*partner, *child, switches.copyFlags, firstLevel && switches.strict);
      if (child->Count() != 0) {
        frames.emplace_back(*partner, *child);
      }
    } else if (switches.addNew) {
      NodeAccess::Append(*frame.target, COwnedNode(new CAttributeMap(*child)));
    }
  }
}

}  // namespace lum::detail

void CAttributeMap::Overload(const CAttributeMap& src, unsigned int flags) {
  if (flags == OVERLOAD_REPLACE) {
    *this = src;
    return;
  }
  Overload(src, (flags & OVERLOAD_ADD_NEW) != 0, (flags & OVERLOAD_COPY_FLAGS) != 0,
           (flags & OVERLOAD_ORDER_INFO) != 0, (flags & OVERLOAD_STRICT) != 0);
}

void CAttributeMap::Overload(const CAttributeMap& src, bool addNew, bool copyFlags, bool orderInfo,
                             bool strict) {
  const lum::detail::COverlaySwitches switches{addNew, copyFlags, orderInfo, strict};
  if (lum::detail::ShareNodes(*this, src)) {
    // Merging from a copy keeps the source from changing while it is read.
    const CAttributeMap source(src);  // NOLINT(performance-unnecessary-copy-initialization)
    lum::detail::Overlay(*this, source, switches);
  } else {
    lum::detail::Overlay(*this, src, switches);
  }
}
