// Copies and the end of whole trees. Neither recurses, so a tree may be as deep as memory allows.
#include "attributes/NodeAccess.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace lum::detail {
namespace {

struct BlockReleaser {
  void operator()(CNodeBlock* block) const noexcept { block->Release(); }
};

/// A node whose children are being copied, and how far the copy has come.
class CCopyFrame {
 public:
  CCopyFrame(Siblings from, CAttributeMap& to) : m_from(from), m_to(&to) {}

  bool AtEnd() const noexcept { return m_next == m_from.size(); }
  const CAttributeMap& Child() const noexcept { return *m_from[m_next]; }
  /// Appends a copy of the child alone and goes on to the next one.
  CAttributeMap& CopyChild() {
    const std::size_t place = m_next % CNodeBlock::kMostNodes;
    if (place == 0) {
      m_block.reset(CNodeBlock::Make(std::min(m_from.size() - m_next, CNodeBlock::kMostNodes)));
    }
    return NodeAccess::Append(*m_to, NodeAccess::MakeCopy(*m_from[m_next++], *m_block, place));
  }

 private:
  Siblings m_from;
  CAttributeMap* m_to;
  std::size_t m_next = 0;
  std::unique_ptr<CNodeBlock, BlockReleaser> m_block;
};

}  // namespace

void NodeAccess::DeleteNode(CAttributeMap* node) noexcept {
  const std::size_t place = node->m_blockPlace;
  if (place == 0) {
    delete node;
  } else {
    CNodeBlock* block = CNodeBlock::Of(*node, place - 1);
    node->CAttributeMap::~CAttributeMap();
    block->Release();
  }
}

CAttributeMap& NodeAccess::CreateChild(CAttributeMap& parent, const CString& name, int occurrence) {
  // Without the wanted one, the first of a name tells that there is none at all.
  int missing = occurrence == 0 ? 0 : occurrence - CountChildren(parent, View(name));
  for (; missing > 0; --missing) {
    Append(parent, name);
  }
  return Append(parent, name);
}

void NodeAccess::CopyChildren(const CAttributeMap& from, CAttributeMap& to) {
  std::vector<CCopyFrame> frames;
  const auto enter = [&frames](const CAttributeMap& source, CAttributeMap& target) {
    const Siblings children = Children(source);
    if (!children.empty()) {
      MakeListBelow(target).Reserve(children.size());
      frames.emplace_back(children, target);
    }
  };
  enter(from, to);
  while (!frames.empty()) {
    CCopyFrame& frame = frames.back();
    if (frame.AtEnd()) {
      frames.pop_back();
    } else {
      const CAttributeMap& child = frame.Child();
      enter(child, frame.CopyChild());
    }
  }
}

void NodeAccess::DeleteNodes(std::unique_ptr<CChildList> top) noexcept {
  CChildList* list = top.get();
  while (list != nullptr) {
    if (!list->Nodes().empty()) {
      CChildList* below = ListBelow(*list->Nodes().back());
      if (below != nullptr) {
        list = below;
      } else {
        DeleteNode(list->TakeLast());
      }
      continue;
    }
    CChildList* above = list == top.get() ? nullptr : list->Above();
    if (above != nullptr) {
      TakeListBelow(list->Parent()).reset();
    }
    list = above;
  }
}

}  // namespace lum::detail
