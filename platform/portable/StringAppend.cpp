// Numbers are written by std::to_chars, which knows no locale.
#include "platform/StringAppend.h"

#include <charconv>
#include <cmath>

namespace {

// Room for any int and for the shortest text of any double (24 characters).
constexpr int kNumberSize = 32;

void AppendAscii(CString& text, const char* first, const char* end) {
  wchar_t wide[kNumberSize];
  int length = 0;
  for (; first != end; ++first) {
    wide[length++] = static_cast<wchar_t>(*first);
  }
  text.Append(wide, length);
}

template <typename T>
CString& AppendNumber(CString& text, T value) {
  char digits[kNumberSize];
  AppendAscii(text, digits, std::to_chars(digits, std::end(digits), value).ptr);
  return text;
}

}  // namespace

CString& operator<<(CString& text, int value) { return AppendNumber(text, value); }

CString& operator<<(CString& text, unsigned int value) { return AppendNumber(text, value); }

CString& operator<<(CString& text, double value) {
  // Runtimes name kinds of not-a-number differently; here there is one.
  if (std::isnan(value)) {
    return text << (std::signbit(value) ? L"-nan" : L"nan");
  }
  return AppendNumber(text, value);
}

CString& operator<<(CString& text, wchar_t value) {
  text.AppendChar(value);
  return text;
}

CString& operator<<(CString& text, const wchar_t* value) {
  text.Append(value);
  return text;
}

CString& operator<<(CString& text, const CString& value) {
  text.Append(value);
  return text;
}
