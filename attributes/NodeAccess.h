// Library-internal access to tree nodes: the lists that tie them together, and making, moving and
// destroying nodes without copies. For the algorithms on whole trees; everything else uses the
// node's interface.
//
// A node knows the list of its children and the list that it stands in, which most algorithms and
// the indexes of names need. To be small it refers to one of them only: to the list of its
// children, which knows the other one, or, without children, to the list that it stands in.
#pragma once

#include <memory>
#include <utility>

#include "attributes/AttributeMap.h"
#include "attributes/ChildList.h"
#include "attributes/NodeBlock.h"
#include "values/TextView.h"

namespace lum::detail {

/// Deletes a node wherever it stands.
struct NodeDeleter {
  void operator()(CAttributeMap* node) const noexcept;
};
using COwnedNode = std::unique_ptr<CAttributeMap, NodeDeleter>;

struct NodeAccess {
  // ---- Nodes

  static COwnedNode MakeNode(const CString& name, const CLumType& value, unsigned int flags) {
    COwnedNode node(new CAttributeMap(name, nullptr, flags));
    node->m_value.EmplaceCopy(value);
    return node;
  }
  /// Makes a copy of a node, without its children, at a place of a block.
  static COwnedNode MakeCopy(const CAttributeMap& original, CNodeBlock& block, std::size_t place) {
    COwnedNode node(::new (block.Place(place))
                        CAttributeMap(original.m_mnemonic, nullptr, original.m_flags));
    node->m_blockPlace = static_cast<std::uint8_t>(place + 1);
    block.Share();
    node->m_lastSelected = original.m_lastSelected;
    CopyValue(original, node->m_value);
    return node;
  }
  static void DeleteNode(CAttributeMap* node) noexcept;

  // ---- Lists

  /// The list of the node's children; null when it never had any.
  static CChildList* ListBelow(const CAttributeMap& node) noexcept {
    return node.m_hasListBelow ? node.m_list : nullptr;
  }
  /// The list that the node stands in; null for a root.
  static CChildList* ListAround(const CAttributeMap& node) noexcept {
    return node.m_hasListBelow ? node.m_list->Above() : node.m_list;
  }
  static CChildList& MakeListBelow(CAttributeMap& node) {
    if (ListBelow(node) == nullptr) {
      SetListBelow(node, std::make_unique<CChildList>(node));
    }
    return *ListBelow(node);
  }
  static Siblings Children(const CAttributeMap& node) noexcept {
    const CChildList* below = ListBelow(node);
    return below != nullptr ? below->Nodes() : Siblings();
  }

  /// Takes the children's list off a node, which has no children then. May be null.
  static std::unique_ptr<CChildList> TakeListBelow(CAttributeMap& node) noexcept {
    std::unique_ptr<CChildList> below(ListBelow(node));
    node.m_list = ListAround(node);
    node.m_hasListBelow = false;
    return below;
  }
  /// Gives a list of children to a node that has none.
  static void SetListBelow(CAttributeMap& node, std::unique_ptr<CChildList> below) noexcept {
    if (below != nullptr) {
      below->SetAbove(ListAround(node));
      below->SetParent(node);
      node.m_list = below.release();
      node.m_hasListBelow = true;
    }
  }

  // ---- Children

