// Library-internal: cuts a definition line of the usual form into views of its items.
#pragma once

#include <string_view>

namespace lum::detail {

inline constexpr wchar_t kItemSeparator = L',';

struct DefinitionItems {
  std::wstring_view mnemonic;
  int id = 0;
  std::wstring_view name;
  int type = 0;
  int controlType = 0;
  std::wstring_view bitmapFile;
  std::wstring_view defaultText;
};

/// Cuts a line that has all its items in the form that nearly every line gives them: numbers are
/// one to nine digits, and blanks stand around no item of a default value that has several. The
/// items are then what CLumString makes of the line: it strips blanks and tabs around each, takes
/// such digits as their number in any of its integer types that holds it, and joins the items of
/// the default with the separator that they had between them. False for any other line.
bool CutUsualLine(std::wstring_view line, DefinitionItems& items);

}  // namespace lum::detail
