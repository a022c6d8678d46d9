#include "formulas/TextArgument.h"

#include <algorithm>
#include <typeinfo>

#include "values/FreeFormType.h"
#include "values/NameTypes.h"

namespace lum::detail {
namespace {

// The kind that has such texts although it holds the other width: its GetName makes a new text.
template <typename Ch>
using ConvertingKind = std::conditional_t<std::is_same_v<Ch, char>, CLumAnything, CLumIoName>;

}  // namespace

template <typename Ch>
CTextArgument<Ch>::CTextArgument(const CLumType& argument) {
  if (typeid(argument) == typeid(ConvertingKind<Ch>) && CopyShort(argument)) {
    m_hasText = true;
    return;
  }
  m_hasText = argument.GetName(m_text) != 0;
  m_view = {m_text.GetString(), static_cast<std::size_t>(m_text.GetLength())};
}

// ASCII characters alone are the same in both widths.
template <typename Ch>
bool CTextArgument<Ch>::CopyShort(const CLumType& argument) {
  using OtherChar = std::conditional_t<std::is_same_v<Ch, char>, wchar_t, char>;
  StringOf<OtherChar> text;
  if (argument.GetName(text) == 0 || text.GetLength() > kMostShort) {
    return false;
  }
  const OtherChar* const end = text.GetString() + text.GetLength();
  const auto isAscii = [](OtherChar ch) { return ch >= 0 && ch < 0x80; };
  if (!std::all_of(text.GetString(), end, isAscii)) {
    return false;
  }
  std::transform(text.GetString(), end, m_short, [](OtherChar ch) { return static_cast<Ch>(ch); });
  m_view = {m_short, static_cast<std::size_t>(text.GetLength())};
  return true;
}

template class CTextArgument<char>;
template class CTextArgument<wchar_t>;

}  // namespace lum::detail
