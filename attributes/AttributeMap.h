// CAttributeMap: the attribute tree. The functions that store trees in sectioned configuration
// files stand in AttributePersistence.h, which this header includes.
//
// Every node is an attribute record with an ordered list of children. Names need not be unique
// among siblings: a child is addressed by its name and its occurrence, the 0-based count of earlier
// siblings of the same name. Names are compared exactly.
#pragma once

#include "attributes/AttributeRec.h"

class FileObject;

namespace lum::detail {
class CChildList;
}

/// A tree node and the tree below it, which it owns. Copies are deep. Bulk operations (copy,
/// destruction, Overload, Compare, loading, saving) take time in proportion to the number of nodes
/// and use no call stack in proportion to the depth.
///
/// Threads: distinct trees may be used in different threads, also copies of each other; one tree
/// may be read and searched in several while none changes any node of it.
///
/// A call that runs out of memory throws std::bad_alloc and leaves the tree, its arguments and
/// outputs as they were, unless it says otherwise.
class LUM_ATTRIBUTES_API CAttributeMap : public CAttributeRec {
 public:
  /// An undefined value, flags 0, no children.
  CAttributeMap();
  CAttributeMap(const CString& name);
  /// Holds a copy of `value`.
  CAttributeMap(const CString& name, const CLumType& value, unsigned int flags);
  CAttributeMap(const CAttributeMap& other);
  /// Takes value and children over; the source keeps its name and has neither.
  CAttributeMap(CAttributeMap&& other) noexcept;
  /// Assigning a descendant of this very node is safe.
  CAttributeMap& operator=(const CAttributeMap& other);
  CAttributeMap& operator=(CAttributeMap&& other) noexcept;
  ~CAttributeMap() override;

  // Counting and access by place.

  /// How many direct children there are, of any name or of the given one.
  int Count() const noexcept;
  int Count(const CString& name) const;
  /// The child at a place of the sibling list, or the shared empty node at or past the end.
  /// Precondition: pos >= 0.
  const CAttributeMap& operator[](int pos) const;
  /// The child at a place; unnamed children are appended until the place exists. Those made before
  /// memory ran out stay.
  CAttributeMap& FindCreateIndex(int pos);
  /// The occurrence of the child at a place. Precondition: 0 <= pos < Count().
  int RetrieveIndex(int pos) const;

  // Look-up by name and occurrence. Among few children none of these allocates when the child
  // exists; many children that are searched again and again get an index, which additions and
  // renames keep and other changes drop. Several threads may search a tree that none changes.

  /// The child's place in the sibling list, or -1.
  int FindAttribute(const CString& name, int n = 0) const;
  bool Has(const CString& name, int n = 0) const;
  /// The child, or the shared empty node: look-ups can be chained without tests.
  const CAttributeMap& Find(const CString& name, int n = 0) const;
  /// The child; children of that name with an undefined value are appended until it exists.
  /// Those made before memory ran out stay. Precondition: n >= 0.
  CAttributeMap& FindCreate(const CString& name, int n = 0);
  /// The child, or null.
  const CAttributeMap* GetAttrMap(const CString& name, int n = 0) const;
  CAttributeMap* GetAttrMap(const CString& name, int n = 0);
  /// The child's value, or a shared undefined value that refuses every access.
  const CLumType& FindValue(const CString& name, int n = 0) const;
  CLumType& FindValue(const CString& name, int n = 0);

  // Adding and removing. A returned node lives until it or an ancestor is removed.

  /// Appends a child, whether or not one of that name exists.
  CAttributeMap& Add(const CString& name);
  CAttributeMap& Add(const CAttributeMap& node);
  CAttributeMap& Add(const CString& name, const CLumType& value, unsigned int flags);
  /// Inserts a child before the n-th child of that name. Returns the child at place n of the whole
  /// sibling list, which is the new one only when that occurrence stood there: look it up instead.
  /// Precondition: the n-th occurrence exists.
  CAttributeMap& Insert(int n, const CString& name, const CLumType& value, unsigned int flags);
  /// Appends a child with a copy of the default value that the definition table gives the name.
  /// Null, with nothing added, when a child of that name exists or there is no default value.
  CAttributeRec* AppendNew(const CString& name);
  /// The same with a copy of `value`.
  CAttributeRec* AppendNew(const CString& name, const CLumType& value);
  /// Removes the child at a place. Precondition: 0 <= pos < Count().
  void Remove(int pos);
  /// Removes one child; false when there is none.
  bool Remove(const CString& name, int n = 0);
  /// Removes every child of that name, or all children.
  void RemoveAll(const CString& name);
  void RemoveAll();

  // Flags and marks.

  /// Sets or clears FLAG_DISABLED of the first child of that name; false when there is none.
  bool DisableAttribute(const CString& name, bool disable);
  /// True when some child is editable: FLAG_EDITABLE set and, for a FLAG_GROUP, something editable
  /// below it. Both names stand for the same test.
  bool HasEditableAttributes() const;
  bool HasEditorAttributes() const;
  /// Sets this node's own name.
  void SetGroup(const CString& name) { SetMnemonic(name); }
  /// A mark for views; copied and merged with the node, never stored in files.
  void SetLastSelected(bool selected) noexcept { m_lastSelected = selected; }
  bool IsLastSelected() const noexcept { return m_lastSelected; }
  /// Kept for interface compatibility; has no effect.
  void DumpContents(int, int) const {}

