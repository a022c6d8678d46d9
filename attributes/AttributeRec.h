// CAttributeRec: one named attribute, a mnemonic with an owned value and a word of flags.
#pragma once

#include <cstdint>

#include "values/LumType.h"
#include "values/ValueSlot.h"

namespace lum::detail {
struct NodeAccess;
}

/// A named value with flags; the base of the tree node CAttributeMap. It owns its value and every
/// copy is deep. The value is never null except in a record that was moved from.
///
/// Threads: distinct records may be used in different threads; one may be read in several while
/// none changes it or its value.
class LUM_ATTRIBUTES_API CAttributeRec {
 public:
  /// The bits that mean something to this library; files hold the numbers, which never change. All
  /// other bits belong to the applications and are carried, stored and compared as they are.
  enum FLAGS : unsigned int {
    FLAG_EDITABLE = 0x0001,      ///< Shown to the user in an attribute editor.
    FLAG_GROUP = 0x0010,         ///< Editable only when one of its children is.
    FLAG_DISABLED = 0x0040,      ///< See Disable and IsDisabled.
    FLAG_SKIP_ON_LOAD = 0x0080,  ///< Ordered loading leaves the entry out when asked to.
    FLAG_KEEP_VALUE = 0x0400,    ///< A merge keeps the value; a text difference is not reported.
    FLAG_KEEP_VALUE_STRICT = 0x1000,  ///< A strict merge keeps the value as well.
    FLAG_TRANSIENT = 0x8000,          ///< Never written to a file, nor is anything below.
  };

  /// Holds a copy of `value`.
  CAttributeRec(const CString& name, const CLumType& value, unsigned int flags);
  /// A copy of a record that was moved from holds an undefined value.
  CAttributeRec(const CAttributeRec& other);
  /// Takes the value over; the source keeps its name and flags and has no value.
  CAttributeRec(CAttributeRec&& other) noexcept;
  CAttributeRec& operator=(const CAttributeRec& other);
  CAttributeRec& operator=(CAttributeRec&& other) noexcept;
  virtual ~CAttributeRec();

  void SetMnemonic(const CString& name);
  const CString& Mnemonic() const noexcept { return m_mnemonic; }

  /// The owned value, valid until it is replaced. Precondition: the record was not moved from.
  const CLumType& Value() const noexcept { return *m_value.Get(); }
  CLumType& Value() noexcept { return *m_value.Get(); }
  /// Replaces the value by a copy, so the attribute's kind becomes that of `value`. Setting the
  /// record's own value changes nothing.
  void SetValue(const CLumType& value);

  void SetFlags(unsigned int flags) noexcept { m_flags = flags; }
  unsigned int Flags() const noexcept { return m_flags; }
  /// Sets or clears the bits of `flag`, which may hold several.
  void SetFlag(FLAGS flag, bool on) noexcept;
  /// True when any bit of `flag` is set.
  bool IsFlagSet(FLAGS flag) const noexcept { return (m_flags & flag) != 0; }
  void Disable(bool on) noexcept { SetFlag(FLAG_DISABLED, on); }
  bool IsDisabled() const noexcept { return IsFlagSet(FLAG_DISABLED); }

 protected:
  /// Takes ownership of `value`, which is not null.
  CAttributeRec(const CString& name, CLumType* value, unsigned int flags)
      : m_mnemonic(name), m_value(value), m_flags(flags) {}

 private:
  // The tree builds its nodes, and keeps its marks in gaps of the record.
  friend class CAttributeMap;
  friend struct lum::detail::NodeAccess;

  /// A new copy of the value, owned by the caller; an undefined one when the record was moved from.
  CLumType* CopyValue() const;

  CString m_mnemonic;
  [[no_unique_address]] lum::detail::CValueSlot m_value;
  bool m_isChild : 1 = false;       ///< A node that stands in a list, which may index its name.
  bool m_hasListBelow : 1 = false;  ///< See CAttributeMap::m_list.
  bool m_lastSelected : 1 = false;  ///< See CAttributeMap::SetLastSelected.
  std::uint8_t m_blockPlace =
      0;  ///< One more than the node's place in its CNodeBlock; 0: it has none.
  unsigned int m_flags;
};
