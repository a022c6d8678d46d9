// Eight decimal digits at a time, as the bytes of one word: digits one after the other wait for
// each other's result.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace lum::decoding::detail {

inline constexpr std::size_t kWordDigits = 8;
inline constexpr std::uint32_t kWordEnd = 100'000'000;  ///< The first number with more digits.
inline constexpr std::uint32_t kHalfEnd = 10'000;       ///< And of half a word.

template <std::size_t... kPlaces>
std::uint64_t LoadBytes(const char* from, std::index_sequence<kPlaces...>) {
  return (... | (std::uint64_t{static_cast<std::uint8_t>(from[kPlaces])} << (8 * kPlaces)));
}

/// The first character in the lowest byte. Compilers make one load of it, as of no loop.
inline std::uint64_t LoadDigits(const char* from) {
  return LoadBytes(from, std::make_index_sequence<kWordDigits>());
}

template <typename Word>
void StoreDigits(Word word, char* to) {
  for (std::size_t i = 0; i < sizeof(Word); ++i) {
    to[i] = static_cast<char>(word >> (8 * i) & 0xFF);
  }
}

/// How many characters in front are digits.
inline std::size_t CountLeadingDigits(std::uint64_t word) {
  // A digit has the high half 3, and has it still with 6 added. Without the highest bits no sum
  // carries into the next byte.
  constexpr std::uint64_t kLow = 0x7F7F7F7F7F7F7F7F;
  constexpr std::uint64_t kHalves = 0xF0F0F0F0F0F0F0F0;
  constexpr std::uint64_t kThrees = 0x3030303030303030;
  const std::uint64_t sums = (word & kLow) + 0x0606060606060606;
  const std::uint64_t wrong = ((word & kHalves) ^ kThrees) | ((sums & kHalves) ^ kThrees);
  return static_cast<std::size_t>(std::countr_zero(wrong)) / 8;
}

/// The number of the first `count` characters, which are digits. Precondition: 1 to 8.
inline std::uint32_t NumberOfDigits(std::uint64_t word, std::size_t count) {
  // Zeros come in front; then neighbours are joined: digits to pairs, pairs to fours, to eight.
  word = (word & 0x0F0F0F0F0F0F0F0F) << (8 * (kWordDigits - count));
  word = (word * 10 + (word >> 8)) & 0x00FF00FF00FF00FF;
  word = (word * 100 + (word >> 16)) & 0x0000FFFF0000FFFF;
  return static_cast<std::uint32_t>((word * 10'000 + (word >> 32)) & 0xFFFFFFFF);
}

/// The digits of the numbers below 10,000 in each half of a word, or in one of half the size, as
/// values from 0 to 9, zeros in front.
template <typename Word>
Word SplitFours(Word fours) {
  // Each division is a product with the inverse, exact for numbers of this size.
  const Word hundreds = fours * 5243U >> 19 & static_cast<Word>(0x0000007F0000007F);
  const Word pairs = hundreds | (fours - hundreds * 100U) << 16;
  const Word tens = pairs * 103U >> 10 & static_cast<Word>(0x000F000F000F000F);
  return tens | (pairs - tens * 10U) << 8;
}

/// The eight digits of a number below kWordEnd.
inline std::uint64_t SplitDigits(std::uint32_t number) {
  return SplitFours(number / 10'000 | std::uint64_t{number % 10'000} << 32);
}

/// Digits as characters.
template <typename Word>
Word AsCharacters(Word digits) {
  return digits | static_cast<Word>(0x3030303030303030);
}

}  // namespace lum::decoding::detail
