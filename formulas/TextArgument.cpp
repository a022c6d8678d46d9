#include "formulas/TextArgument.h"

#include <algorithm>

namespace lum::detail {
namespace {

// The kind that has such texts although it holds the other width: its GetName makes a new text.
template <typename Ch>
using ConvertingKind = std::conditional_t<std::is_same_v<Ch, char>, CLumAnything, CLumIoName>;

}  // namespace

template <typename Ch>
bool CTextArgument<Ch>::Make(const CLumType& argument, View& made) {
  if (CopyShort(argument, made)) {
    return true;
  }
  const bool hasText = argument.GetName(m_text.emplace()) != 0;
  made = lum::detail::View(*m_text);
  return hasText;
}

// ASCII characters alone are the same in both widths.
template <typename Ch>
bool CTextArgument<Ch>::CopyShort(const CLumType& argument, View& copy) {
  using OtherChar = std::conditional_t<std::is_same_v<Ch, char>, wchar_t, char>;
  std::basic_string_view<OtherChar> text;
  if (!ReadHeld<ConvertingKind<Ch>>(argument, text) || text.size() > kMostShort) {
    return false;
  }
  const auto isAscii = [](OtherChar ch) { return ch >= 0 && ch < 0x80; };
  if (!std::all_of(text.begin(), text.end(), isAscii)) {
    return false;
  }
  std::transform(text.begin(), text.end(), m_short,
                 [](OtherChar ch) { return static_cast<Ch>(ch); });
  copy = View(m_short, text.size());
  return true;
}

template class CTextArgument<char>;
template class CTextArgument<wchar_t>;

}  // namespace lum::detail
