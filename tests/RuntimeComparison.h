// What tests that compare with the C runtime have in common: equality of numbers to the last bit,
// and every short text over an alphabet.
#pragma once

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace lum::test {

template <typename T>
bool IsSame(T a, T b) {
  return a == b;
}

/// To the last bit; not-a-number is the same as any other of its sign.
template <>
inline bool IsSame(double a, double b) {
  if (std::isnan(a) || std::isnan(b)) {
    return std::isnan(a) && std::isnan(b) && std::signbit(a) == std::signbit(b);
  }
  return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

/// Calls `check` with every text over the alphabet of up to `longest` characters.
template <typename Ch, typename Check>
void ForEachText(const Ch* alphabet, std::size_t longest, const Check& check) {
  const std::basic_string_view<Ch> characters(alphabet);
  for (std::size_t length = 0; length <= longest; ++length) {
    std::vector<std::size_t> places(length, 0);
    std::basic_string<Ch> text(length, characters.front());
    std::size_t turned = 0;
    do {
      check(text);
      // Counts on, as an odometer does; all have turned over when the last one has.
      for (turned = 0; turned < length; ++turned) {
        places[turned] = (places[turned] + 1) % characters.size();
        text[turned] = characters[places[turned]];
        if (places[turned] != 0) {
          break;
        }
      }
    } while (turned < length);
  }
}

}  // namespace lum::test
