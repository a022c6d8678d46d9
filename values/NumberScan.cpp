// Scanning takes the text apart character by character as the C runtime does it; a floating-point
// text is brought into a normal form, its significant digits and an exponent, which fits a small
// buffer however long the text is. A plain decimal text needs none of that.
#include "values/NumberScan.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <optional>
#include <system_error>

namespace lum::detail {
namespace {

template <typename Ch>
using StringView = std::basic_string_view<Ch>;

// ---- Characters

template <typename Ch>
Ch LowerAscii(Ch ch) {
  return ch >= Ch{'A'} && ch <= Ch{'Z'} ? static_cast<Ch>(ch - Ch{'A'} + Ch{'a'}) : ch;
}

// The value of a digit of the base (10 or 16), or -1.
template <typename Ch>
int DigitValue(Ch ch, int base) {
  const int value = HexDigit(ch);
  return value < base ? value : -1;
}

template <typename Ch>
bool IsNext(StringView<Ch> text, char lowerCase) {
  return !text.empty() && LowerAscii(text.front()) == static_cast<Ch>(lowerCase);
}

template <typename Ch>
bool BeginsWith(StringView<Ch> text, std::string_view lowerCaseWord) {
  return text.size() >= lowerCaseWord.size() &&
         std::equal(lowerCaseWord.begin(), lowerCaseWord.end(), text.begin(),
                    [](char lower, Ch ch) { return static_cast<Ch>(lower) == LowerAscii(ch); });
}

// ---- Integers

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

// Takes a number off the text; nothing, and nothing taken, when it does not begin with one.
template <typename Ch>
std::optional<Integer> TakeInteger(StringView<Ch>& text, int base) {
  StringView<Ch> rest = text;
  Integer number;
  SkipBlanks(rest);
  number.isNegative = TakeSign(rest);
  if (rest.empty() || DigitValue(rest.front(), base) < 0) {
    return std::nullopt;
  }
  if (base == 16 && BeginsWith(rest, "0x")) {
    // The 0 is a number already, so nothing need follow the prefix.
    rest.remove_prefix(2);
  }
  for (; !rest.empty(); rest.remove_prefix(1)) {
    const int digit = DigitValue(rest.front(), base);
    if (digit < 0) {
      break;
    }
    AddDigit(number, static_cast<unsigned int>(digit), static_cast<unsigned int>(base));
  }
  text = rest;
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

template <typename Ch>
bool TakeSigned(StringView<Ch>& text, int& value) {
  const std::optional<Integer> number = TakeInteger(text, 10);
  if (!number) {
    return false;
  }
  value = static_cast<int>(ToSigned(*number));
  return true;
}

template <typename Ch, typename T>
bool ScanUnsigned(StringView<Ch> text, int base, T& value) {
  const std::optional<Integer> number = TakeInteger(text, base);
  if (!number) {
    return false;
  }
  value = static_cast<T>(ToUnsigned(*number));
  return true;
}

// ---- Floating point

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
  char exponentMark;
  std::chars_format format;
};

constexpr Notation kDecimal = {10, 1, 'e', std::chars_format::scientific};
constexpr Notation kHexadecimal = {16, 4, 'p', std::chars_format::hex};

// 0.d1d2d3..., the point moved to the right by `magnitude` units of the exponent.
struct Mantissa {
  char digits[kMostDigits + 1];  // One place more, for the digit that stands for those left out.
  int count = 0;
  bool hasMore = false;  // A digit that is not zero was left out.
  std::int64_t magnitude = 0;
};

void AddDigit(Mantissa& number, char digit) {
  if (number.count == 0 && digit == '0') {
    return;
  }
  if (number.count < kMostDigits) {
    number.digits[number.count++] = digit;
  } else {
    number.hasMore = number.hasMore || digit != '0';
  }
}

// Takes "12", "12.", "12.5" or ".5" off the text. False when there is no digit.
template <typename Ch>
bool TakeMantissa(StringView<Ch>& text, const Notation& notation, Mantissa& number) {
  bool hasDigit = false;
  bool isFraction = false;
  std::size_t place = 0;
  for (; place < text.size(); ++place) {
    const Ch ch = text[place];
    if (ch == Ch{'.'} && !isFraction) {
      isFraction = true;
      continue;
    }
    if (DigitValue(ch, notation.base) < 0) {
      break;
    }
    hasDigit = true;
    const bool isLeadingZero = number.count == 0 && ch == Ch{'0'};
    AddDigit(number, static_cast<char>(ch));
    if (isFraction == isLeadingZero) {
      number.magnitude += isFraction ? -notation.exponentPerDigit : notation.exponentPerDigit;
    }
  }
  text.remove_prefix(place);
  return hasDigit;
}

// The exponent that the text begins with; 0 when there is none or it is not complete.
template <typename Ch>
std::int64_t ReadExponent(StringView<Ch> text, const Notation& notation) {
  if (!IsNext(text, notation.exponentMark)) {
    return 0;
  }
  text.remove_prefix(1);
  const bool isNegative = TakeSign(text);
  std::int64_t exponent = 0;
  for (const Ch ch : text) {
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
  *end++ = notation.exponentMark;
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

template <typename Ch>
std::optional<double> ReadNumber(StringView<Ch> text) {
  const bool isHexadecimal = BeginsWith(text, "0x");
  const Notation& notation = isHexadecimal ? kHexadecimal : kDecimal;
  if (isHexadecimal) {
    text.remove_prefix(2);
  }
  // The runtime gives a lone prefix up, but finds the 0 of it when a point follows.
  const bool isPointOfPrefix = isHexadecimal && IsNext(text, '.');
  Mantissa number;
  if (!TakeMantissa(text, notation, number)) {
    return isPointOfPrefix ? std::optional<double>(0.0) : std::nullopt;
  }
  number.magnitude += ReadExponent(text, notation);
  return Round(number, notation);
}

// A number without its sign.
template <typename Ch>
std::optional<double> ReadMagnitude(StringView<Ch> text) {
  if (BeginsWith(text, "nan")) {
    return std::numeric_limits<double>::quiet_NaN();
  }
  if (BeginsWith(text, "inf")) {
    // After "inf" an "i" must be that of "infinity": a scan cannot go back further than one
    // character.
    const bool isBroken = BeginsWith(text, "infi") && !BeginsWith(text, "infinity");
    return isBroken ? std::nullopt : std::optional(std::numeric_limits<double>::infinity());
  }
  return ReadNumber(text);
}

template <typename Ch>
bool ScanFloating(StringView<Ch> text, double& value) {
  SkipBlanks(text);
  const bool isNegative = TakeSign(text);
  const std::optional<double> magnitude = ReadMagnitude(text);
  if (!magnitude) {
    return false;
  }
  value = WithSign(*magnitude, isNegative);
  return true;
}

}  // namespace

bool ScanAnyInt(std::wstring_view text, int& value) { return TakeSigned(text, value); }

bool TakeAnyInt(std::string_view& text, std::size_t width, int& value) {
  const std::string_view field = FieldOf(text, width);
  std::string_view rest = field;
  if (!TakeSigned(rest, value)) {
    return false;
  }
  const char* const end = text.data() + text.size();
  text = std::string_view(rest.data(), static_cast<std::size_t>(end - rest.data()));
  return true;
}

bool ScanAnyUInt(std::wstring_view text, unsigned int& value) {
  return ScanUnsigned(text, 10, value);
}

bool ScanAnyULongLong(std::wstring_view text, std::uint64_t& value) {
  return ScanUnsigned(text, 10, value);
}

bool ScanAnyHex(std::wstring_view text, unsigned int& value) {
  return ScanUnsigned(text, 16, value);
}

bool ScanAnyHex(std::string_view text, unsigned int& value) {
  return ScanUnsigned(text, 16, value);
}

bool ScanHex(std::string_view text, unsigned short& value) { return ScanUnsigned(text, 16, value); }

bool ScanAnyDouble(std::wstring_view text, double& value) { return ScanFloating(text, value); }

bool ScanAnyDouble(std::string_view text, double& value) { return ScanFloating(text, value); }

}  // namespace lum::detail
