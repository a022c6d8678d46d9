// Writing goes through std::to_chars, which knows no locale. Scanning takes the text apart
// character by character as the C runtime does it; a floating-point text is brought into a normal
// form, its significant digits and an exponent, which fits a small buffer however long the text is.
#include "values/NumberText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <system_error>

namespace lum::detail {
namespace {

// ---- Writing

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

// ---- Scanning: characters

bool IsSpace(wchar_t ch) { return ch == L' ' || (ch >= L'\t' && ch <= L'\r'); }

wchar_t LowerAscii(wchar_t ch) {
  return ch >= L'A' && ch <= L'Z' ? static_cast<wchar_t>(ch - L'A' + L'a') : ch;
}

// The value of a digit of the base (10 or 16), or -1.
int DigitValue(wchar_t ch, int base) {
  if (ch >= L'0' && ch <= L'9') {
    return static_cast<int>(ch - L'0');
  }
  const wchar_t lower = LowerAscii(ch);
  return base == 16 && lower >= L'a' && lower <= L'f' ? static_cast<int>(lower - L'a') + 10 : -1;
}

bool IsNext(std::wstring_view text, wchar_t lowerCase) {
  return !text.empty() && LowerAscii(text.front()) == lowerCase;
}

bool BeginsWith(std::wstring_view text, std::wstring_view lowerCaseWord) {
  return text.size() >= lowerCaseWord.size() &&
         std::equal(lowerCaseWord.begin(), lowerCaseWord.end(), text.begin(),
                    [](wchar_t lower, wchar_t ch) { return lower == LowerAscii(ch); });
}

void SkipSpaces(std::wstring_view& text) {
  text.remove_prefix(
      static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), IsSpace) - text.begin()));
}

// Takes a leading sign off the text. True when it was a minus.
bool TakeSign(std::wstring_view& text) {
  if (!IsNext(text, L'+') && !IsNext(text, L'-')) {
    return false;
  }
  const bool isNegative = text.front() == L'-';
  text.remove_prefix(1);
  return isNegative;
}

// ---- Scanning: integers

struct Integer {
  bool isNegative = false;
  bool isTooLarge = false;  // For 64 bits without the sign.
  std::uint64_t magnitude = 0;
};

void AddDigit(Integer& number, unsigned int digit, unsigned int base) {
  constexpr std::uint64_t kLargest = std::numeric_limits<std::uint64_t>::max();
  if (number.magnitude > (kLargest - digit) / base) {
    number.isTooLarge = true;
  } else {
    number.magnitude = number.magnitude * base + digit;
  }
}

// Nothing when the text does not begin with a number.
std::optional<Integer> TakeInteger(std::wstring_view text, int base) {
  Integer number;
  SkipSpaces(text);
  number.isNegative = TakeSign(text);
  if (text.empty() || DigitValue(text.front(), base) < 0) {
    return std::nullopt;
  }
  if (base == 16 && BeginsWith(text, L"0x")) {
    // The 0 is a number already, so nothing need follow the prefix.
    text.remove_prefix(2);
  }
  for (const wchar_t ch : text) {
    const int digit = DigitValue(ch, base);
    if (digit < 0) {
      break;
    }
    AddDigit(number, static_cast<unsigned int>(digit), static_cast<unsigned int>(base));
  }
  return number;
}

std::int64_t ToSigned(const Integer& number) {
  using Limits = std::numeric_limits<std::int64_t>;
  const bool isBeyond =
      number.isTooLarge || number.magnitude > static_cast<std::uint64_t>(Limits::max());
  if (isBeyond) {
    return number.isNegative ? Limits::min() : Limits::max();
  }
  const auto magnitude = static_cast<std::int64_t>(number.magnitude);
  return number.isNegative ? -magnitude : magnitude;
}

std::uint64_t ToUnsigned(const Integer& number) {
  if (number.isTooLarge) {
    return std::numeric_limits<std::uint64_t>::max();
  }
  return number.isNegative ? 0 - number.magnitude : number.magnitude;
}

template <typename T>
bool ScanUnsigned(std::wstring_view text, int base, T& value) {
  const std::optional<Integer> number = TakeInteger(text, base);
  if (!number) {
    return false;
  }
  value = static_cast<T>(ToUnsigned(*number));
  return true;
}

// ---- Scanning: floating point

// More significant digits than any double needs to be told from its neighbours (767); the digits
// after them only matter by not all being zero.
constexpr int kMostDigits = 800;

// Beyond every exponent that decides anything, for texts of any length that fits an int.
constexpr std::int64_t kHugeExponent = std::int64_t{1} << 40;

// No double lies beyond these powers, neither of ten nor of two.
constexpr std::int64_t kLargestMagnitude = 99999;

// How a decimal or a hexadecimal floating-point text is put together.
struct Notation {
  int base;
  int exponentPerDigit;  // What one digit's place is worth in units of the exponent.
  wchar_t exponentMark;
  std::chars_format format;
};

constexpr Notation kDecimal = {10, 1, L'e', std::chars_format::scientific};
constexpr Notation kHexadecimal = {16, 4, L'p', std::chars_format::hex};

