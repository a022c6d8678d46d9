// Library-internal: how the operations of formulas read their text arguments.
#pragma once

#include <optional>
#include <string_view>
#include <type_traits>

#include "values/HeldValue.h"
#include "values/LumTypeBase.h"

namespace lum::detail {

/// The framework's string of a width.
template <typename Ch>
using StringOf = std::conditional_t<std::is_same_v<Ch, char>, CStringA, CString>;

/// Reads one text argument, 8-bit (char) or wide (wchar_t), and keeps it if it must be made. What
/// the library's own kinds hold in this width is viewed where it is. Short texts of ASCII are read
/// without an allocation from every kind, also from those that hold them in the other width.
template <typename Ch>
class CTextArgument {
 public:
  using View = std::basic_string_view<Ch>;

  CTextArgument() = default;
  CTextArgument(const CTextArgument&) = delete;
  CTextArgument& operator=(const CTextArgument&) = delete;

  /// The argument's text as its GetName gives it, NULs included; nothing when it has none. Valid as
  /// long as this object lives and the argument stays as it is.
  std::optional<View> Read(const CLumType& argument) {
    View held;
    if (ReadHeldText(argument, held)) {
      return held;
    }
    View made;
    return Make(argument, made) ? std::optional(made) : std::nullopt;
  }
  /// The same, empty when there is none.
  View ReadOrEmpty(const CLumType& argument) { return Read(argument).value_or(View()); }

 private:
  /// Longer than any field that a device sends as text, frames included.
  static constexpr int kMostShort = 80;

  static bool ReadHeldText(const CLumType& argument, View& text) {
    if constexpr (std::is_same_v<Ch, char>) {
      return ReadHeld<CLumIoName>(argument, text);
    } else {
      return ReadHeld<CLumName>(argument, text) || ReadHeld<CLumAnything>(argument, text);
    }
  }
  bool Make(const CLumType& argument, View& made);
  bool CopyShort(const CLumType& argument, View& copy);

  std::optional<StringOf<Ch>> m_text;
  Ch m_short[kMostShort];
};

extern template class CTextArgument<char>;
extern template class CTextArgument<wchar_t>;

using CByteText = CTextArgument<char>;
using CWideText = CTextArgument<wchar_t>;

}  // namespace lum::detail
