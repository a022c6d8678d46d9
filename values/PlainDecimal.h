// Library-internal: reading of the decimal texts that devices and files mostly hold, digits with
// perhaps a point among them. The functions take and return places rather than views, which stay in
// registers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>

namespace lum::detail {

/// Reads digits onto the end of a number that wraps, and returns the place behind them.
template <typename Ch>
inline const Ch* ReadDigits(const Ch* at, const Ch* end, std::uint64_t& number) {
  for (; at != end && *at >= Ch{'0'} && *at <= Ch{'9'}; ++at) {
    number = number * 10 + static_cast<std::uint64_t>(*at - Ch{'0'});
  }
  return at;
}

// Powers of ten, all of which a double holds exactly.
inline constexpr double kExactPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,
                                               1e7,  1e8,  1e9,  1e10, 1e11, 1e12, 1e13,
                                               1e14, 1e15, 1e16, 1e17, 1e18, 1e19};

/// Reads a number without a sign or exponent, rounded to the nearest, and returns the place behind
/// it. Null when there is none or it has too many digits for this.
template <typename Ch>
inline const Ch* ReadPlainDecimal(const Ch* at, const Ch* end, double& value) {
  constexpr std::ptrdiff_t kMostDigits = std::numeric_limits<std::uint64_t>::digits10;
  constexpr std::uint64_t kLargestExact = std::uint64_t{1} << std::numeric_limits<double>::digits;
  static_assert(kMostDigits < std::ssize(kExactPowersOfTen));
  std::uint64_t digits = 0;
  const Ch* const point = ReadDigits(at, end, digits);
  std::ptrdiff_t count = point - at;
  std::ptrdiff_t decimals = 0;
  at = point;
  if (at != end && *at == Ch{'.'}) {
    at = ReadDigits(point + 1, end, digits);
    decimals = at - point - 1;
    count += decimals;
  }
  if (count == 0 || count > kMostDigits || digits > kLargestExact) {
    return nullptr;
  }
  // Of two exact numbers one division gives the nearest, as every correct reading does.
  value = static_cast<double>(digits) / kExactPowersOfTen[decimals];
  return at;
}

}  // namespace lum::detail
