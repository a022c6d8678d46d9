// Memory for nodes that are made together, as the children of a copied node are: one allocation for
// many, side by side in the order in which they are walked.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>

#include "attributes/AttributeMap.h"

namespace lum::detail {

/// Places for nodes of one list of children, so that no two threads share a block. It frees itself
/// when its last node and its maker are gone; a node that stays alone keeps this little memory.
class CNodeBlock {
 public:
  static constexpr std::size_t kMostNodes = 64;

  /// Precondition: 0 < nodes <= kMostNodes. The caller has a share of the block.
  static CNodeBlock* Make(std::size_t nodes) {
    return ::new (::operator new(sizeof(CNodeBlock) + nodes * sizeof(CAttributeMap))) CNodeBlock;
  }
  void Share() noexcept { ++m_owners; }
  void Release() noexcept {
    if (--m_owners == 0) {
      ::operator delete(this);
    }
  }
  void* Place(std::size_t index) noexcept {
    return reinterpret_cast<std::byte*>(this + 1) + index * sizeof(CAttributeMap);
  }
  /// The block of the node that stands at a place.
  static CNodeBlock* Of(CAttributeMap& node, std::size_t index) noexcept {
    return reinterpret_cast<CNodeBlock*>(reinterpret_cast<std::byte*>(&node) -
                                         index * sizeof(CAttributeMap)) -
           1;
  }

 private:
  CNodeBlock() = default;

  alignas(CAttributeMap) std::size_t m_owners = 1;
};

}  // namespace lum::detail
