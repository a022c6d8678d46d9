// Library-internal: how the operations of formulas read their text arguments.
#pragma once

#include <string_view>
#include <type_traits>

#include "values/HeldValue.h"
#include "values/LumTypeBase.h"

namespace lum::detail {

/// The framework's string of a width.
template <typename Ch>
using StringOf = std::conditional_t<std::is_same_v<Ch, char>, CStringA, CString>;

/// The text of an argument as its GetName gives it, 8-bit (char) or wide (wchar_t); empty when it
/// has none. What the library's own kinds hold in this width is viewed where it is. Short texts of
/// ASCII are read without an allocation from every kind, also from those that hold them in the
/// other width.
template <typename Ch>
class CTextArgument {
 public:
  /// The argument must stay as it is while this object is used.
  explicit CTextArgument(const CLumType& argument) {
    if (!ViewHeld(argument)) {
      Fetch(argument);
    }
  }
  CTextArgument(const CTextArgument&) = delete;
  CTextArgument& operator=(const CTextArgument&) = delete;

  bool HasText() const { return m_hasText; }
  /// All characters, NULs included, valid as long as this object.
  std::basic_string_view<Ch> View() const { return m_view; }

 private:
  /// Longer than any field that a device sends as text, frames included.
  static constexpr int kMostShort = 80;

  bool ViewHeld(const CLumType& argument) {
    if constexpr (std::is_same_v<Ch, char>) {
      return ReadHeld<CLumIoName>(argument, m_view);
    } else {
      return ReadHeld<CLumName>(argument, m_view) || ReadHeld<CLumAnything>(argument, m_view);
    }
  }
  void Fetch(const CLumType& argument);
  bool CopyShort(const CLumType& argument);

  StringOf<Ch> m_text;
  Ch m_short[kMostShort];
  std::basic_string_view<Ch> m_view;
  bool m_hasText = true;
};

extern template class CTextArgument<char>;
extern template class CTextArgument<wchar_t>;

using CByteText = CTextArgument<char>;
using CWideText = CTextArgument<wchar_t>;

}  // namespace lum::detail
