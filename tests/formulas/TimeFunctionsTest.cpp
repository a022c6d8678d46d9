#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "platform/LumBase.h"
#include "tests/formulas/Evaluate.h"

namespace {

using namespace lum::test;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kDay = 86400000.0;
constexpr double kHour = 3600000.0;
constexpr double kMinute = 60000.0;
constexpr double kToday = 20000 * kDay;

double clockTime = 0.0;
long timezoneOffset = 0;

// Puts a clock and a zone of the test's own in the host's place.
class TimeFunctions : public testing::Test {
 protected:
  void SetUp() override {
    CExTime::SetClock([] { return clockTime; });
    CExTime::SetTimezoneSource([] { return timezoneOffset; });
  }
  void TearDown() override {
    CExTime::SetClock(nullptr);
    CExTime::SetTimezoneSource(nullptr);
  }
};

struct TextCase {
  std::string text;
  Outcome expected;
};

TEST_F(TimeFunctions, TimeConvGivesSeconds) {
  const TextCase cases[] = {
      {"123045.5", Gives(45045.5)},
      {"000000", Gives(0.0)},
      {"235959.99", Gives(86399.99)},
      {"1 2 3.5", Gives(3723.5)},
      {" 12 30 45", Gives(45045.0)},
      {"12:30", {0, 0.0}},
      {"123045.56789", Gives(45000.0 + 45.56)},  // Five characters of seconds.
      {"123", {0, 0.0}},
      {"1230", {0, 0.0}},
      {"12304", Gives(45004.0)},
      {"-1-2-3", Gives(-3723.0)},
      {"+1+2+3", Gives(3723.0)},
      {"12301e2", Gives(45100.0)},
      {"1230inf", Gives(kInfinity)},
      {"1230infi", {0, 0.0}},
      {"12300x1F", Gives(45031.0)},
      {"ab", {0, 0.0}},
      {"", {0, 0.0}},
      {"12 ab 45", {0, 0.0}},
      {"99 99 99", Gives(362439.0)},
      {Record("12\00030045"), {0, 0.0}},
  };
  for (const TextCase& row : cases) {
    EXPECT_EQ(Evaluate(&CLumType::TimeConv, row.text), row.expected) << row.text;
  }
}

TEST_F(TimeFunctions, TimeConvOfAValueWithoutTextIsZero) {
  EXPECT_EQ(Evaluate(&CLumType::TimeConv, 123045.5), (Outcome{0, 0.0}));
  EXPECT_EQ(Evaluate(&CLumType::TimeConv, L"123045.5"), (Outcome{0, 0.0}));
}

struct NumberCase {
  double number;
  Outcome expected;
};

TEST_F(TimeFunctions, HmsToMsecGivesMilliseconds) {
  const NumberCase cases[] = {
      {123045.5, Gives(45045500.0)},
      {250000, Gives(90000000.0)},
      {0, Gives(0.0)},
      {1, Gives(1000.0)},
      {99.5, Gives(99500.0)},
      {100, Gives(60000.0)},
      {-123045.5, Gives(-45045500.0)},
      {2147483647, Gives(773095007000.0)},
      {2147483647.5, Gives(773095007500.0)},
      {2147483648.0, kKept},
      {-2147483648.0, Gives(-773095008000.0)},
      {-2147483649.0, kKept},
      {1e300, kKept},
      {kNaN, kKept},
      {kInfinity, kKept},
      {-kInfinity, kKept},
  };
  for (const NumberCase& row : cases) {
    EXPECT_EQ(Evaluate(&CLumType::HmsToMsec, row.number), row.expected) << row.number;
  }
}

struct ExpandCase {
  double timeOfDay;
  double reference;
  double expected;
};

TEST_F(TimeFunctions, ExpandTimeFindsTheNearestDay) {
  const ExpandCase cases[] = {
      {1000, kToday + kDay - kMinute, kToday + kDay + 1000},
      {kDay - kMinute, kToday + kMinute, kToday - kMinute},
      {12 * kHour, kToday, kToday + 12 * kHour},
      {0, kToday + 12 * kHour, kToday},
      {0, kToday + 12 * kHour + 1, kToday + kDay},
      {12 * kHour + 1, kToday, kToday - 12 * kHour + 1},
      {5 * kHour, kToday + 5 * kHour, kToday + 5 * kHour},
      {kDay + 5 * kHour, kToday + 5 * kHour, kToday + 5 * kHour},
      {-kHour, kToday + 5 * kHour, kToday - kHour},
      {1000.25, kToday, kToday + 1000.25},
      {1000, 1000, 1000},
      {kDay - 1000, 1000, -1000},
  };
  for (const ExpandCase& row : cases) {
    clockTime = row.reference;
    EXPECT_EQ(Evaluate(&CLumType::ExpandTime, row.timeOfDay), Gives(row.expected))
        << row.timeOfDay << " at " << row.reference;
    clockTime = 0.0;
    EXPECT_EQ(Evaluate(&CLumType::ExpandTimeEx, row.timeOfDay, row.reference), Gives(row.expected))
        << row.timeOfDay << " at " << row.reference;
  }
}

TEST_F(TimeFunctions, ExpandTimeOfNoFiniteTimeIsNotANumber) {
  clockTime = kToday;
  EXPECT_TRUE(std::isnan(Evaluate(&CLumType::ExpandTime, kInfinity).result));
  EXPECT_TRUE(std::isnan(Evaluate(&CLumType::ExpandTimeEx, 0.0, kNaN).result));
}

struct ZoneCase {
  double time;
  long offset;
  double expected;
};

TEST_F(TimeFunctions, UtcToLocalKeepsATimeOfDayWithinItsDay) {
  const ZoneCase cases[] = {
      {3600000, -7200000, 10800000},
      {0, 3600000, -3600000},
      {kDay - kHour, -7200000, kHour},
      {kDay - 1, 0, kDay - 1},
      {kDay, -7200000, kDay + 7200000},
      {kDay, 7200000, kDay - 7200000},
      {kToday + kHour, -7200000, kToday + 3 * kHour},
      {-kToday, -7200000, -kDay + 7200000},
  };
  for (const ZoneCase& row : cases) {
    timezoneOffset = row.offset;
    EXPECT_EQ(Evaluate(&CLumType::UtcToLocal, row.time), Gives(row.expected))
        << row.time << " by " << row.offset;
  }
}

TEST_F(TimeFunctions, LocalToUtcLeavesTheTimeOfDayOfAnAbsoluteTime) {
  const ZoneCase cases[] = {
      {3600000, 7200000, 10800000},
      {0, -3600000, -3600000},
      {kDay - kHour, 7200000, kDay + kHour},
      {kDay, 7200000, kDay + 7200000},
      {kDay, -7200000, kDay - 7200000},
      {kDay + 1, -7200000, kDay - 7200000 + 1},
      {kDay + 1, 7200000, 7200000 + 1},
      {kToday + kHour, 7200000, 3 * kHour},
      {kToday + kHour, -7200000, kDay - kHour},
  };
  for (const ZoneCase& row : cases) {
    timezoneOffset = row.offset;
    EXPECT_EQ(Evaluate(&CLumType::LocalToUtc, row.time), Gives(row.expected))
        << row.time << " by " << row.offset;
  }
}

TEST_F(TimeFunctions, YyToCcyyTurnsAtEighty) {
  const NumberCase cases[] = {
      {79, Gives(2079)},   {80, Gives(1980)}, {0, Gives(2000)},      {99, Gives(1999)},
      {2019, Gives(3919)}, {-1, Gives(1999)}, {79.5, Gives(2079.5)}, {79.999, Gives(2079.999)},
  };
  for (const NumberCase& row : cases) {
    EXPECT_EQ(Evaluate(&CLumType::YyToCcyy, row.number), row.expected) << row.number;
  }
}

struct DateCase {
  double year;
  double month;
  double day;
  double msec;
  Outcome expected;
};

TEST_F(TimeFunctions, CYMDMsecToMsecGivesTheAbsoluteTime) {
  const DateCase cases[] = {
      {1970, 1, 2, 0, Gives(kDay)},
      {1970, 1, 1, 0, Gives(0.0)},
      {1970, 1, 1, 12345.5, Gives(12345.5)},
      {1970, 1, 1, -1, Gives(-1.0)},
      {2000, 2, 29, 0, Gives(951782400000.0)},
      {2000, 2, 30, 0, Gives(951868800000.0)},  // March 1.
      {2001, 2, 30, 0, Gives(983491200000.0)},  // March 2.
      {2001, 4, 31, 0, Gives(988675200000.0)},  // May 1.
      {2026, 11, 21, 43200000, Gives(1795262400000.0)},
      {3000, 12, 31, 0, Gives(32535129600000.0)},
      {2000.9, 2.9, 29.9, 0, Gives(951782400000.0)},
      {2000, 1, 1, kInfinity, Gives(kInfinity)},
      {2000, 13, 1, 0, kKept},
      {2000, 0, 1, 0, kKept},
      {2000, 0.9, 1, 0, kKept},
      {2000, -1, 1, 0, kKept},
      {2000, 1, 0, 0, kKept},
      {2000, 1, 32, 0, kKept},
      {2000, 1, -5, 0, kKept},
      {1969, 12, 31, 0, kKept},
      {1969.9, 12, 31, 0, kKept},
      {3001, 1, 1, 0, kKept},
      {-2000, 1, 1, 0, kKept},
      {kNaN, 1, 1, 0, kKept},
      {2000, kInfinity, 1, 0, kKept},
      {2000, 1, -kInfinity, 0, kKept},
      {1e300, 1, 1, 0, kKept},
      {2000, 4294967297.0, 1, 0, kKept},
  };
  for (const DateCase& row : cases) {
    EXPECT_EQ(Evaluate(&CLumType::CYMDMsecToMsec, row.year, row.month, row.day, row.msec),
              row.expected)
        << row.year << '-' << row.month << '-' << row.day << ' ' << row.msec;
  }
}

}  // namespace
