// Numbers are written beside the strings, which take them whole: each call of a string costs more
// than a digit does.
#include "values/NumberText.h"

#include <algorithm>

#include "values/NumberDigits.h"

namespace lum::detail {
namespace {

void AppendText(CString& text, const wchar_t* first, const wchar_t* end) {
  text.Append(first, static_cast<int>(end - first));
}

// Appends a number taken apart.
template <typename Number>
void AppendNumber(CString& text, const Number& number) {
  wchar_t digits[Number::kMostLength];
  AppendText(text, digits, number.Write(digits));
}

// Storage for the characters that replace a text: its own, if they fit in and nobody shares it.
wchar_t* GetStorage(CString& text, int length) {
  // What a longer text holds is not worth keeping: it may be shared and be copied in vain.
  constexpr int kMostKept = 64;
  if (text.GetLength() > kMostKept) {
    text.Empty();
  }
  return text.GetBuffer(length);
}

void ReplaceText(CString& text, const wchar_t* first, const wchar_t* end) {
  if (first == end) {
    text.Empty();
    return;
  }
  const auto length = static_cast<int>(end - first);
  std::copy(first, end, GetStorage(text, length));
  text.ReleaseBuffer(length);
}

// Replaces the text by a number taken apart.
template <typename Number>
void ReplaceByNumber(CString& text, const Number& number) {
  number.Write(GetStorage(text, number.Length()));
  text.ReleaseBuffer(number.Length());
}

// Replaces the text by items joined by commas. `write` writes an item of at most kMostCharacters.
template <int kMostCharacters, typename Items, typename Write>
void ReplaceByItems(CString& text, const Items& items, Write write) {
  constexpr int kRoom = 1024;
  wchar_t chunk[kRoom];
  wchar_t* at = chunk;
  auto* put = ReplaceText;
  bool isFirst = true;
  for (const auto& item : items) {
    if (at - chunk > kRoom - kMostCharacters - 1) {
      put(text, chunk, at);
      put = AppendText;
      at = chunk;
    }
    *at = L',';
    at = write(at + (isFirst ? 0 : 1), item);
    isFirst = false;
  }
  put(text, chunk, at);
}

}  // namespace

void AppendDecimal(CString& text, int value) { AppendNumber(text, CDecimal(value)); }

void AppendDecimal(CString& text, unsigned int value) { AppendNumber(text, CDecimal(value)); }

void AppendDecimal(CString& text, std::uint64_t value) { AppendNumber(text, CDecimal(value)); }

void AppendFixed(CString& text, double value) {
  wchar_t digits[CFixed::kMostLength];
  AppendText(text, digits, WriteFixed(digits, value));
}

void ReplaceByDecimal(CString& text, int value) { ReplaceByNumber(text, CDecimal(value)); }

void ReplaceByDecimal(CString& text, unsigned int value) { ReplaceByNumber(text, CDecimal(value)); }

void ReplaceByDecimal(CString& text, std::uint64_t value) {
  ReplaceByNumber(text, CDecimal(value));
}

void ReplaceByFixed(CString& text, double value) {
  CFixed number;
  if (number.Split(value)) {
    ReplaceByNumber(text, number);
    return;
  }
  ReplaceByFixed(text, std::initializer_list<double>{value});
}

void ReplaceByFixed(CString& text, std::initializer_list<double> values) {
  ReplaceByItems<CFixed::kMostLength>(text, values, WriteFixed);
}

void ReplaceByDecimal(CString& text, const std::vector<int>& values) {
  ReplaceByItems<CDecimal::kMostLength>(
      text, values, [](wchar_t* at, int value) { return CDecimal(value).Write(at); });
}

void ReplaceByShortest(CString& text, const std::vector<double>& values) {
  ReplaceByItems<kMostShortest>(text, values, WriteShortest);
}

}  // namespace lum::detail
