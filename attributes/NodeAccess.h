// Library-internal access to a tree node: its list of children, and appending children and setting
// values without copies. For the algorithms on whole trees; everything else uses the node's
// interface.
#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "attributes/AttributeMap.h"

namespace lum::detail {

struct NodeAccess {
  using Nodes = std::vector<CAttributeMap*>;

  static Nodes& Children(CAttributeMap& node) noexcept { return node.m_children; }
  static const Nodes& Children(const CAttributeMap& node) noexcept { return node.m_children; }

  /// Appends a child that the parent owns from now on.
  static CAttributeMap& Append(CAttributeMap& parent, std::unique_ptr<CAttributeMap> child) {
    parent.m_children.push_back(child.get());
    return *child.release();
  }

  /// Appends a child that holds `value` itself.
  static CAttributeMap& Append(CAttributeMap& parent, const CString& name,
                               std::unique_ptr<CLumType> value, unsigned int flags) {
    std::unique_ptr<CAttributeMap> child(new CAttributeMap(name, value.get(), flags));
    (void)value.release();
    return Append(parent, std::move(child));
  }

  /// Appends a child with an undefined value.
  static CAttributeMap& Append(CAttributeMap& parent, const CString& name) {
    return Append(parent, std::make_unique<CAttributeMap>(name));
  }

  /// Appends a copy of `node` alone, without what is below it.
  static CAttributeMap& AppendCopyOfNode(CAttributeMap& parent, const CAttributeMap& node) {
    std::unique_ptr<CLumType> value(node.CopyValue());
    CAttributeMap& copy = Append(parent, node.Mnemonic(), std::move(value), node.Flags());
    copy.m_lastSelected = node.m_lastSelected;
    return copy;
  }

  /// Replaces a node's value by `value` itself.
  static void SetValue(CAttributeMap& node, std::unique_ptr<CLumType> value) noexcept {
    node.AdoptValue(value.release());
  }
};

}  // namespace lum::detail
