// Library-internal: reading of the decimal texts that devices and files mostly hold, digits with
// perhaps a point among them.
#pragma once

#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>

namespace lum::detail {

/// Takes digits off the text, onto the end of a number that wraps. Returns how many they were.
template <typename Ch>
std::size_t TakeDigits(std::basic_string_view<Ch>& text, std::uint64_t& number) {
  std::size_t count = 0;
  while (count < text.size() && text[count] >= Ch{'0'} && text[count] <= Ch{'9'}) {
    number = number * 10 + static_cast<std::uint64_t>(text[count] - Ch{'0'});
    ++count;
  }
  text.remove_prefix(count);
  return count;
}

/// Takes a number without a sign or exponent off the text, rounded to the nearest. False, with any
/// of the text taken, when there is none or it has too many digits for this.
template <typename Ch, std::floating_point T>
bool TakePlainDecimal(std::basic_string_view<Ch>& text, T& value) {
  // Powers of ten that the type holds exactly: those of five have no more digits than it has.
  constexpr int kLargestPower = std::numeric_limits<T>::digits * 301 / 700;
  static constexpr auto kPowersOfTen = [] {
    std::array<T, kLargestPower + 1> powers{1};
    for (std::size_t i = 1; i < powers.size(); ++i) {
      powers[i] = powers[i - 1] * 10;
    }
    return powers;
  }();
  constexpr std::size_t kMostDigits = std::numeric_limits<std::uint64_t>::digits10;
  constexpr std::uint64_t kLargestExact = std::uint64_t{1} << std::numeric_limits<T>::digits;
  std::uint64_t digits = 0;
  std::size_t decimals = 0;
  std::size_t count = TakeDigits(text, digits);
  if (!text.empty() && text.front() == Ch{'.'}) {
    text.remove_prefix(1);
    decimals = TakeDigits(text, digits);
    count += decimals;
  }
  if (count == 0 || count > kMostDigits || digits > kLargestExact ||
      decimals >= kPowersOfTen.size()) {
    return false;
  }
  // Of two exact numbers one division gives the nearest, as every correct reading does.
  value = static_cast<T>(digits) / kPowersOfTen[decimals];
  return true;
}

}  // namespace lum::detail
