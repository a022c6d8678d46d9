// Library-internal: doubles whose shortest text is a decimal of a few digits, as those of devices
// and settings mostly are.
#pragma once

#include <cstdint>

namespace lum::detail {

inline constexpr unsigned int kMillion = 1'000'000;

/// Finds a number of at most six digits after the point and fifteen in all, in millionths, if its
/// shortest text has no exponent. `size` has no sign. Texts of fifteen digits read back to
/// different doubles, so one that reads back to this one is the only one, and without the zeros at
/// its end the shortest. It does read back if the division of the two integers, which doubles hold
/// exactly and which is rounded as reading is, gives it.
inline bool FindShortDecimal(double size, std::uint64_t& millionths) {
  constexpr double kLargest = 1e9;
  if (!(size < kLargest)) {
    return false;
  }
  // NOLINTNEXTLINE(bugprone-incorrect-roundings): a wrong one does not give the number.
  const auto nearest = static_cast<std::int64_t>(size * kMillion + 0.5);
  if (static_cast<double>(nearest) / kMillion != size) {
    return false;
  }
  millionths = static_cast<std::uint64_t>(nearest);
  // Two zeros after the point, or four at the end of a whole number, still take no more room than
  // an exponent.
  constexpr std::uint64_t kThousandth = kMillion / 1000;
  constexpr std::uint64_t kHundredThousand = std::uint64_t{kMillion} * 100000;
  return millionths % kMillion != 0 ? millionths >= kThousandth
                                    : millionths == 0 || millionths % kHundredThousand != 0;
}

}  // namespace lum::detail
