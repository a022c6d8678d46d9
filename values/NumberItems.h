// Library-internal: reads the numbers of a comma-separated text one after the other, as CLumString
// reads them with blanks trimmed and no separators merged.
#pragma once

#include "platform/Framework.h"

namespace lum::detail {

/// Reads the item at a place, up to the next comma or `end`, and returns the place behind it and
/// its comma. Null, with the output untouched, when it is not readable as the type.
const wchar_t* ReadNumberItem(const wchar_t* at, const wchar_t* end, bool& value);
const wchar_t* ReadNumberItem(const wchar_t* at, const wchar_t* end, int& value);
const wchar_t* ReadNumberItem(const wchar_t* at, const wchar_t* end, unsigned int& value);
const wchar_t* ReadNumberItem(const wchar_t* at, const wchar_t* end, float& value);
const wchar_t* ReadNumberItem(const wchar_t* at, const wchar_t* end, double& value);

class CNumberItems {
 public:
  /// The text must stay as it is while this object lives.
  explicit CNumberItems(const CString& text)
      : m_at(text.GetString()), m_end(m_at + text.GetLength()) {}

  /// Takes the next item. False, with the output untouched, when there is none or it is not
  /// readable as the type; what follows is no use then.
  template <typename T>
  bool Take(T& value) {
    // An empty item, which the last one may be, is none that any type reads.
    const wchar_t* const next = m_at == m_end ? nullptr : ReadNumberItem(m_at, m_end, value);
    m_at = next == nullptr ? m_at : next;
    return next != nullptr;
  }

 private:
  const wchar_t* m_at;
  const wchar_t* m_end;
};

}  // namespace lum::detail