  /// The child of that name and occurrence, or null.
  static CAttributeMap* FindChild(const CAttributeMap& parent, std::wstring_view name,
                                  int occurrence) noexcept {
    const CChildList* children = ListBelow(parent);
    const int pos = children != nullptr ? children->Find(name, occurrence) : -1;
    return pos >= 0 ? children->Nodes()[static_cast<std::size_t>(pos)] : nullptr;
  }
  /// How many children have that name.
  static int CountChildren(const CAttributeMap& parent, std::wstring_view name) noexcept {
    const CChildList* children = ListBelow(parent);
    return children != nullptr ? children->Count(name) : 0;
  }
  /// Appends children with an undefined value until there is one of that name and occurrence, and
  /// returns it. Precondition: there is none, and `occurrence` is not negative.
  static CAttributeMap& CreateChild(CAttributeMap& parent, const CString& name, int occurrence);
  /// Appends a child that the parent owns from now on.
  static CAttributeMap& Append(CAttributeMap& parent, COwnedNode child) {
    CChildList& list = MakeListBelow(parent);
    list.Append(*child);
    SetListAround(*child, list);
    return *child.release();
  }
  /// Appends a child that holds a copy of `value`, without children.
  static CAttributeMap& Append(CAttributeMap& parent, const CString& name, const CLumType& value,
                               unsigned int flags) {
    return Append(parent, MakeNode(name, value, flags));
  }
  /// Appends a child with an undefined value.
  static CAttributeMap& Append(CAttributeMap& parent, const CString& name) {
    return Append(parent, name, CLumUndefined(), 0);
  }
  /// Inserts a child before the one at a place.
  static void Insert(CAttributeMap& parent, std::size_t pos, COwnedNode child) {
    CChildList& list = MakeListBelow(parent);
    list.Insert(pos, *child);
    SetListAround(*child.release(), list);
  }
  /// Takes the children that `isMoved` says to the end of those of `to`, in their order.
  template <typename IsMoved>
  static void MoveChildren(CAttributeMap& from, CAttributeMap& to, IsMoved isMoved) {
    CChildList& list = MakeListBelow(to);
    list.Reserve(list.Nodes().size() + Children(from).size());
    MakeListBelow(from).RemoveIf([&](CAttributeMap* child) {
      if (!isMoved(*child)) {
        return false;
      }
      list.Append(*child);
      SetListAround(*child, list);
      return true;
    });
  }
  /// Deletes the children of a node and gives it those of `from`.
  static void ReplaceChildren(CAttributeMap& node, CAttributeMap& from) noexcept {
    DeleteChildren(node);
    SetListBelow(node, TakeListBelow(from));
  }
  /// Appends deep copies of the children of `from`, in order, a node before what is below it.
  static void CopyChildren(const CAttributeMap& from, CAttributeMap& to);

  /// Deletes the nodes of a list and everything below: from the last to the first, a node after
  /// what is below it. The list may be null.
  static void DeleteNodes(std::unique_ptr<CChildList> list) noexcept;
  static void DeleteChildren(CAttributeMap& node) noexcept { DeleteNodes(TakeListBelow(node)); }

  // ---- Names and values

  /// Renames a node that stands in a list.
  static void RenameChild(CAttributeMap& node, const CString& name) {
    // What the list notes must come true: a copy of the name may need memory.
    CString copy(name);
    ListAround(node)->NoteRename(node, View(copy));
    node.m_mnemonic = std::move(copy);
  }
  /// Puts a copy of a node's value into an empty slot; of a node that was moved from an undefined
  /// one.
  static void CopyValue(const CAttributeMap& node, CValueSlot& copy) {
    const CLumType* value = node.m_value.Get();
    if (value != nullptr) {
      copy.EmplaceCopy(*value);
    } else {
      copy.EmplaceCopy(CLumUndefined());
    }
  }
  /// Replaces a node's value by `value` itself.
  static void SetValue(CAttributeMap& node, std::unique_ptr<CLumType> value) noexcept {
    node.m_value.Adopt(value.release());
  }
  /// Replaces a node's value by a copy.
  static void SetValueCopy(CAttributeMap& node, const CLumType& value) {
    CValueSlot copy(nullptr);
    copy.EmplaceCopy(value);
    node.m_value.TakeFrom(copy);
  }

 private:
  static void SetListAround(CAttributeMap& node, CChildList& around) noexcept {
    node.m_isChild = true;
    if (CChildList* below = ListBelow(node)) {
      below->SetAbove(&around);
    } else {
      node.m_list = &around;
    }
  }
};

inline void NodeDeleter::operator()(CAttributeMap* node) const noexcept {
  NodeAccess::DeleteNode(node);
}

}  // namespace lum::detail
