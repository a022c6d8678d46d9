// Decimal numbers as the hand-written minimum reads and writes them: those of at most 15 digits,
// which one division makes exact. Everything else is left to the caller.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

namespace lum::bench {

inline constexpr std::size_t kMostDigits = 15;
inline constexpr double kPowersOfTen[kMostDigits + 1] = {
    1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

/// Takes a run of digits and gives how many there were.
template <typename Ch>
std::size_t TakeDigits(const Ch*& at, const Ch* end, std::uint64_t& number) {
  const Ch* const first = at;
  for (; at != end && *at >= '0' && *at <= '9'; ++at) {
    number = number * 10 + static_cast<std::uint64_t>(*at - '0');
  }
  return static_cast<std::size_t>(at - first);
}

/// Takes a number with an optional sign and point and no exponent. Nothing when there is none or it
/// has too many digits.
template <typename Ch>
std::optional<double> TakeDecimal(const Ch*& at, const Ch* end) {
  const bool isNegative = at != end && *at == '-';
  if (isNegative || (at != end && *at == '+')) {
    ++at;
  }
  std::uint64_t number = 0;
  std::size_t digits = TakeDigits(at, end, number);
  std::size_t places = 0;
  if (at != end && *at == '.') {
    ++at;
    places = TakeDigits(at, end, number);
    digits += places;
  }
  if (digits == 0 || digits > kMostDigits) {
    return std::nullopt;
  }
  const double value = static_cast<double>(number) / kPowersOfTen[places];
  return isNegative ? -value : value;
}

/// Writes at least `width` digits and gives the end of them.
inline char* WriteDigits(char* at, std::uint64_t number, int width) {
  char digits[20];
  char* first = digits + sizeof digits;
  for (; number != 0 || width > 0; number /= 10, --width) {
    *--first = static_cast<char>('0' + number % 10);
  }
  for (; first != digits + sizeof digits; ++first) {
    *at++ = *first;
  }
  return at;
}

}  // namespace lum::bench
