// The digits of numbers against std::to_chars, over all sizes and around the limits of what is
// written from integers.
#include "values/NumberDigits.h"

#include <gtest/gtest.h>

#include <bit>
#include <charconv>
#include <cmath>
#include <iterator>
#include <random>
#include <string>

#include "platform/Framework.h"
#include "values/NumberText.h"

namespace {

using namespace lum::detail;

constexpr unsigned int kSeed = 20240301;

template <typename T, typename... Form>
std::string ByLibrary(T value, Form... form) {
  char text[400];
  return std::string(text, std::to_chars(text, std::end(text), value, form...).ptr);
}

std::string Narrow(const wchar_t* first, const wchar_t* end) {
  return std::string(first, end);  // NOLINT: ASCII only.
}

std::string FixedText(double value) {
  wchar_t text[CFixed::kMostLength];
  return Narrow(text, WriteFixed(text, value));
}

std::string ShortestText(double value) {
  wchar_t text[kMostShortest];
  return Narrow(text, WriteShortest(text, value));
}

// Compares both forms, of both signs, through strings as well.
void ExpectAsLibrary(double size) {
  for (const double value : {size, -size}) {
    const std::string fixed = ByLibrary(value, std::chars_format::fixed, 6);
    ASSERT_EQ(FixedText(value), fixed);
    ASSERT_EQ(ShortestText(value), ByLibrary(value));
    CString text(L"before");
    ReplaceByFixed(text, value);
    ASSERT_EQ(Narrow(text.GetString(), text.GetString() + text.GetLength()), fixed);
  }
}

// The neighbours of a number as well.
void ExpectAsLibraryAround(double size) {
  double below = size;
  double above = size;
  for (int i = 0; i < 10; ++i) {
    ExpectAsLibrary(below);
    ExpectAsLibrary(above);
    below = std::nextafter(below, 0.0);
    above = std::nextafter(above, 1e300);
  }
}

template <typename T>
void ExpectDecimalAsLibrary(T value) {
  wchar_t text[CDecimal::kMostLength];
  const CDecimal number(value);
  ASSERT_EQ(Narrow(text, number.Write(text)), ByLibrary(value));
  ASSERT_EQ(number.Length(), static_cast<int>(ByLibrary(value).size()));
}

TEST(NumberDigits, WholeNumbersOfEveryLengthAreWrittenAsTheLibraryDoes) {
  std::uint64_t power = 1;
  for (int i = 0; i < 20; ++i, power *= 10) {
    for (const std::uint64_t value : {power - 1, power, power + 1, 7 * power, 0 - power}) {
      ExpectDecimalAsLibrary(value);
      ExpectDecimalAsLibrary(static_cast<unsigned int>(value));
      ExpectDecimalAsLibrary(static_cast<int>(value));
    }
  }
  for (int bit = 0; bit < 64; ++bit) {
    const std::uint64_t limit = std::uint64_t{1} << bit;
    for (const std::uint64_t value : {limit - 1, limit, 0 - limit}) {
      ExpectDecimalAsLibrary(value);
      ExpectDecimalAsLibrary(static_cast<unsigned int>(value));
      ExpectDecimalAsLibrary(static_cast<int>(value));
    }
  }
}

TEST(NumberDigits, DoublesOfEveryExponentAreWrittenAsTheLibraryDoes) {
  std::mt19937_64 random(kSeed);
  for (int i = 0; i < 20'000; ++i) {
    const auto any = std::bit_cast<double>(random());
    if (std::isfinite(any)) {
      ExpectAsLibrary(any);
    }
  }
  // Those with a point in their digits, from 2^-25 to 2^65.
  for (int i = 0; i < 50'000; ++i) {
    const double mantissa = static_cast<double>(random() >> 11);
    ExpectAsLibrary(std::ldexp(mantissa, static_cast<int>(random() % 90) - 78));
  }
}

TEST(NumberDigits, DoublesHalfwayBetweenTwoMillionthsAreWrittenAsTheLibraryDoes) {
  // Odd multiples of 2^-7 end in a 5 at the seventh place, the finest halves there are.
  for (int i = 1; i < 20'000; i += 2) {
    ExpectAsLibrary(i / 128.0);
    ExpectAsLibrary(1e9 + i / 128.0);
    ExpectAsLibrary(i / 64.0);
  }
  for (int bit = 0; bit < 64; ++bit) {
    ExpectAsLibraryAround(std::ldexp(1.0 / 128, bit) + 1.0 / 128);
    ExpectAsLibraryAround(std::ldexp(1.0, -bit));
  }
}

TEST(NumberDigits, DecimalsBesideHalfAMillionthAreWrittenAsTheLibraryDoes) {
  std::mt19937_64 random(kSeed);
  for (int i = 0; i < 2'000; ++i) {
    const double half = static_cast<double>(random() % 100'000'000'000) + 0.5;
    ExpectAsLibraryAround(half / 1e6);
  }
}

TEST(NumberDigits, DecimalsOfAllLengthsAreWrittenAsTheLibraryDoes) {
  std::mt19937_64 random(kSeed);
  double power = 1.0;
  for (int places = 0; places < 20; ++places, power *= 10.0) {
    for (int i = 0; i < 1'000; ++i) {
      const std::uint64_t digits = random() >> (random() % 63 + 1);
      ExpectAsLibrary(static_cast<double>(digits) / power);
      ExpectAsLibrary(static_cast<double>(digits % 10'000) / power);
      ExpectAsLibrary(static_cast<double>(digits % 100) * power);
    }
  }
}

TEST(NumberDigits, DoublesAtTheLimitsOfEachFormAreWrittenAsTheLibraryDoes) {
  for (const double size :
       {0.0,       1e-7,       4.9e-7,  5e-7,     1e-6,        0.0001,    0.00099,   0.001,
        0.0099,    0.01,       0.1,     0.999999, 0.9999994,   0.9999995, 0.9999996, 1.0,
        9.9999995, 99.9999999, 99999.0, 1e5,      100001.0,    110000.0,  200000.0,  999999.9999995,
        1e6,       1.1e6,      1.01e6,  1e8,      999999999.0, 1e9,       1e9 + 0.5, 1e14,
        1e15,      0x1p52,     0x1p53,  1e18,     0x1p62,      0x1p63,    0x1p64,    1e19,
        1e20,      1e22,       1e300,   0x1p-9,   0x1p-10,     0x1p-11,   0x1p-12,   0x1p-20,
        0x1p-21,   0x1p-63,    0x1p-64, 5e-324}) {
    ExpectAsLibraryAround(size);
  }
}

}  // namespace
