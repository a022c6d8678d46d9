// Numbers as rows show them, against what the C library prints.
#include "decoding/NumberText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>
#include <random>

namespace lum::decoding {
namespace {

constexpr int kMostDigits = 17;

std::string Fixed(double number, int digits) {
  std::string text;
  AppendFixed(text, number, digits);
  return text;
}

std::string Shortest(double number) {
  std::string text;
  AppendShortest(text, number);
  return text;
}

/// Correctly rounded on the systems that the tests run on.
std::string Printed(double number, int digits) {
  char buffer[400];
  const int size = std::snprintf(buffer, sizeof buffer, "%.*f", digits, number);
  std::string text(buffer, static_cast<std::size_t>(size));
  // The process may have a locale with a decimal comma.
  std::replace(text.begin(), text.end(), ',', '.');
  return text;
}

void ExpectAsPrinted(double number) {
  for (int digits = 0; digits <= kMostDigits; ++digits) {
    ASSERT_EQ(Fixed(number, digits), Printed(number, digits)) << digits << " digits";
  }
}

TEST(NumberText, HasAsManyDigitsAsAreAskedFor) {
  const struct {
    double number;
    int digits;
    const char* text;
  } rows[] = {
      {0.0, 0, "0"},
      {0.0, 3, "0.000"},
      {-0.0, 1, "-0.0"},
      {1.0, 0, "1"},
      {-2.35, 2, "-2.35"},
      {9.995, 2, "9.99"},  // The double is just below.
      {9.9951, 2, "10.00"},
      {-0.001, 2, "-0.00"},
      {1e22, 1, "10000000000000000000000.0"},
      {0.1, 17, "0.10000000000000001"},
      {4503599627370495.5, 1, "4503599627370495.5"},
      {4503599627370496.0, 1, "4503599627370496.0"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Fixed(row.number, row.digits), row.text);
  }
}

TEST(NumberText, RoundsTiesToEven) {
  const struct {
    double number;
    int digits;
    const char* text;
  } rows[] = {
      {0.5, 0, "0"},
      {1.5, 0, "2"},
      {2.5, 0, "2"},
      {-0.5, 0, "-0"},
      {-1.5, 0, "-2"},
      {0.25, 1, "0.2"},
      {0.75, 1, "0.8"},
      {0.125, 2, "0.12"},
      {0.375, 2, "0.38"},
      {1048576.5, 0, "1048576"},
      {1048577.5, 0, "1048578"},
      {0.0009765625, 9, "0.000976562"},
      {0.0029296875, 9, "0.002929688"},
      {4503599627370494.5, 0, "4503599627370494"},
      {4503599627370495.5, 0, "4503599627370496"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Fixed(row.number, row.digits), row.text);
    EXPECT_EQ(Fixed(row.number, row.digits), Printed(row.number, row.digits));
  }
}

TEST(NumberText, AgreesWithThePrinterForAnyBits) {
  std::mt19937_64 random(1);
  for (int i = 0; i < 20'000; ++i) {
    const double number = std::bit_cast<double>(random());
    if (std::isfinite(number)) {
      ExpectAsPrinted(number);
    }
  }
}

TEST(NumberText, AgreesWithThePrinterForNumbersOfDevices) {
  std::mt19937_64 random(2);
  std::uniform_int_distribution<std::int64_t> steps(-100'000'000, 100'000'000);
  for (const double unit : {1.0, 0.5, 0.125, 0.1, 0.01, 0.03125, 1e-7, 1.0 / 3.0}) {
    for (int i = 0; i < 2'000; ++i) {
      ExpectAsPrinted(static_cast<double>(steps(random)) * unit);
    }
  }
}

TEST(NumberText, AgreesWithThePrinterAroundPowersOfTwoAndTen) {
  for (int exponent = -1074; exponent < 1024; ++exponent) {
    const double power = std::ldexp(1.0, exponent);
    for (const double number : {power, std::nextafter(power, 0.0), std::nextafter(power, 1e308)}) {
      ExpectAsPrinted(number);
      ExpectAsPrinted(-number);
    }
  }
  for (int exponent = -12; exponent < 20; ++exponent) {
    const double power = std::pow(10.0, exponent);
    for (const double number : {power, std::nextafter(power, 0.0), power / 2.0, power * 9.5}) {
      ExpectAsPrinted(number);
    }
  }
}

TEST(NumberText, NamesWhatIsNoNumber) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(Fixed(kInfinity, 2), "inf");
  EXPECT_EQ(Fixed(-kInfinity, 0), "-inf");
  EXPECT_EQ(Fixed(std::numeric_limits<double>::quiet_NaN(), 17), "nan");
  EXPECT_EQ(Shortest(kInfinity), "inf");
  EXPECT_EQ(Shortest(-kInfinity), "-inf");
  EXPECT_EQ(Shortest(-std::numeric_limits<double>::quiet_NaN()), "nan");
}

TEST(NumberText, TheShortestReadsBackTheSame) {
  std::mt19937_64 random(3);
  for (int i = 0; i < 20'000; ++i) {
    const double number = std::bit_cast<double>(random());
    if (!std::isfinite(number)) {
      continue;
    }
    const std::string text = Shortest(number);
    double back = 0.0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), back);
    ASSERT_EQ(result.ptr, text.data() + text.size()) << text;
    ASSERT_EQ(std::bit_cast<std::uint64_t>(back), std::bit_cast<std::uint64_t>(number)) << text;
  }
  EXPECT_EQ(Shortest(0.1), "0.1");
  EXPECT_EQ(Shortest(-3.0), "-3");
}

