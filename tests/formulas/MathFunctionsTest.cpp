#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "platform/LumBase.h"
#include "tests/formulas/Evaluate.h"

namespace {

using namespace lum::test;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kSmallest = std::numeric_limits<double>::denorm_min();

using Unary = int (CLumType::*)(CLumType&);
using Binary = int (CLumType::*)(CLumType&, CLumType&);

struct UnaryCase {
  const char* name;
  Unary operation;
  double x;
  Outcome expected;
};

struct BinaryCase {
  const char* name;
  Binary operation;
  double a;
  double b;
  Outcome expected;
};

#define OPERATION(name) #name, &CLumType::name

TEST(MathFunctions, GiveTheValuesOfTheirTables) {
  const UnaryCase cases[] = {
      {OPERATION(Sin), 0.0, Gives(0.0)},
      {OPERATION(Sin), 90.0, Gives(1.0)},
      {OPERATION(Sin), -90.0, Gives(-1.0)},
      {OPERATION(Sin), -0.0, Gives(-0.0)},
      {OPERATION(Sin), 30.0, Gives(std::sin(30.0 * D_TO_R))},
      {OPERATION(Cos), 0.0, Gives(1.0)},
      {OPERATION(Cos), 180.0, Gives(-1.0)},
      {OPERATION(Cos), 60.0, Gives(std::cos(60.0 * D_TO_R))},
      {OPERATION(Asin), 1.0, Gives(90.0)},
      {OPERATION(Asin), 1.5, Gives(90.0)},
      {OPERATION(Asin), -7.0, Gives(-90.0)},
      {OPERATION(Asin), kInfinity, Gives(90.0)},
      {OPERATION(Asin), 0.3, Gives(std::asin(0.3) / D_TO_R)},
      {OPERATION(Acos), 1.0, Gives(0.0)},
      {OPERATION(Acos), 2.0, Gives(0.0)},
      {OPERATION(Acos), -3.0, Gives(180.0)},
      {OPERATION(Acos), -kInfinity, Gives(180.0)},
      {OPERATION(Acos), 0.3, Gives(std::acos(0.3) / D_TO_R)},
      {OPERATION(Sqr1D), 16.0, Gives(4.0)},
      {OPERATION(Sqr1D), 2.0, Gives(std::sqrt(2.0))},
      {OPERATION(Sqr1D), 0.0, Gives(0.0)},
      {OPERATION(Sqr1D), -0.0, Gives(-0.0)},
      {OPERATION(Sqr1D), -4.0, {0, 0.0}},
      {OPERATION(Sqr1D), -kSmallest, {0, 0.0}},
      {OPERATION(Sqr1D), kInfinity, Gives(kInfinity)},
      {OPERATION(Log1D), 100.0, Gives(2.0)},
      {OPERATION(Log1D), 1.0, Gives(0.0)},
      {OPERATION(Log1D), 0.001, Gives(std::log10(0.001))},
      {OPERATION(Log1D), 0.0, kKept},
      {OPERATION(Log1D), -0.0, kKept},
      {OPERATION(Log1D), -1.0, kKept},
      {OPERATION(Neg), 4.0, Gives(-4.0)},
      {OPERATION(Neg), 0.0, Gives(-0.0)},
      {OPERATION(Neg), -kInfinity, Gives(kInfinity)},
      {OPERATION(Inverse), 4.0, Gives(-4.0)},
      {OPERATION(Inverse), -0.5, Gives(0.5)},
      {OPERATION(Inverse), 0.0, Gives(-0.0)},
      {OPERATION(Int), 2.7, Gives(2.0)},
      {OPERATION(Int), -2.7, Gives(-2.0)},
      {OPERATION(Int), -0.9, Gives(-0.0)},
      {OPERATION(Int), 1e300, Gives(1e300)},
      {OPERATION(Int), 2251799813685249.5, Gives(2251799813685249.0)},
      {OPERATION(Int), kInfinity, Gives(kInfinity)},
  };
  for (const UnaryCase& row : cases) {
    EXPECT_EQ(Evaluate(row.operation, row.x), row.expected) << row.name << " of " << row.x;
  }
}

TEST(MathFunctions, OfTwoGiveTheValuesOfTheirTables) {
  const BinaryCase cases[] = {
      {OPERATION(Pow1D), 2.0, 10.0, Gives(1024.0)},
      {OPERATION(Pow1D), 10.0, 2.0, Gives(100.0)},
      {OPERATION(Pow1D), 2.0, -1.0, Gives(0.5)},
      {OPERATION(Pow1D), 0.0, 0.0, Gives(1.0)},
      {OPERATION(Pow1D), 0.0, -1.0, Gives(kInfinity)},
      {OPERATION(Modulo), 7.5, 2.0, Gives(1.5)},
      {OPERATION(Modulo), -7.5, 2.0, Gives(-1.5)},
      {OPERATION(Modulo), 7.5, -2.0, Gives(1.5)},
      {OPERATION(Modulo), -4.0, 2.0, Gives(-0.0)},
      {OPERATION(Modulo), 7.5, kInfinity, Gives(7.5)},
      {OPERATION(Bearing), 0.0, 1.0, Gives(0.0)},
      {OPERATION(Bearing), 1.0, 0.0, Gives(90.0)},
      {OPERATION(Bearing), 0.0, -1.0, Gives(180.0)},
      {OPERATION(Bearing), -1.0, 0.0, Gives(270.0)},
      {OPERATION(Bearing), 1.0, 1.0, Gives(45.0)},
      {OPERATION(Bearing), -1.0, -1.0, Gives(225.0)},
      {OPERATION(Bearing), 0.0, 0.0, Gives(0.0)},
      {OPERATION(Bearing), -kSmallest, 1.0, Gives(360.0)},
      {OPERATION(FromEulerRoll), 0.0, 0.0, Gives(0.0)},
      {OPERATION(FromEulerRoll), 90.0, 0.0, Gives(90.0)},
      {OPERATION(FromEulerRoll), -90.0, 0.0, Gives(-90.0)},
      {OPERATION(FromEulerRoll), 450.0, 0.0, Gives(90.0)},
      {OPERATION(FromEulerRoll), kInfinity, 0.0, kKept},
      {OPERATION(FromEulerRoll), kNaN, 0.0, kKept},
  };
  for (const BinaryCase& row : cases) {
    EXPECT_EQ(Evaluate(row.operation, row.a, row.b), row.expected)
        << row.name << " of " << row.a << " and " << row.b;
  }
}

TEST(MathFunctions, BeyondTheirDomainGiveNotANumber) {
  const Outcome outcomes[] = {
      Evaluate(&CLumType::Modulo, 1.0, 0.0),
      Evaluate(&CLumType::Pow1D, -1.0, 0.5),
      Evaluate(&CLumType::Sin, kInfinity),
      Evaluate(&CLumType::Cos, kNaN),
      Evaluate(&CLumType::Asin, kNaN),
      Evaluate(&CLumType::Acos, kNaN),
      Evaluate(&CLumType::Sqr1D, kNaN),
      Evaluate(&CLumType::Log1D, kNaN),
      Evaluate(&CLumType::Int, kNaN),
      Evaluate(&CLumType::Bearing, kNaN, 1.0),
      Evaluate(&CLumType::Modulo, kInfinity, 1.0),
      Evaluate(&CLumType::FromEulerRoll, 1.0, kNaN),
  };
  for (const Outcome& outcome : outcomes) {
    EXPECT_EQ(outcome.code, 1);
    EXPECT_TRUE(std::isnan(outcome.result));
  }
}

struct RollCase {
  double roll;
  double pitch;
  double expected;
};

TEST(MathFunctions, FromEulerRollCountsOnBeyondTheUpright) {
  const RollCase cases[] = {{30.0, 0.0, 30.0},
                            {120.0, 0.0, 120.0},
                            {-30.0, 0.0, -30.0},
                            {-120.0, 0.0, -120.0},
                            {180.0, 0.0, 360.0},
                            {330.0, 0.0, -30.0},
                            {30.0, 60.0, 14.47751218592992},
                            {120.0, 60.0, 154.3410937267447},
                            {30.0, 90.0, 0.0}};
  for (const RollCase& row : cases) {
    const Outcome outcome = Evaluate(&CLumType::FromEulerRoll, row.roll, row.pitch);
    EXPECT_EQ(outcome.code, 1);
    EXPECT_NEAR(outcome.result, row.expected, 1e-12) << row.roll << ", " << row.pitch;
  }
}

TEST(MathFunctions, BearingOfEveryDegreeIsThatDegree) {
  for (int degrees = 0; degrees < 360; ++degrees) {
    const double angle = degrees * D_TO_R;
    const Outcome outcome = Evaluate(&CLumType::Bearing, std::sin(angle), std::cos(angle));
    EXPECT_EQ(outcome.code, 1);
    EXPECT_NEAR(outcome.result, degrees, 1e-12);
    EXPECT_GE(outcome.result, 0.0);
    EXPECT_LT(outcome.result, 360.0);
  }
}

TEST(MathFunctions, BearingMultipliesBeforeItDivides) {
  // The two ways are a bit apart for some of these.
  int differences = 0;
  for (int i = 1; i < 100; ++i) {
    const double radians = std::atan2(i, 100.0);
    const double expected = radians * 180.0 / 3.141592653589793;
    differences += expected != radians / D_TO_R ? 1 : 0;
    EXPECT_EQ(Evaluate(&CLumType::Bearing, i, 100.0), Gives(expected)) << i;
  }
  EXPECT_GT(differences, 0);
}

struct ClampCase {
  Unary operation;
  double given;
  double left;
};

TEST(MathFunctions, ArcFunctionsWriteTheClampBackIntoTheArgument) {
  const ClampCase cases[] = {
      {&CLumType::Asin, 1.5, 1.0},   {&CLumType::Asin, -1.5, -1.0}, {&CLumType::Acos, 3.0, 1.0},
      {&CLumType::Acos, -3.0, -1.0}, {&CLumType::Asin, 0.5, 0.5},   {&CLumType::Acos, -1.0, -1.0},
  };
  for (const ClampCase& row : cases) {
    CLumDouble result;
    CLumDouble argument(row.given);
    EXPECT_EQ((result.*row.operation)(argument), 1);
    double left = 0.0;
    argument.GetDouble(left);
    EXPECT_EQ(left, row.left) << row.given;
  }
}

TEST(MathFunctions, ArcFunctionsCannotWriteBackIntoAnotherNumberKind) {
  CLumDouble result;
  CLumInt argument(5);
  EXPECT_EQ(result.Asin(argument), 1);
  double angle = 0.0;
  result.GetDouble(angle);
  int left = 0;
  argument.GetInt(left);
  EXPECT_EQ(angle, 90.0);
  EXPECT_EQ(left, 5);
}

TEST(MathFunctions, TheResultMayBeItsOwnArgument) {
  CLumDouble value(1.5);
  EXPECT_EQ(value.Asin(value), 1);
  double number = 0.0;
  value.GetDouble(number);
  EXPECT_EQ(number, 90.0);
  EXPECT_EQ(value.IsEqual(value, value, value), 1);
  value.GetDouble(number);
  EXPECT_EQ(number, 1.0);
}

}  // namespace
