#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tests/formulas/Evaluate.h"

namespace {

using namespace lum::test;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

struct TextCase {
  std::string text;
  double expected;
};

TEST(TextFunctions, ValReadsTheNumberATextBeginsWith) {
  const TextCase cases[] = {
      {"12.5 m", 12.5},
      {"12.5", 12.5},
      {" \t\r\n-7", -7.0},
      {"+.5", 0.5},
      {"5.", 5.0},
      {"1.5.7", 1.5},
      {"1,5", 1.0},
      {"1e3", 1000.0},
      {"1e", 1.0},
      {"1e+", 1.0},
      {"0x10", 16.0},
      {"0x1.8p1", 3.0},
      {"-0", -0.0},
      {"inf", kInfinity},
      {"-Infinity", -kInfinity},
      {"1e999", kInfinity},
      {"1e-999", 0.0},
      {"0.1", 0.1},
      {"9007199254740993", 9007199254740992.0},
      {"0.30000000000000004", 0.30000000000000004},
      {"123456789012345678901234567890", 123456789012345678901234567890.0},
      {"3.14159265358979323846264338327950288", 3.141592653589793},
      {"7\xB0", 7.0},
      {Record("7\0008"), 7.0},
  };
  for (const TextCase& row : cases) {
    for (const bool lenient : {false, true}) {
      EXPECT_EQ(Evaluate(&CLumType::Val, row.text, lenient), Gives(row.expected)) << row.text;
    }
  }
}

TEST(TextFunctions, ValOfATextWithoutNumberIsZero) {
  for (const std::string& text :
       {std::string("abc"), std::string(), std::string("  "), std::string("-"), std::string("."),
        std::string("e5"), std::string("infix"), std::string("\xB0"), Record("\0007")}) {
    EXPECT_EQ(Evaluate(&CLumType::Val, text, false), (Outcome{0, 0.0})) << text;
    EXPECT_EQ(Evaluate(&CLumType::Val, text, true), kLenientZero) << text;
  }
}

TEST(TextFunctions, ValReadsNotANumber) {
  const Outcome outcome = Evaluate(&CLumType::Val, "nan", false);
  EXPECT_EQ(outcome.code, 1);
  EXPECT_TRUE(std::isnan(outcome.result));
}

TEST(TextFunctions, ValTakesTheNumberOfKindsWithoutText) {
  EXPECT_EQ(Evaluate(&CLumType::Val, 7.25, false), Gives(7.25));
  CLumInt seven(7);
  CLumDouble result(kPrevious);
  EXPECT_EQ(result.Val(seven, false), 1);
  double number = 0.0;
  result.GetDouble(number);
  EXPECT_EQ(number, 7.0);
}

TEST(TextFunctions, ValOfAValueWithoutTextOrNumberIsZero) {
  // A wide text is no 8-bit text.
  EXPECT_EQ(Evaluate(&CLumType::Val, L"7", false), (Outcome{0, 0.0}));
  EXPECT_EQ(Evaluate(&CLumType::Val, L"7", true), kLenientZero);
}

TEST(TextFunctions, ValOfItsOwnResultIsZero) {
  CLumDouble value(5.0);  // It is cleared before the argument is read.
  EXPECT_EQ(value.Val(value, false), 1);
  double number = 1.0;
  value.GetDouble(number);
  EXPECT_EQ(number, 0.0);
}

struct PositionCase {
  const wchar_t* position;
  const wchar_t* hemisphere;
  Outcome expected;
};

constexpr double kLatitude = 48.117299999999986;

TEST(TextFunctions, NMEAPosGivesSignedDegrees) {
  const PositionCase cases[] = {
      {L"4807.038", L"N", Gives(kLatitude)},
      {L"4807.038", L"E", Gives(kLatitude)},
      {L"4807.038", L"S", Gives(-kLatitude)},
      {L"4807.038", L"W", Gives(-kLatitude)},
      {L"4807.038", L"s", Gives(kLatitude)},
      {L"4807.038", L"w", Gives(kLatitude)},
      {L"4807.038", L"South", Gives(kLatitude)},
      {L"4807.038", L" S", Gives(kLatitude)},
      {L"4807.038", L"SW", Gives(kLatitude)},
      {L"-4807.038", L"N", Gives(kLatitude)},
      {L"-4807.038", L"S", Gives(-kLatitude)},
      {L"  4807.038N", L"N", Gives(kLatitude)},
      {L"0000.000", L"N", Gives(0.0)},
      {L"0000.000", L"S", Gives(-0.0)},
      {L"xyz", L"W", Gives(-0.0)},
      {L"xyz", L"E", Gives(0.0)},
      {L"inf", L"S", Gives(-kInfinity)},
      {L"18000", L"W", Gives(-180.0)},
      {L"", L"N", kKept},
      {L"4807.038", L"", kKept},
      {L"", L"", kKept},
  };
  for (const PositionCase& row : cases) {
    EXPECT_EQ(Evaluate(&CLumType::NMEAPos, row.position, row.hemisphere), row.expected)
        << CStringA(CString(row.position)).GetString() << ' '
        << CStringA(CString(row.hemisphere)).GetString();
  }
}

TEST(TextFunctions, NMEAPosOfUsualPositions) {
  EXPECT_NEAR(Evaluate(&CLumType::NMEAPos, L"4807.038", L"N").result, 48.1173, 1e-12);
  EXPECT_NEAR(Evaluate(&CLumType::NMEAPos, L"01131.000", L"E").result, 11.516666666666667, 1e-12);
}

TEST(TextFunctions, NMEAPosReadsEightBitTextsAsWideOnes) {
  EXPECT_EQ(Evaluate(&CLumType::NMEAPos, "4807.038", "S"), Gives(-kLatitude));
  EXPECT_EQ(Evaluate(&CLumType::NMEAPos, "4807.038", ""), kKept);
}

TEST(TextFunctions, NMEAPosOfValuesWithoutTextKeepsTheResult) {
  EXPECT_EQ(Evaluate(&CLumType::NMEAPos, 4807.038, L"S"), kKept);
  EXPECT_EQ(Evaluate(&CLumType::NMEAPos, L"4807.038", 1.0), kKept);
}

TEST(TextFunctions, NMEAPosTakesAHemisphereOfExactlyOneCharacter) {
  CLumDouble result;
  CLumName position(L"4807.038");
  CLumName hemisphere(CString(L"S\0x", 3));
  EXPECT_EQ(result.NMEAPos(position, hemisphere), 1);
  double number = 0.0;
  result.GetDouble(number);
  EXPECT_EQ(number, kLatitude);
}

}  // namespace
