// Numbers are written beside the strings, which take them whole: each call of a string costs more
// than a digit does.
#include "values/NumberText.h"

#include <algorithm>
#include <utility>

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

// Replaces a text by characters that `write` writes: in its own storage, if they fit in and nobody
// shares it.
template <typename Write>
void ReplaceCharacters(CString& text, int length, Write write) {
  // What a longer text holds is not worth keeping: it may be shared and be copied in vain.
  constexpr int kMostKept = 64;
  if (text.GetLength() > kMostKept) {
    CString made;
    write(made.GetBuffer(length));
    made.ReleaseBuffer(length);
    text = std::move(made);
    return;
  }
  write(text.GetBuffer(length));
  text.ReleaseBuffer(length);
}

void ReplaceText(CString& text, const wchar_t* first, const wchar_t* end) {
  if (first == end) {
    text.Empty();
    return;
  }
  ReplaceCharacters(text, static_cast<int>(end - first),
                    [&](wchar_t* out) { std::copy(first, end, out); });
}

// Replaces the text by a number taken apart.
template <typename Number>
void ReplaceByNumber(CString& text, const Number& number) {
  ReplaceCharacters(text, number.Length(), [&](wchar_t* out) { number.Write(out); });
}

// Replaces the text by items joined by commas. `write` writes an item of at most kMostCharacters.
// Many items are gathered aside, so that the text stays as it is until all are written.
template <int kMostCharacters, typename Items, typename Write>
void ReplaceByItems(CString& text, const Items& items, Write write) {
  constexpr int kRoom = 1024;
  wchar_t chunk[kRoom];
  wchar_t* at = chunk;
  CString gathered;
  bool isFirst = true;
  for (const auto& item : items) {
    if (at - chunk > kRoom - kMostCharacters - 1) {
      AppendText(gathered, chunk, at);
      at = chunk;
    }
    *at = L',';
    at = write(at + (isFirst ? 0 : 1), item);
    isFirst = false;
  }
  if (gathered.IsEmpty()) {
    ReplaceText(text, chunk, at);
  } else {
    AppendText(gathered, chunk, at);
    text = std::move(gathered);
  }
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
