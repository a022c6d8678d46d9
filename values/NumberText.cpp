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

template <typename T>
void AppendInteger(CString& text, T value) {
  wchar_t digits[kMostDecimal];
  AppendText(text, digits, WriteDecimal(digits, value));
}

template <typename T>
void ReplaceByInteger(CString& text, T value) {
  wchar_t digits[kMostDecimal];
  ReplaceText(text, digits, WriteDecimal(digits, value));
}

// Replaces the text by items of which `write` writes each, in at most kMostCharacters.
template <int kMostCharacters, typename Items, typename Write>
void ReplaceByItems(CString& text, const Items& items, Write write) {
  constexpr int kRoom = 1024;
  wchar_t chunk[kRoom];
  wchar_t* at = chunk;
  bool isFirst = true;
  bool isAppending = false;
  for (const auto& item : items) {
    if (at - chunk > kRoom - kMostCharacters - 1) {
      isAppending ? AppendText(text, chunk, at) : ReplaceText(text, chunk, at);
      isAppending = true;
      at = chunk;
    }
    *at = L',';
    at = write(at + (isFirst ? 0 : 1), item);
    isFirst = false;
  }
  isAppending ? AppendText(text, chunk, at) : ReplaceText(text, chunk, at);
}

}  // namespace

void AppendDecimal(CString& text, int value) { AppendInteger(text, value); }

void AppendDecimal(CString& text, unsigned int value) { AppendInteger(text, value); }

void AppendDecimal(CString& text, std::uint64_t value) { AppendInteger(text, value); }

void AppendFixed(CString& text, double value) {
  wchar_t digits[kMostFixed];
  AppendText(text, digits, WriteFixed(digits, value));
}

void ReplaceText(CString& text, const wchar_t* first, const wchar_t* end) {
  // What a longer text holds is not worth keeping: it may be shared and be copied in vain.
  constexpr int kMostKept = 64;
  if (text.GetLength() > kMostKept) {
    text.Empty();
  }
  const auto length = static_cast<int>(end - first);
  std::copy(first, end, text.GetBuffer(length));
  text.ReleaseBuffer(length);
}

void ReplaceByDecimal(CString& text, int value) { ReplaceByInteger(text, value); }

void ReplaceByDecimal(CString& text, unsigned int value) { ReplaceByInteger(text, value); }

void ReplaceByDecimal(CString& text, std::uint64_t value) { ReplaceByInteger(text, value); }

void ReplaceByFixed(CString& text, double value) {
  wchar_t digits[kMostFixed];
  ReplaceText(text, digits, WriteFixed(digits, value));
}

void ReplaceByFixed(CString& text, std::initializer_list<double> values) {
  ReplaceByItems<kMostFixed>(text, values, WriteFixed);
}

void ReplaceByDecimal(CString& text, const std::vector<int>& values) {
  ReplaceByItems<kMostDecimal>(text, values,
                               [](wchar_t* at, int value) { return WriteDecimal(at, value); });
}

void ReplaceByShortest(CString& text, const std::vector<double>& values) {
  ReplaceByItems<kMostShortest>(text, values, WriteShortest);
}

}  // namespace lum::detail