TEST(NumberText, TheShortestOfWholeNumbersIsTheStandardLibrarys) {
  for (int whole = -200'000; whole <= 200'000; ++whole) {
    for (const double number : {whole + 0.0, whole + 0.5}) {
      char buffer[32];
      char* const end = std::to_chars(buffer, std::end(buffer), number).ptr;
      ASSERT_EQ(Shortest(number), std::string(std::begin(buffer), end));
    }
  }
  EXPECT_EQ(Shortest(-0.0), "-0");
  EXPECT_EQ(Shortest(99'999.0), "99999");
  EXPECT_EQ(Shortest(100'000.0), "1e+05");
}

TEST(NumberText, TheShortestOfDecimalsIsTheStandardLibrarys) {
  std::mt19937_64 random(4);
  const std::int64_t powers[] = {1, 10, 100, 1'000, 10'000, 100'000, 1'000'000, 10'000'000};
  for (int i = 0; i < 200'000; ++i) {
    const auto size = static_cast<std::int64_t>(random() >> (random() % 60 + 4));
    const double decimal = static_cast<double>(size) / static_cast<double>(powers[random() % 8]);
    for (const double number : {decimal, -decimal, decimal * 0.1, std::nextafter(decimal, 0.0)}) {
      char buffer[32];
      char* const end = std::to_chars(buffer, std::end(buffer), number).ptr;
      ASSERT_EQ(Shortest(number), std::string(std::begin(buffer), end));
    }
  }
}

TEST(NumberText, WholeNumbersHaveNoZerosInFront) {
  std::mt19937_64 random(5);
  const auto check = [](std::uint64_t number) {
    std::string text;
    AppendWhole(text, number);
    ASSERT_EQ(text, std::to_string(number));
  };
  for (std::uint64_t power = 1; power <= 1'000'000'000'000'000'000; power *= 10) {
    check(power - 1);
    check(power);
    check(power + 1);
  }
  for (int i = 0; i < 100'000; ++i) {
    check(random() >> (random() % 64));
  }
}

TEST(NumberText, AppendsToWhatIsThere) {
  std::string text = "x";
  AppendFixed(text, 1.25, 1);
  AppendShortest(text, -0.5);
  AppendWhole(text, 18'446'744'073'709'551'615U);
  EXPECT_EQ(text, "x1.2-0.518446744073709551615");
}

TEST(NumberText, HasTheDigitsThatAreAskedForOrTheShortestForm) {
  std::string text;
  AppendNumber(text, 0.5, 2);
  AppendNumber(text += ' ', 0.5, 0);
  AppendNumber(text += ' ', 0.5, std::nullopt);
  EXPECT_EQ(text, "0.50 0 0.5");
}

}  // namespace
}  // namespace lum::decoding
