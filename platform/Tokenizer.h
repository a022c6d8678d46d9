// CLumString: splits a text at a separator and reads its items as texts and numbers.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/FrameworkString.h"

/// A list of items read from a separated text. An empty text has no items; otherwise a text with n
/// separators has n + 1, some of them possibly empty.
///
/// Number items are read strictly and independently of the process locale: the whole item, without
/// the blanks and tabs around it, must be one decimal number (an optional sign first) that the type
/// can hold. `double` and `float` also take exponents and what "%f" writes for infinities and
/// not-a-number; a magnitude too small for the type reads as zero, one too large is refused.
/// `bool` takes 1, 0, true and false in any case.
///
/// Threads: distinct lists may be used in different threads; one may be read in several while none
/// changes it.
class LUM_PLATFORM_API CLumString {
 public:
  /// Splits `text`. `trim` strips blanks and tabs around each item; `merge` takes a run of
  /// separators as one.
  CLumString(const CString& text, wchar_t separator, bool trim, bool merge);
  /// An empty list; LoadStringW fills it.
  explicit CLumString(wchar_t separator);

  /// Replaces the list by the items of `text`, split as the constructor does.
  void LoadStringW(const CString& text, bool trim, bool merge);

  int Count() const noexcept { return static_cast<int>(m_spans.size()); }
  std::vector<CString> Items() const;

  /// Reads one item. False, with the output untouched, when there is no such item or it is not
  /// readable as the type; a text item is always readable.
  bool GetItem(int index, CString& value) const;
  bool GetItem(int index, bool& value) const;
  bool GetItem(int index, int& value) const;
  bool GetItem(int index, unsigned int& value) const;
  bool GetItem(int index, unsigned short& value) const;
  bool GetItem(int index, std::uint64_t& value) const;
  bool GetItem(int index, float& value) const;
  bool GetItem(int index, double& value) const;

  /// Removes up to `count` items from `first` on; places outside the list are ignored.
  void Erase(int first, int count);

  /// The items joined by the separator.
  CString String() const;

 private:
  struct Span {
    int first;
    int length;
  };

  template <typename T>
  bool GetNumber(int index, T& value) const;

  CString m_text;
  std::vector<Span> m_spans;
  wchar_t m_separator;
};
