// Epsilon, modgeo, HexVal and D_TO_R.
#include "platform/Numerics.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <limits>
#include <random>
#include <string_view>

TEST(Numerics, EpsilonScalesWithTheMagnitude) {
  EXPECT_EQ(Epsilon(1.0), DBL_EPSILON);
  EXPECT_EQ(Epsilon(4.0), 4 * DBL_EPSILON);
  EXPECT_EQ(Epsilon(0.0), 0.0);
}

TEST(Numerics, DegreesToRadians) { EXPECT_DOUBLE_EQ(180.0 * D_TO_R, std::acos(-1.0)); }

TEST(Numerics, AnglesAreNormalised) {
  const double justBelow = std::nextafter(-180.0, -1000.0);
  const struct {
    double angle;
    double expected;
  } rows[] = {
      {0, 0},
      {-0.0, 0},
      {90, 90},
      {180, 180},
      {-180, 180},
      {181, -179},
      {-181, 179},
      {359, -1},
      {360, 0},
      {-360, 0},
      {361, 1},
      {540, 180},
      {-540, 180},
      {719.5, -0.5},
      {-719.5, 0.5},
      {3600000, 0},
      {1e-300, 1e-300},
      {std::nextafter(180.0, 1000.0), std::nextafter(180.0, 1000.0) - 360.0},
      {justBelow, justBelow + 360.0},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(modgeo(row.angle), row.expected) << row.angle;
    EXPECT_EQ(std::signbit(modgeo(row.angle)), std::signbit(row.expected)) << row.angle;
  }
}

TEST(Numerics, AnyFiniteAngleLandsInTheRange) {
  for (const double angle : {1e15, -1e15, 1e300, -1e300, DBL_MAX, -DBL_MAX, DBL_MIN, -DBL_MIN}) {
    EXPECT_GT(modgeo(angle), -180.0) << angle;
    EXPECT_LE(modgeo(angle), 180.0) << angle;
  }
  std::mt19937_64 random(3);
  std::uniform_real_distribution<double> angles(-1e6, 1e6);
  for (int round = 0; round < 10'000; ++round) {
    const double angle = angles(random);
    const double normal = modgeo(angle);
    ASSERT_GT(normal, -180.0);
    ASSERT_LE(normal, 180.0);
    ASSERT_NEAR(std::remainder(angle - normal, 360.0), 0.0, 1e-9);
  }
}

TEST(Numerics, WhatIsNoAngleGivesNotANumber) {
  EXPECT_TRUE(std::isnan(modgeo(std::numeric_limits<double>::infinity())));
  EXPECT_TRUE(std::isnan(modgeo(-std::numeric_limits<double>::infinity())));
  EXPECT_TRUE(std::isnan(modgeo(std::numeric_limits<double>::quiet_NaN())));
}

TEST(Numerics, HexadecimalDigitsHaveTheirValue) {
  constexpr std::wstring_view kLower = L"0123456789abcdef";
  constexpr std::wstring_view kUpper = L"0123456789ABCDEF";
  for (unsigned int code = 0; code < 0x10000; ++code) {
    const auto ch = static_cast<wchar_t>(code);
    const std::size_t place = std::min(kLower.find(ch), kUpper.find(ch));
    const int expected = place == std::wstring_view::npos ? -1 : static_cast<int>(place);
    ASSERT_EQ(HexVal(ch), expected) << code;
  }
}
