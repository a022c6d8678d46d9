// Integers are summed up digit by digit, short decimal numbers as well. Any other floating-point
// text is first brought into a normal form, its significant digits and a decimal exponent, which
// fits a small buffer whatever its length was.
#include "platform/portable/NumberText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

namespace lum::detail {
namespace {

bool IsDigit(wchar_t ch) { return ch >= L'0' && ch <= L'9'; }

unsigned int DigitValue(wchar_t ch) { return static_cast<unsigned int>(ch - L'0'); }

// Takes a leading sign off the text. True when it was a minus.
bool TakeSign(std::wstring_view& text) {
  if (text.empty() || (text.front() != L'+' && text.front() != L'-')) {
    return false;
  }
  const bool isNegative = text.front() == L'-';
  text.remove_prefix(1);
  return isNegative;
}

wchar_t LowerAscii(wchar_t ch) {
  return ch >= L'A' && ch <= L'Z' ? static_cast<wchar_t>(ch - L'A' + L'a') : ch;
}

bool IsWord(std::wstring_view text, std::wstring_view lowerCaseWord) {
  return std::equal(text.begin(), text.end(), lowerCaseWord.begin(), lowerCaseWord.end(),
                    [](wchar_t a, wchar_t b) { return LowerAscii(a) == b; });
}

// ---- Integers

// Reads digits only, up to `largest`.
bool ReadDigits(std::wstring_view digits, std::uint64_t largest, std::uint64_t& value) {
  if (digits.empty()) {
    return false;
  }
  std::uint64_t sum = 0;
  for (const wchar_t ch : digits) {
    if (!IsDigit(ch)) {
      return false;
    }
    const std::uint64_t digit = DigitValue(ch);
    if (digit > largest || sum > (largest - digit) / 10) {
      return false;
    }
    sum = sum * 10 + digit;
  }
  value = sum;
  return true;
}

template <typename T>
bool ReadUnsigned(std::wstring_view text, T& value) {
  const bool isNegative = TakeSign(text);
  std::uint64_t magnitude = 0;
  // Of the negative numbers only -0 is one the type can hold.
  if (!ReadDigits(text, isNegative ? 0 : std::numeric_limits<T>::max(), magnitude)) {
    return false;
  }
  value = static_cast<T>(magnitude);
  return true;
}

// ---- Floating point

// More significant digits than any double needs to be told from its neighbours (767); the digits
// after them only matter by not all being zero.
constexpr int kMostDigits = 800;

// Beyond every exponent that decides anything, for texts of any length that fits an int.
constexpr long long kHugeExponent = 1LL << 40;

// 0.d1d2d3... * 10^magnitude
struct Decimal {
  char digits[kMostDigits + 1];  // One place more, for the digit that stands for those left out.
  int count = 0;
  bool hasMore = false;  // A digit that is not zero was left out.
  long long magnitude = 0;
};

void AddDigit(Decimal& number, wchar_t digit) {
  if (number.count == 0 && digit == L'0') {
    return;
  }
  if (number.count < kMostDigits) {
    number.digits[number.count++] = static_cast<char>('0' + DigitValue(digit));
  } else {
    number.hasMore = number.hasMore || digit != L'0';
  }
}

// Takes "12", "12.", "12.5" or ".5" off the text. False when there is no digit.
bool TakeMantissa(std::wstring_view& text, Decimal& number) {
  bool hasDigit = false;
  bool isFraction = false;
  std::size_t place = 0;
  for (; place < text.size(); ++place) {
    const wchar_t ch = text[place];
    if (ch == L'.' && !isFraction) {
      isFraction = true;
      continue;
    }
    if (!IsDigit(ch)) {
      break;
    }
    hasDigit = true;
    const bool isLeadingZero = number.count == 0 && ch == L'0';
    AddDigit(number, ch);
    if (isFraction) {
      number.magnitude -= isLeadingZero ? 1 : 0;
    } else {
      number.magnitude += isLeadingZero ? 0 : 1;
    }
  }
  text.remove_prefix(place);
  return hasDigit;
}

// Reads what stands after the mantissa: nothing, or "e" with an exponent up to the end.
bool ReadExponent(std::wstring_view text, long long& exponent) {
  exponent = 0;
  if (text.empty()) {
    return true;
  }
  if (LowerAscii(text.front()) != L'e') {
    return false;
  }
  text.remove_prefix(1);
  const bool isNegative = TakeSign(text);
  if (text.empty() || !std::all_of(text.begin(), text.end(), IsDigit)) {
    return false;
  }
  for (const wchar_t ch : text) {
    exponent = std::min(exponent * 10 + DigitValue(ch), kHugeExponent);
  }
  exponent = isNegative ? -exponent : exponent;
  return true;
}

// No type has numbers beyond these powers of ten, and four digits of exponent are enough.
constexpr long long kLargestMagnitude = 9999;

// The value of a number that is not zero. False when it is too large for the type.
template <typename T>
bool Round(Decimal& number, T& value) {
  if (number.hasMore) {
    number.digits[kMostDigits] = '1';
    number.count = kMostDigits + 1;
  }
  char text[kMostDigits + 16];
  text[0] = '.';
  char* end = std::copy_n(number.digits, number.count, text + 1);
  *end++ = 'e';
  const auto magnitude = std::clamp(number.magnitude, -kLargestMagnitude, kLargestMagnitude);
  end = std::to_chars(end, std::end(text), magnitude).ptr;
  T result = 0;
  const auto [unread, error] = std::from_chars(text, end, result);
  if (error == std::errc::result_out_of_range) {
    // Too large and too small are reported alike.
    result = 0;
    if (number.magnitude > 0) {
      return false;
    }
  } else if (error != std::errc() || unread != end) {
    return false;
  }
  value = result;
  return true;
}

// Powers of ten that the type holds exactly: the same powers of five have no more digits than it.
template <typename T>
constexpr auto kExactPowersOfTen = [] {
  constexpr std::size_t kLargest = std::numeric_limits<T>::digits * 43 / 100;
  std::array<T, kLargest + 1> powers{1};
  for (std::size_t i = 1; i != powers.size(); ++i) {
    powers[i] = powers[i - 1] * 10;
  }
  return powers;
}();

// Reads "12", "12.", "12.5" or ".5" when the digits as one integer and the power of ten are both
// exact: then one division gives the nearest. False, with the output untouched, for any other text.
template <typename T>
bool ReadShortDecimal(std::wstring_view text, T& value) {
  constexpr std::size_t kMostSummedUp = std::numeric_limits<std::uint64_t>::digits10;
  constexpr std::uint64_t kLargestExact = std::uint64_t{1} << std::numeric_limits<T>::digits;
  const std::size_t point = std::min(text.find(L'.'), text.size());
  const bool hasPoint = point < text.size();
  const std::size_t count = text.size() - (hasPoint ? 1 : 0);
  const std::size_t decimals = count - point;
  if (count == 0 || count > kMostSummedUp || decimals >= kExactPowersOfTen<T>.size()) {
    return false;
  }
  std::uint64_t digits = 0;
  for (std::size_t place = 0; place < text.size(); ++place) {
    if (place != point && !IsDigit(text[place])) {
      return false;
    }
    digits = place == point ? digits : digits * 10 + DigitValue(text[place]);
  }
  if (digits > kLargestExact) {
    return false;
  }
  value = static_cast<T>(digits) / kExactPowersOfTen<T>[decimals];
  return true;
}

template <typename T>
bool ReadDecimal(std::wstring_view text, T& value) {
  if (ReadShortDecimal(text, value)) {
    return true;
  }
  Decimal number;
  long long exponent = 0;
  if (!TakeMantissa(text, number) || !ReadExponent(text, exponent)) {
    return false;
  }
  if (number.count == 0) {
    value = 0;
    return true;
  }
  number.magnitude += exponent;
  return Round(number, value);
}

bool IsNanWord(std::wstring_view text) {
  constexpr std::size_t kWordLength = 3;
  if (!IsWord(text.substr(0, kWordLength), L"nan")) {
    return false;
  }
  // "nan(ind)", "nan(snan)": the C runtimes add what kind it is.
  text.remove_prefix(kWordLength);
  if (text.empty()) {
    return true;
  }
  return text.size() >= 2 && text.front() == L'(' && text.back() == L')' &&
         std::all_of(text.begin() + 1, text.end() - 1, [](wchar_t ch) {
           const wchar_t lower = LowerAscii(ch);
           return IsDigit(ch) || (lower >= L'a' && lower <= L'z') || ch == L'_';
         });
}

template <typename T>
bool ReadSpecial(std::wstring_view text, T& value) {
  if (IsWord(text, L"inf") || IsWord(text, L"infinity")) {
    value = std::numeric_limits<T>::infinity();
    return true;
  }
  if (IsNanWord(text)) {
    value = std::numeric_limits<T>::quiet_NaN();
    return true;
  }
  return false;
}

template <typename T>
bool ReadFloating(std::wstring_view text, T& value) {
  const bool isNegative = TakeSign(text);
  T magnitude = 0;
  if (!ReadDecimal(text, magnitude) && !ReadSpecial(text, magnitude)) {
    return false;
  }
  value = std::copysign(magnitude, isNegative ? T(-1) : T(1));
  return true;
}

}  // namespace

bool ReadNumber(std::wstring_view text, int& value) {
  const bool isNegative = TakeSign(text);
  const auto largest = static_cast<std::uint64_t>(std::numeric_limits<int>::max());
  std::uint64_t magnitude = 0;
  if (!ReadDigits(text, isNegative ? largest + 1 : largest, magnitude)) {
    return false;
  }
  const auto number = static_cast<std::int64_t>(magnitude);
  value = static_cast<int>(isNegative ? -number : number);
  return true;
}

bool ReadNumber(std::wstring_view text, unsigned int& value) { return ReadUnsigned(text, value); }

bool ReadNumber(std::wstring_view text, unsigned short& value) { return ReadUnsigned(text, value); }

bool ReadNumber(std::wstring_view text, std::uint64_t& value) { return ReadUnsigned(text, value); }

bool ReadNumber(std::wstring_view text, float& value) { return ReadFloating(text, value); }

bool ReadNumber(std::wstring_view text, double& value) { return ReadFloating(text, value); }

bool ReadNumber(std::wstring_view text, bool& value) {
  if (text == L"1" || IsWord(text, L"true")) {
    value = true;
    return true;
  }
  if (text == L"0" || IsWord(text, L"false")) {
    value = false;
    return true;
  }
  return false;
}

}  // namespace lum::detail
