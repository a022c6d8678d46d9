#include <gtest/gtest.h>

#include <limits>

#include "tests/formulas/Evaluate.h"

namespace {

using namespace lum::test;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

constexpr Outcome kTrue = Gives(1.0);
constexpr Outcome kFalse = Gives(0.0);

TEST(ComparisonFunctions, SignCountsZeroAsPositive) {
  EXPECT_EQ(Evaluate(&CLumType::Sign, 0.0), Gives(1.0));
  EXPECT_EQ(Evaluate(&CLumType::Sign, -0.0), Gives(1.0));
  EXPECT_EQ(Evaluate(&CLumType::Sign, 3.5), Gives(1.0));
  EXPECT_EQ(Evaluate(&CLumType::Sign, -1e-300), Gives(-1.0));
  EXPECT_EQ(Evaluate(&CLumType::Sign, kNaN), Gives(-1.0));
}

TEST(ComparisonFunctions, IsNullHoldsForBothZerosOnly) {
  EXPECT_EQ(Evaluate(&CLumType::IsNull, 0.0), kTrue);
  EXPECT_EQ(Evaluate(&CLumType::IsNull, -0.0), kTrue);
  EXPECT_EQ(Evaluate(&CLumType::IsNull, 1e-300), kFalse);
  EXPECT_EQ(Evaluate(&CLumType::IsNull, kNaN), kFalse);
}

struct PairCase {
  double a;
  double b;
  Outcome isGreater;
  Outcome isLess;
};

TEST(ComparisonFunctions, OrderTwoNumbers) {
  const PairCase cases[] = {
      {2.0, 1.0, kTrue, kFalse},   {1.0, 2.0, kFalse, kTrue},         {1.0, 1.0, kFalse, kFalse},
      {0.0, -0.0, kFalse, kFalse}, {kInfinity, 1e308, kTrue, kFalse}, {kNaN, 1.0, kFalse, kFalse},
  };
  for (const PairCase& row : cases) {
    EXPECT_EQ(Evaluate(&CLumType::IsGreater, row.a, row.b), row.isGreater) << row.a;
    EXPECT_EQ(Evaluate(&CLumType::IsLess, row.a, row.b), row.isLess) << row.a;
  }
}

using Ternary = int (CLumType::*)(CLumType&, CLumType&, CLumType&);

struct TernaryCase {
  const char* name;
  Ternary operation;
  double a;
  double b;
  double c;
  Outcome expected;
};

#define OPERATION(name) #name, &CLumType::name

TEST(ComparisonFunctions, OfThreeGiveTheValuesOfTheirTables) {
  const TernaryCase cases[] = {
      {OPERATION(IsEqual), 1.0, 1.5, 0.5, kTrue},
      {OPERATION(IsEqual), 1.5, 1.0, 0.5, kTrue},
      {OPERATION(IsEqual), 1.0, 1.5000001, 0.5, kFalse},
      {OPERATION(IsEqual), 1.0, 1.0, 0.0, kTrue},
      {OPERATION(IsEqual), 1.0, 1.0, -1.0, kFalse},
      {OPERATION(IsEqual), kInfinity, kInfinity, 1.0, kFalse},
      {OPERATION(IsEqual), kNaN, kNaN, kInfinity, kFalse},
      {OPERATION(ClipValue), 5.0, 1.0, 3.0, Gives(3.0)},
      {OPERATION(ClipValue), 0.0, 1.0, 3.0, Gives(1.0)},
      {OPERATION(ClipValue), 2.0, 1.0, 3.0, Gives(2.0)},
      {OPERATION(ClipValue), 1.0, 1.0, 3.0, Gives(1.0)},
      {OPERATION(ClipValue), 3.0, 1.0, 3.0, Gives(3.0)},
      {OPERATION(ClipValue), 5.0, 3.0, 1.0, Gives(3.0)},
      {OPERATION(ClipValue), 2.0, 3.0, 1.0, Gives(3.0)},
      {OPERATION(ClipValue), -9.0, 3.0, 1.0, Gives(3.0)},
      {OPERATION(ClipValue), 2.0, kNaN, kNaN, Gives(2.0)},
      {OPERATION(GateValue), 5.0, 1.0, 3.0, {0, 5.0}},
      {OPERATION(GateValue), 0.5, 1.0, 3.0, {0, 0.5}},
      {OPERATION(GateValue), 3.0, 1.0, 3.0, Gives(3.0)},
      {OPERATION(GateValue), 1.0, 1.0, 3.0, Gives(1.0)},
      {OPERATION(GateValue), 2.0, 3.0, 1.0, {0, 2.0}},
      {OPERATION(GateValue), 2.0, kNaN, 3.0, {0, 2.0}},
      {OPERATION(ValueInRange), 2.0, 3.0, 1.0, kTrue},
      {OPERATION(ValueInRange), 2.0, 1.0, 3.0, kTrue},
      {OPERATION(ValueInRange), 3.0, 1.0, 3.0, kTrue},
      {OPERATION(ValueInRange), 1.0, 1.0, 3.0, kTrue},
      {OPERATION(ValueInRange), 3.5, 1.0, 3.0, kFalse},
      {OPERATION(ValueInRange), 0.5, 3.0, 1.0, kFalse},
      {OPERATION(ValueInRange), kNaN, 1.0, 3.0, kFalse},
      {OPERATION(SelectValue), 7.0, 8.0, 0.0, Gives(7.0)},
      {OPERATION(SelectValue), 7.0, 8.0, -0.0, Gives(7.0)},
      {OPERATION(SelectValue), 7.0, 8.0, 0.5, Gives(8.0)},
      {OPERATION(SelectValue), 7.0, 8.0, -1.0, Gives(8.0)},
      {OPERATION(SelectValue), 7.0, 8.0, kNaN, Gives(8.0)},
  };
  for (const TernaryCase& row : cases) {
    EXPECT_EQ(Evaluate(row.operation, row.a, row.b, row.c), row.expected)
        << row.name << " of " << row.a << ", " << row.b << ", " << row.c;
  }
}

TEST(ComparisonFunctions, CheckInValidRefusesTheMarkerExactly) {
  EXPECT_EQ(Evaluate(&CLumType::CheckInValid, -999.0, -999.0), (Outcome{0, 0.0}));
  EXPECT_EQ(Evaluate(&CLumType::CheckInValid, -999.0000001, -999.0), Gives(-999.0000001));
  EXPECT_EQ(Evaluate(&CLumType::CheckInValid, 12.5, -999.0), Gives(12.5));
  EXPECT_EQ(Evaluate(&CLumType::CheckInValid, -0.0, 0.0), (Outcome{0, 0.0}));
}

}  // namespace