  // Typed access to the value of the first child of a name, through the value's own typed accessor;
  // the text forms through GetName and SetName, so they serve attributes whose value is a name.

  /// False when there is no such child or its kind refuses the access; `flags` is then untouched.
  bool GetAttribValue(const CString& name, int& v, unsigned int& flags) const;
  bool GetAttribValue(const CString& name, bool& v, unsigned int& flags) const;
  bool GetAttribValue(const CString& name, double& v, unsigned int& flags) const;
  bool GetAttribValue(const CString& name, double& x, double& y, unsigned int& flags) const;
  bool GetAttribValue(const CString& name, double& x, double& y, double& z,
                      unsigned int& flags) const;
  bool GetAttribValue(const CString& name, CDataInfo& v, unsigned int& flags) const;
  bool GetAttribValue(const CString& name, CCompOffset& v, unsigned int& flags) const;
  bool GetAttribValue(const CString& name, CString& v, unsigned int& flags) const;

  /// False, with nothing changed and nothing created, when there is no such child or its kind
  /// refuses the value. With `setFlags` the child's whole flag word becomes `flags`.
  bool SetAttribValue(const CString& name, int v, bool setFlags, unsigned int flags);
  bool SetAttribValue(const CString& name, bool v, bool setFlags, unsigned int flags);
  bool SetAttribValue(const CString& name, double v, bool setFlags, unsigned int flags);
  bool SetAttribValue(const CString& name, double x, double y, bool setFlags, unsigned int flags);
  bool SetAttribValue(const CString& name, double x, double y, double z, bool setFlags,
                      unsigned int flags);
  bool SetAttribValue(const CString& name, const CDataInfo& v, bool setFlags, unsigned int flags);
  bool SetAttribValue(const CString& name, const CCompOffset& v, bool setFlags, unsigned int flags);
  bool SetAttribValue(const CString& name, const CString& v, bool setFlags, unsigned int flags);
  /// Without this form a literal would be taken as a bool.
  bool SetAttribValue(const CString& name, const wchar_t* v, bool setFlags, unsigned int flags);

  // Merging and comparing: children are paired by name and occurrence, whatever their places.

  /// Bits of Overload's flag word.
  enum OVERLOAD_FLAGS : unsigned int {
    OVERLOAD_COPY_FLAGS = 0x01,
    OVERLOAD_ORDER_INFO = 0x02,
    OVERLOAD_ADD_NEW = 0x04,
    OVERLOAD_STRICT = 0x10,
    OVERLOAD_REPLACE = 15,  ///< Exactly this word: the node becomes a copy of the source.
  };

  /// Bits of Compare's flag word.
  enum COMPARE_FLAGS : unsigned int {
    COMPARE_VALUES = 0x01,
    COMPARE_ADDED = 0x02,    ///< Report what only the other tree has.
    COMPARE_REMOVED = 0x04,  ///< Report what only this tree has.
  };

  /// Lays `src` over this node. With the word OVERLOAD_REPLACE the whole node becomes a copy of
  /// `src`, own name, value and flags included; any other word is decoded into the switches below.
  /// `src` may be a descendant of this node. When memory runs out midway, what was merged before
  /// stays; a replaced node is as it was.
  void Overload(const CAttributeMap& src, unsigned int flags);
  /// Assigns the values of src's children and everything below to the matching nodes here, which
  /// keep their own kinds and convert as those do. A source value of no defined kind is not
  /// assigned, nor is any to a node with FLAG_KEEP_VALUE (with `strict`, FLAG_KEEP_VALUE_STRICT as
  /// well, on the first level only). `copyFlags` copies flag words; marks are always copied.
  /// `addNew` appends copies of what is missing here. Children named "OrderInfo" take part only on
  /// the first level and only with `orderInfo`.
  void Overload(const CAttributeMap& src, bool addNew, bool copyFlags, bool orderInfo, bool strict);

  /// Fills `diff` with the differences, in the same paths: the other tree's value and flags for
  /// what changed or was added, this tree's node for what was removed. Two numbers are equal within
  /// Epsilon of ten times the larger magnitude; other values when their texts are, or when this
  /// tree's node has FLAG_KEEP_VALUE. Flags and marks are not compared. Returns whether there is
  /// any difference. `diff` must not be part of either tree.
  bool Compare(const CAttributeMap& other, CAttributeMap& diff, unsigned int flags) const;

  // Persistence of the node itself; see AttributePersistence.h for the item format.

  /// Writes the children as items of a section, under keys that carry this node's name. Removes
  /// nothing. False when `file` is null or refuses an item; items already written stay, also when
  /// memory runs out midway.
  bool SaveToFObj(FileObject* file, const CString& section) const;
  /// Reads what SaveToFObj wrote. A node without children is filled when `addNew` is set; one with
  /// children is merged as Overload does and keeps its kinds and protected values. False when
  /// `file` is null. A node without children stays so when memory runs out midway.
  bool LoadFromFObj(const FileObject* file, const CString& section, bool addNew, bool copyFlags,
                    bool orderInfo);

 private:
  friend struct lum::detail::NodeAccess;

  /// Takes ownership of `value`.
  CAttributeMap(const CString& name, CLumType* value, unsigned int flags)
      : CAttributeRec(name, value, flags) {}

  static const CAttributeMap& NullAttribute();

  /// The list of the node's children; as long as it has none, the list that it stands in itself.
  lum::detail::CChildList* m_list = nullptr;
};

#include "attributes/AttributePersistence.h"
