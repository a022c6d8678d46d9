// Library-internal: the characters of number texts, and the scans of plain ones, as devices and
// this library write them. A plain scan gives what the scan of NumberScan.h gives; it refuses, and
// changes nothing, when a text is not plain.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>
#include <type_traits>

#include "values/PlainDecimal.h"

namespace lum::detail {

// ---- Characters

/// The white space of the "C" locale.
template <typename Ch>
constexpr bool IsBlank(Ch ch) {
  return ch == Ch{' '} || (ch >= Ch{'\t'} && ch <= Ch{'\r'});
}

template <typename Ch>
constexpr void SkipBlanks(std::basic_string_view<Ch>& text) {
  std::size_t count = 0;
  while (count < text.size() && IsBlank(text[count])) {
    ++count;
  }
  text.remove_prefix(count);
}

/// What a scan with a width looks at.
inline std::string_view FieldOf(std::string_view text, std::size_t width) {
  SkipBlanks(text);
  return text.substr(0, width);
}

/// Takes a leading sign off the text. True when it was a minus.
template <typename Ch>
bool TakeSign(std::basic_string_view<Ch>& text) {
  if (text.empty()) {
    return false;
  }
  // Nothing jumps on a sign, since it cannot be foreseen.
  const bool isNegative = text.front() == Ch{'-'};
  const bool isPositive = text.front() == Ch{'+'};
  text.remove_prefix(static_cast<std::size_t>(isNegative) + static_cast<std::size_t>(isPositive));
  return isNegative;
}

/// The number, or its negative, without a jump either.
inline double WithSign(double number, bool isNegative) {
  const std::uint64_t sign = std::uint64_t{isNegative} << 63;
  return std::bit_cast<double>(std::bit_cast<std::uint64_t>(number) ^ sign);
}

/// The value of a decimal digit, of any other character a number above 9.
template <typename Ch>
constexpr unsigned int DecimalDigit(Ch ch) {
  return static_cast<unsigned int>(ch) - '0';
}

/// The values of the ASCII characters as hexadecimal digits, or -1. Looked up, since whether a
/// digit is a letter cannot be foreseen.
inline constexpr auto kHexDigits = [] {
  std::array<std::int8_t, 128> values{};
  values.fill(-1);
  for (std::size_t value = 0; value < 16; ++value) {
    values[static_cast<std::size_t>("0123456789abcdef"[value])] = static_cast<std::int8_t>(value);
    values[static_cast<std::size_t>("0123456789ABCDEF"[value])] = static_cast<std::int8_t>(value);
  }
  return values;
}();

/// The value of a hexadecimal digit, or -1.
template <typename Ch>
constexpr int HexDigit(Ch ch) {
  const auto code = static_cast<std::make_unsigned_t<Ch>>(ch);
  return code < kHexDigits.size() ? kHexDigits[code] : -1;
}

// ---- Integers

/// As ScanInt, ScanUInt and ScanULongLong of so few digits that no type's sign or size matters
/// before the number is cut to it.
template <typename Ch, typename T>
bool ScanPlainInteger(std::basic_string_view<Ch> text, T& value) {
  constexpr std::ptrdiff_t kMostDigits = std::numeric_limits<std::int64_t>::digits10;
  SkipBlanks(text);
  const bool isNegative = TakeSign(text);
  std::uint64_t number = 0;
  const Ch* const end = ReadDigits(text.data(), text.data() + text.size(), number);
  const std::ptrdiff_t count = end - text.data();
  if (count == 0 || count > kMostDigits) {
    return false;
  }
  value = static_cast<T>(isNegative ? 0 - number : number);
  return true;
}

/// As TakeInt of a text that begins with `width` digits, as those of clocks do.
inline bool TakePlainInt(std::string_view& text, std::size_t width, int& value) {
  // An int holds as many in any case.
  constexpr std::size_t kMostDigits = std::numeric_limits<int>::digits10;
  if (width == 0 || width > kMostDigits || text.size() < width) {
    return false;
  }
  unsigned int number = 0;
  for (std::size_t place = 0; place < width; ++place) {
    const unsigned int digit = DecimalDigit(text[place]);
    if (digit > 9) {
      return false;
    }
    number = number * 10 + digit;
  }
  value = static_cast<int>(number);
  text.remove_prefix(width);
  return true;
}

/// As ScanHex of a text that begins with at most as many digits as 64 bits hold, without a prefix.
template <typename Ch>
bool ScanPlainHex(std::basic_string_view<Ch> text, unsigned int& value) {
  constexpr std::size_t kMostDigits = 16;
  std::uint64_t number = 0;
  std::size_t count = 0;
  for (; count < text.size(); ++count) {
    const int digit = HexDigit(text[count]);
    if (digit < 0) {
      break;
    }
    number = number << 4 | static_cast<std::uint64_t>(digit);
  }
  const bool hasPrefix = count < text.size() && (text[count] | Ch{0x20}) == Ch{'x'};
  if (hasPrefix || count == 0 || count > kMostDigits) {
    return false;
  }
  value = static_cast<unsigned int>(number);
  return true;
}

// ---- Floating point

/// Whether a number may go on after its digits: with an exponent, or as a hexadecimal text.
template <typename Ch>
constexpr bool IsContinued(Ch ch) {
  const auto lower = static_cast<Ch>(ch | Ch{0x20});
  return lower == Ch{'e'} || lower == Ch{'x'};
}

/// As ScanDouble of digits, perhaps with a point among them, that make an integer which a double
/// holds exactly.
template <typename Ch>
bool ScanPlainDouble(std::basic_string_view<Ch> text, double& value) {
  SkipBlanks(text);
  const bool isNegative = TakeSign(text);
  const Ch* const end = text.data() + text.size();
  double magnitude = 0.0;
  const Ch* const place = ReadPlainDecimal(text.data(), end, magnitude);
  if (place == nullptr || (place != end && IsContinued(*place))) {
    return false;
  }
  value = WithSign(magnitude, isNegative);
  return true;
}

}  // namespace lum::detail
