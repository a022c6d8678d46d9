// Everyday numbers are written from integers, where no rounding but the last is left to do;
// std::to_chars, which knows no locale, writes the others.
#include "values/NumberDigits.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstddef>

namespace lum::detail {
namespace {

// ---- Integers

// "00", "01" to "99".
constexpr auto kPairs = [] {
  std::array<wchar_t, 200> pairs{};
  for (std::size_t i = 0; i < 100; ++i) {
    pairs[2 * i] = static_cast<wchar_t>(L'0' + i / 10);
    pairs[2 * i + 1] = static_cast<wchar_t>(L'0' + i % 10);
  }
  return pairs;
}();

constexpr auto kPowersOfTen = [] {
  std::array<std::uint64_t, std::numeric_limits<std::uint64_t>::digits10 + 1> powers{1};
  for (std::size_t i = 1; i < powers.size(); ++i) {
    powers[i] = powers[i - 1] * 10;
  }
  return powers;
}();

// `pair` is below 100.
void WritePair(wchar_t* at, std::uint64_t pair) { std::copy_n(&kPairs[2 * pair], 2, at); }

// 0 has one digit.
int CountDigits(std::uint64_t number) {
  // The logarithm of two as a fraction; it finds the number of digits, or one too few.
  const int atLeast = static_cast<int>(std::bit_width(number | 1)) * 1233 / 4096;
  return atLeast + (number >= kPowersOfTen[static_cast<std::size_t>(atLeast)] ? 1 : 0) +
         (number == 0 ? 1 : 0);
}

// ---- Doubles

constexpr unsigned int kMillion = 1'000'000;

// Writes six digits.
wchar_t* WriteMillionths(wchar_t* at, unsigned int millionths) {
  WritePair(at, millionths / 10000);
  WritePair(at + 2, millionths / 100 % 100);
  WritePair(at + 4, millionths % 100);
  return at + 6;
}

// What no fast path takes, without the sign.
template <typename... Form>
wchar_t* WriteByLibrary(wchar_t* at, double size, Form... form) {
  if (std::isnan(size)) {
    // Runtimes name kinds of not-a-number differently; here there is one.
    return std::copy_n(L"nan", 3, at);
  }
  char digits[kMostFixed];
  return std::copy(digits, std::to_chars(digits, std::end(digits), size, form...).ptr, at);
}

// A number without its sign, rounded to millionths.
struct Millionths {
  std::uint64_t whole;
  unsigned int part;
};

// The millionths of `fraction` units of 2^-63, rounded to even as "%f" does: the product is
// calculated in full, in two halves, so that nothing but the remainder decides.
unsigned int RoundToMillionths(std::uint64_t fraction) {
  constexpr std::uint64_t kHalf = std::uint64_t{1} << 62;
  const std::uint64_t low = (fraction & 0xFFFFFFFFU) * kMillion;
  const std::uint64_t high = (fraction >> 32) * kMillion + (low >> 32);
  const std::uint64_t part = high >> 31;
  const std::uint64_t remainder = (high & 0x7FFFFFFFU) << 32 | (low & 0xFFFFFFFFU);
  return static_cast<unsigned int>(part + (remainder + (part & 1) > kHalf ? 1 : 0));
}

// False for numbers from 2^63 on, for small ones with digits beyond 2^-63, and for not-a-number.
// The fraction loses nothing by the subtraction, which only takes leading bits away, nor by a power
// of two.
bool SplitExactly(double size, Millionths& number) {
  if (!(size < 0x1p63)) {
    return false;
  }
  const auto whole = static_cast<std::int64_t>(size);
  const double scaled = (size - static_cast<double>(whole)) * 0x1p63;
  const auto fraction = static_cast<std::int64_t>(scaled);
  if (static_cast<double>(fraction) != scaled) {
    return false;
  }
  const unsigned int part = RoundToMillionths(static_cast<std::uint64_t>(fraction));
  const bool isNextWhole = part == kMillion;
  number.whole = static_cast<std::uint64_t>(whole) + (isNextWhole ? 1 : 0);
  number.part = isNextWhole ? 0 : part;
  return true;
}

// True for numbers of at most six digits after the point and fifteen in all, whose texts have no
// exponent. Texts of fifteen digits read back to different doubles, so one that reads back to this
// one is the only one, without the zeros at its end the shortest. It does read back if the division
// of the two integers, which doubles hold exactly and which is rounded as reading is, gives it.
bool FindShortDecimal(double size, Millionths& number) {
  constexpr double kLargest = 1e9;
  if (!(size < kLargest)) {
    return false;
  }
  const auto scaled = static_cast<std::int64_t>(size * kMillion + 0.5);
  if (static_cast<double>(scaled) / kMillion != size) {
    return false;
  }
  number.whole = static_cast<std::uint64_t>(scaled) / kMillion;
  number.part = static_cast<unsigned int>(static_cast<std::uint64_t>(scaled) % kMillion);
  // Two zeros after the point, or four at the end of a whole number, still take less room than an
  // exponent.
  return number.part != 0 ? scaled >= 1000 : number.whole == 0 || number.whole % 100000 != 0;
}

wchar_t* WriteSign(wchar_t* at, double value) {
  *at = L'-';
  return at + (std::signbit(value) ? 1 : 0);
}

}  // namespace

wchar_t* WriteDecimal(wchar_t* at, std::uint64_t value) {
  wchar_t* const end = at + CountDigits(value);
  wchar_t* first = end;
  for (; value >= 100; value /= 100) {
    WritePair(first -= 2, value % 100);
  }
  if (value >= 10) {
    WritePair(first - 2, value);
  } else {
    first[-1] = static_cast<wchar_t>(L'0' + value);
  }
  return end;
}

wchar_t* WriteDecimal(wchar_t* at, unsigned int value) {
  return WriteDecimal(at, std::uint64_t{value});
}

wchar_t* WriteDecimal(wchar_t* at, int value) {
  const auto bits = static_cast<std::uint64_t>(value);
  *at = L'-';
  return value < 0 ? WriteDecimal(at + 1, 0 - bits) : WriteDecimal(at, bits);
}

wchar_t* WriteFixed(wchar_t* at, double value) {
  at = WriteSign(at, value);
  const double size = std::abs(value);
  Millionths number;
  if (!SplitExactly(size, number)) {
    return WriteByLibrary(at, size, std::chars_format::fixed, 6);
  }
  at = WriteDecimal(at, number.whole);
  *at = L'.';
  return WriteMillionths(at + 1, number.part);
}

wchar_t* WriteShortest(wchar_t* at, double value) {
  at = WriteSign(at, value);
  const double size = std::abs(value);
  Millionths number;
  if (!FindShortDecimal(size, number)) {
    return WriteByLibrary(at, size);
  }
  at = WriteDecimal(at, number.whole);
  if (number.part == 0) {
    return at;
  }
  *at = L'.';
  at = WriteMillionths(at + 1, number.part);
  while (at[-1] == L'0') {
    --at;
  }
  return at;
}

}  // namespace lum::detail