// 0.d1d2d3..., the point moved to the right by `magnitude` units of the exponent.
struct Mantissa {
  char digits[kMostDigits + 1];  // One place more, for the digit that stands for those left out.
  int count = 0;
  bool hasMore = false;  // A digit that is not zero was left out.
  std::int64_t magnitude = 0;
};

void AddDigit(Mantissa& number, wchar_t digit) {
  if (number.count == 0 && digit == L'0') {
    return;
  }
  if (number.count < kMostDigits) {
    number.digits[number.count++] = static_cast<char>(digit);
  } else {
    number.hasMore = number.hasMore || digit != L'0';
  }
}

// Takes "12", "12.", "12.5" or ".5" off the text. False when there is no digit.
bool TakeMantissa(std::wstring_view& text, const Notation& notation, Mantissa& number) {
  bool hasDigit = false;
  bool isFraction = false;
  std::size_t place = 0;
  for (; place < text.size(); ++place) {
    const wchar_t ch = text[place];
    if (ch == L'.' && !isFraction) {
      isFraction = true;
      continue;
    }
    if (DigitValue(ch, notation.base) < 0) {
      break;
    }
    hasDigit = true;
    const bool isLeadingZero = number.count == 0 && ch == L'0';
    AddDigit(number, ch);
    if (isFraction == isLeadingZero) {
      number.magnitude += isFraction ? -notation.exponentPerDigit : notation.exponentPerDigit;
    }
  }
  text.remove_prefix(place);
  return hasDigit;
}

// The exponent that the text begins with; 0 when there is none or it is not complete.
std::int64_t TakeExponent(std::wstring_view text, const Notation& notation) {
  if (!IsNext(text, notation.exponentMark)) {
    return 0;
  }
  text.remove_prefix(1);
  const bool isNegative = TakeSign(text);
  std::int64_t exponent = 0;
  for (const wchar_t ch : text) {
    const int digit = DigitValue(ch, 10);
    if (digit < 0) {
      break;
    }
    exponent = std::min(exponent * 10 + digit, kHugeExponent);
  }
  return isNegative ? -exponent : exponent;
}

// The double nearest to the number, an infinity or zero when it is beyond the type.
double Round(Mantissa& number, const Notation& notation) {
  if (number.count == 0) {
    return 0.0;
  }
  if (number.hasMore) {
    number.digits[number.count++] = '1';
  }
  char text[kMostDigits + 16];
  char* end = std::copy_n(number.digits, number.count, text);
  *end++ = static_cast<char>(notation.exponentMark);
  const std::int64_t magnitude =
      std::clamp(number.magnitude, -kLargestMagnitude, kLargestMagnitude);
  end = std::to_chars(end, std::end(text),
                      magnitude - std::int64_t{number.count} * notation.exponentPerDigit)
            .ptr;
  double value = 0.0;
  if (std::from_chars(text, end, value, notation.format).ec == std::errc::result_out_of_range) {
    // Too large and too small are reported alike.
    return number.magnitude > 0 ? std::numeric_limits<double>::infinity() : 0.0;
  }
  return value;
}

std::optional<double> TakeNumber(std::wstring_view text) {
  const bool isHexadecimal = BeginsWith(text, L"0x");
  const Notation& notation = isHexadecimal ? kHexadecimal : kDecimal;
  if (isHexadecimal) {
    text.remove_prefix(2);
  }
  // The runtime gives a lone prefix up, but finds the 0 of it when a point follows.
  const bool isPointOfPrefix = isHexadecimal && IsNext(text, L'.');
  Mantissa number;
  if (!TakeMantissa(text, notation, number)) {
    return isPointOfPrefix ? std::optional<double>(0.0) : std::nullopt;
  }
  number.magnitude += TakeExponent(text, notation);
  return Round(number, notation);
}

// A number without its sign.
std::optional<double> TakeMagnitude(std::wstring_view text) {
  if (BeginsWith(text, L"nan")) {
    return std::numeric_limits<double>::quiet_NaN();
  }
  if (BeginsWith(text, L"inf")) {
    // After "inf" an "i" must be that of "infinity": a scan cannot go back further than one
    // character.
    const bool isBroken = BeginsWith(text, L"infi") && !BeginsWith(text, L"infinity");
    return isBroken ? std::nullopt : std::optional(std::numeric_limits<double>::infinity());
  }
  return TakeNumber(text);
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

bool ScanInt(std::wstring_view text, int& value) {
  const std::optional<Integer> number = TakeInteger(text, 10);
  if (!number) {
    return false;
  }
  value = static_cast<int>(ToSigned(*number));
  return true;
}

bool ScanUInt(std::wstring_view text, unsigned int& value) { return ScanUnsigned(text, 10, value); }

bool ScanULongLong(std::wstring_view text, std::uint64_t& value) {
  return ScanUnsigned(text, 10, value);
}

bool ScanHex(std::wstring_view text, unsigned int& value) { return ScanUnsigned(text, 16, value); }

bool ScanDouble(std::wstring_view text, double& value) {
  SkipSpaces(text);
  const bool isNegative = TakeSign(text);
  const std::optional<double> magnitude = TakeMagnitude(text);
  if (!magnitude) {
    return false;
  }
  value = isNegative ? -*magnitude : *magnitude;
  return true;
}

}  // namespace lum::detail
