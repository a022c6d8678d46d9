// Everyday numbers are written from integers, where no rounding but the last is left to do;
// std::to_chars, which knows no locale, writes the others.
#include "values/NumberDigits.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstddef>

#include "values/ShortDecimal.h"

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

constexpr auto kIntegerPowersOfTen = [] {
  std::array<std::uint64_t, std::numeric_limits<std::uint64_t>::digits10 + 1> powers{1};
  for (std::size_t i = 1; i != powers.size(); ++i) {
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
  return atLeast + (number >= kIntegerPowersOfTen[static_cast<std::size_t>(atLeast)] ? 1 : 0) +
         (number == 0 ? 1 : 0);
}

// ---- Doubles

// Writes six digits.
wchar_t* WriteMillionths(wchar_t* at, unsigned int millionths) {
  WritePair(at, millionths / 10000);
  WritePair(at + 2, millionths / 100 % 100);
  WritePair(at + 4, millionths % 100);
  return at + 6;
}

// What no fast path takes.
template <typename... Form>
wchar_t* WriteByLibrary(wchar_t* at, double value, Form... form) {
  if (std::isnan(value)) {
    // Runtimes name kinds of not-a-number differently; here there is one.
    return std::signbit(value) ? std::copy_n(L"-nan", 4, at) : std::copy_n(L"nan", 3, at);
  }
  char digits[CFixed::kMostLength];
  return std::copy(digits, std::to_chars(digits, std::end(digits), value, form...).ptr, at);
}

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

}  // namespace

CDecimal::CDecimal(std::uint64_t size, bool isNegative)
    : m_size(size), m_length(CountDigits(size) + (isNegative ? 1 : 0)), m_isNegative(isNegative) {}

wchar_t* CDecimal::Write(wchar_t* at) const {
  wchar_t* const end = at + m_length;
  wchar_t* first = end;
  std::uint64_t rest = m_size;
  for (; rest >= 100; rest /= 100) {
    WritePair(first -= 2, rest % 100);
  }
  if (rest >= 10) {
    WritePair(first - 2, rest);
  } else {
    first[-1] = static_cast<wchar_t>(L'0' + rest);
  }
  if (m_isNegative) {
    *at = L'-';
  }
  return end;
}

bool CFixed::Split(double value) {
  const double size = std::abs(value);
  if (!(size < 0x1p63)) {
    return false;
  }
  // The fraction loses nothing, neither by a subtraction that only takes leading bits away nor by a
  // power of two. Small numbers may have bits beyond 2^-63.
  const auto whole = static_cast<std::int64_t>(size);
  const double scaled = (size - static_cast<double>(whole)) * 0x1p63;
  const auto fraction = static_cast<std::int64_t>(scaled);
  if (static_cast<double>(fraction) != scaled) {
    return false;
  }
  const unsigned int millionths = RoundToMillionths(static_cast<std::uint64_t>(fraction));
  const bool isNextWhole = millionths == kMillion;
  m_whole =
      CDecimal(static_cast<std::uint64_t>(whole) + (isNextWhole ? 1 : 0), std::signbit(value));
  m_millionths = isNextWhole ? 0 : millionths;
  return true;
}

wchar_t* CFixed::Write(wchar_t* at) const {
  at = m_whole.Write(at);
  *at = L'.';
  return WriteMillionths(at + 1, m_millionths);
}

wchar_t* WriteFixed(wchar_t* at, double value) {
  CFixed number;
  return number.Split(value) ? number.Write(at)
                             : WriteByLibrary(at, value, std::chars_format::fixed, 6);
}

wchar_t* WriteShortest(wchar_t* at, double value) {
  std::uint64_t millionths = 0;
  if (!FindShortDecimal(std::abs(value), millionths)) {
    return WriteByLibrary(at, value);
  }
  at = CDecimal(millionths / kMillion, std::signbit(value)).Write(at);
  const auto part = static_cast<unsigned int>(millionths % kMillion);
  if (part == 0) {
    return at;
  }
  *at = L'.';
  at = WriteMillionths(at + 1, part);
  while (at[-1] == L'0') {
    --at;
  }
  return at;
}

}  // namespace lum::detail
