// Library-internal scans: the C runtime's formatted reading of numbers as it is in the "C" locale,
// whatever the process locale is, of wide and of 8-bit texts. Nothing is allocated.
//
// Leading white space is skipped and what follows the number is ignored. A scan returns whether a
// number was converted and leaves `value` untouched otherwise. An integer saturates at 64 bits and
// is then cut to its type, as the runtime does it. A NUL ends no text but continues no number.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>
#include <type_traits>

namespace lum::detail {

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

/// The value of a decimal digit, of any other character a number above 9.
template <typename Ch>
constexpr unsigned int DecimalDigit(Ch ch) {
  return static_cast<unsigned int>(ch) - '0';
}

/// As TakeInt of a text that begins with as many digits as an int holds in any case, as clocks
/// write them. False, with nothing changed, for any other text.
inline bool TakePlainInt(std::string_view& text, std::size_t width, int& value) {
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

/// As TakeInt of any text.
bool TakeFormattedInt(std::string_view& text, std::size_t width, int& value);

/// As "%d".
bool ScanInt(std::wstring_view text, int& value);
/// As "%d" with a width, as in "%2d": at most so many characters after the white space count. The
/// text goes on behind the number; it is not touched when there is none.
inline bool TakeInt(std::string_view& text, std::size_t width, int& value) {
  return TakePlainInt(text, width, value) || TakeFormattedInt(text, width, value);
}
/// As "%u": a sign is taken, "-1" wraps.
bool ScanUInt(std::wstring_view text, unsigned int& value);
/// As an unsigned 64-bit "%u".
bool ScanULongLong(std::wstring_view text, std::uint64_t& value);
/// As "%x": an optional sign and "0x" are taken.
bool ScanHex(std::wstring_view text, unsigned int& value);
bool ScanHex(std::string_view text, unsigned int& value);
/// As "%hx".
bool ScanHex(std::string_view text, unsigned short& value);
/// As "%lf": decimal and hexadecimal floating texts, "inf", "infinity", "nan".
bool ScanDouble(std::wstring_view text, double& value);
bool ScanDouble(std::string_view text, double& value);
/// As "%lf" with a width, as in "%5lf". Precondition: a width of 4 at least, so that it does not
/// end behind "-0x".
bool ScanDouble(std::string_view text, std::size_t width, double& value);

}  // namespace lum::detail
