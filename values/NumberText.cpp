// Writing goes through std::to_chars, which knows no locale.
#include "values/NumberText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>
#include <limits>

namespace lum::detail {
namespace {

void AppendAscii(CString& text, const char* first, const char* end, wchar_t* wide) {
  std::copy(first, end, wide);
  text.Append(wide, static_cast<int>(end - first));
}

template <typename T>
void AppendInteger(CString& text, T value) {
  constexpr int kSize = std::numeric_limits<T>::digits10 + 2;  // One more digit, and a sign.
  char digits[kSize];
  wchar_t wide[kSize];
  AppendAscii(text, digits, std::to_chars(digits, std::end(digits), value).ptr, wide);
}

}  // namespace

void AppendDecimal(CString& text, int value) { AppendInteger(text, value); }

void AppendDecimal(CString& text, unsigned int value) { AppendInteger(text, value); }

void AppendDecimal(CString& text, std::uint64_t value) { AppendInteger(text, value); }

void AppendFixed(CString& text, double value) {
  if (std::isnan(value)) {
    // Runtimes name kinds of not-a-number differently; here there is one.
    text.Append(std::signbit(value) ? L"-nan" : L"nan");
    return;
  }
  constexpr int kPrecision = 6;
  constexpr int kSize = std::numeric_limits<double>::max_exponent10 + kPrecision + 4;
  char digits[kSize];
  wchar_t wide[kSize];
  const char* end =
      std::to_chars(digits, std::end(digits), value, std::chars_format::fixed, kPrecision).ptr;
  AppendAscii(text, digits, end, wide);
}

}  // namespace lum::detail
