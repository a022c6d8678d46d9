// Plain numbers are read where they stand. Every other item is handed to CLumString, so that there
// is one set of rules, the platform's.
#include "values/NumberItems.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <system_error>

#include "platform/LumBase.h"
#include "values/PlainDecimal.h"
#include "values/TextView.h"

namespace lum::detail {
namespace {

constexpr wchar_t kSeparator = L',';

bool IsBlank(wchar_t ch) { return ch == L' ' || ch == L'\t'; }

void SkipTrimmed(std::wstring_view& text) {
  while (!text.empty() && IsBlank(text.front())) {
    text.remove_prefix(1);
  }
}

// Takes the blanks after an item and the separator off the text. False when something else follows.
bool TakeEnd(std::wstring_view& text) {
  SkipTrimmed(text);
  if (text.empty()) {
    return true;
  }
  const bool isEnd = text.front() == kSeparator;
  text.remove_prefix(1);
  return isEnd;
}

// Takes a leading sign off the text. True when it was a minus.
bool TakeSign(std::wstring_view& text) {
  const bool isNegative = !text.empty() && text.front() == L'-';
  if (isNegative || (!text.empty() && text.front() == L'+')) {
    text.remove_prefix(1);
  }
  return isNegative;
}

// Each of these takes an item with its separator off the text. False, with any of the text taken
// and the output untouched, for an item that another reader may well take.

// Decimal numbers without an exponent and of not too many digits.
template <typename T>
bool TakePlain(std::wstring_view& text, T& value) {
  SkipTrimmed(text);
  const bool isNegative = TakeSign(text);
  T size = 0;
  if (!TakePlainDecimal(text, size) || !TakeEnd(text)) {
    return false;
  }
  value = isNegative ? -size : size;
  return true;
}

// Ints of at most nine digits, which are never too large.
bool TakePlainInt(std::wstring_view& text, int& value) {
  SkipTrimmed(text);
  const bool isNegative = TakeSign(text);
  std::uint64_t size = 0;
  const std::size_t count = TakeDigits(text, size);
  if (count == 0 || count > std::numeric_limits<int>::digits10 || !TakeEnd(text)) {
    return false;
  }
  value = isNegative ? -static_cast<int>(size) : static_cast<int>(size);
  return true;
}

// A truth value of one digit.
bool TakeBit(std::wstring_view& text, bool& value) {
  if (text.empty() || (text.front() != L'0' && text.front() != L'1')) {
    return false;
  }
  const bool isOne = text.front() == L'1';
  text.remove_prefix(1);
  if (!TakeEnd(text)) {
    return false;
  }
  value = isOne;
  return true;
}

// Numbers of digits, point and exponent that std::from_chars reads, rounding as everyone does. Its
// words and what it finds too large or too small are left to the platform.
template <typename T>
bool TakeByLibrary(std::wstring_view& text, T& value) {
  constexpr std::size_t kMostCharacters = 48;
  char item[kMostCharacters];
  SkipTrimmed(text);
  if (!text.empty() && text.front() == L'+') {
    text.remove_prefix(1);
  }
  std::size_t length = 0;
  for (; length < std::min(text.size(), kMostCharacters); ++length) {
    const wchar_t ch = text[length];
    const bool isOfNumber = (ch >= L'0' && ch <= L'9') || ch == L'.' || ch == L'-' || ch == L'+' ||
                            ch == L'e' || ch == L'E';
    if (!isOfNumber) {
      break;
    }
    item[length] = static_cast<char>(ch);
  }
  text.remove_prefix(length);
  T number = 0;
  const auto [unread, error] = std::from_chars(item, item + length, number);
  if (error != std::errc() || unread != item + length || !TakeEnd(text)) {
    return false;
  }
  value = number;
  return true;
}

template <typename T>
bool TakeByPlatform(std::wstring_view& text, T& value) {
  const std::size_t length = std::min(text.find(kSeparator), text.size());
  const CString item = ToCString(text.substr(0, length));
  text.remove_prefix(std::min(length + 1, text.size()));
  return CLumString(item, kSeparator, true, false).GetItem(0, value);
}

}  // namespace

// The first reader that takes the item decides.
template <typename T, typename... Readers>
bool CNumberItems::TakeBy(T& value, Readers... readers) {
  std::wstring_view rest;
  const auto isRead = [&](auto reader) {
    rest = m_rest;
    return reader(rest, value);
  };
  const bool isNumber = (isRead(readers) || ...);
  m_rest = rest;
  return isNumber;
}

bool CNumberItems::Take(bool& value) { return TakeBy(value, TakeBit, TakeByPlatform<bool>); }

bool CNumberItems::Take(int& value) { return TakeBy(value, TakePlainInt, TakeByPlatform<int>); }

bool CNumberItems::Take(unsigned int& value) { return TakeBy(value, TakeByPlatform<unsigned int>); }

bool CNumberItems::Take(float& value) {
  return TakeBy(value, TakePlain<float>, TakeByLibrary<float>, TakeByPlatform<float>);
}

bool CNumberItems::Take(double& value) {
  return TakeBy(value, TakePlain<double>, TakeByLibrary<double>, TakeByPlatform<double>);
}

}  // namespace lum::detail
