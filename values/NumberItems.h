// Library-internal: reads the numbers of a comma-separated text one after the other, as CLumString
// reads them with blanks trimmed and no separators merged.
#pragma once

#include <string_view>

#include "platform/Framework.h"

namespace lum::detail {

class CNumberItems {
 public:
  /// The text must stay as it is while this object lives.
  explicit CNumberItems(const CString& text)
      : m_rest(text.GetString(), static_cast<std::size_t>(text.GetLength())) {}

  /// Takes the next item. False, with the output untouched, when there is none or it is not
  /// readable as the type; what follows is no use then.
  bool Take(bool& value);
  bool Take(int& value);
  bool Take(unsigned int& value);
  bool Take(float& value);
  bool Take(double& value);

 private:
  template <typename T, typename... Readers>
  bool TakeBy(T& value, Readers... readers);

  std::wstring_view m_rest;
};

}  // namespace lum::detail
