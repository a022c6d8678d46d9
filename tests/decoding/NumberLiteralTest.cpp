// Numbers of formulas and command lines.
#include "decoding/NumberLiteral.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>

namespace lum::decoding {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(NumberLiteral, ReadsDecimalsHexadecimalsAndWords) {
  const struct {
    std::string_view text;
    double expected;
  } rows[] = {
      {"0", 0.0},         {"12", 12.0},       {"0.125", 0.125},
      {".5", 0.5},        {"5.", 5.0},        {"1e3", 1e3},
      {"1.5E-3", 1.5e-3}, {"2e+2", 200.0},    {"0x1F", 31.0},
      {"0Xff", 255.0},    {"007", 7.0},       {"1e308", 1e308},
      {"5e-324", 5e-324}, {"inf", kInfinity}, {"0x10000000000000000", 18446744073709551616.0},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(ReadUnsigned(row.text), row.expected) << row.text;
  }
  EXPECT_TRUE(std::isnan(ReadUnsigned("nan").value_or(0.0)));
}

TEST(NumberLiteral, RefusesSignsRemaindersAndWhatADoubleCannotHold) {
  for (const std::string_view text :
       {"",      " 1",     "1 ",  "-1",    "+1",       "--1",    "1e",   "1e+",
        ".",     "e5",     "0x",  "0x1.8", "0x1p3",    "0xg",    "0x-1", "1,5",
        "1e400", "1e-400", "Inf", "NAN",   "infinity", "nan(1)", "1-2"}) {
    EXPECT_EQ(ReadUnsigned(text), std::nullopt) << text;
  }
}

TEST(NumberLiteral, WritesWhatReadsBack) {
  EXPECT_EQ(NumberText(0.1), "0.1");
  EXPECT_EQ(NumberText(-2.0), "-2");
  EXPECT_EQ(NumberText(-kInfinity), "-inf");
  EXPECT_EQ(NumberText(-std::nan("")), "nan");
  std::mt19937_64 random(3);
  for (int i = 0; i < 10'000; ++i) {
    const double number = std::abs(std::bit_cast<double>(random()));
    if (!std::isnan(number)) {
      EXPECT_EQ(ReadUnsigned(NumberText(number)), number) << NumberText(number);
    }
  }
}

}  // namespace
}  // namespace lum::decoding
