// Library-internal: reads the numbers of a comma-separated text one after the other, as CLumString
// reads them with blanks trimmed and no separators merged.
#pragma once

#include "platform/Framework.h"

namespace lum::detail {

class CNumberItems {
 public:
  /// The text must stay as it is while this object lives.
  explicit CNumberItems(const CString& text)
      : m_at(text.GetString()), m_end(m_at + text.GetLength()) {}

  /// Takes the next item. False, with the output untouched, when there is none or it is not
  /// readable as the type; what follows is no use then.
  bool Take(bool& value);
  bool Take(int& value);
  bool Take(unsigned int& value);
  bool Take(float& value);
  bool Take(double& value);

 private:
  template <typename T>
  bool TakeBy(const wchar_t* (*read)(const wchar_t*, const wchar_t*, T&), T& value);

  const wchar_t* m_at;
  const wchar_t* m_end;
};

}  // namespace lum::detail
