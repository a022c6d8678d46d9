// The dates of CYMDMsecToMsec, every one of them, in every time zone: against a calendar that
// counts day by day, and against the platform's own conversion of local standard time.
#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <optional>
#include <string>

#include "platform/LumBase.h"
#include "tests/TimeZone.h"
#include "tests/formulas/Evaluate.h"

namespace {

using namespace lum::test;

constexpr double kDay = 86400000.0;
constexpr double kHour = 3600000.0;

// POSIX counts west of Greenwich.
std::string ZoneText(int hoursEast) { return "TST" + std::to_string(-hoursEast); }

struct Date {
  int year = 1970;
  int month = 1;
  int day = 1;
};

bool IsLeap(int year) { return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0); }

int DaysOf(const Date& date) {
  constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return date.month == 2 && IsLeap(date.year) ? 29 : kDays[date.month - 1];
}

void GoToNextDay(Date& date) {
  if (++date.day <= DaysOf(date)) {
    return;
  }
  date.day = 1;
  if (++date.month > 12) {
    date.month = 1;
    ++date.year;
  }
}

// Calls `check` with every date of 1970 to 3000 and its number of days since the first.
template <typename Check>
void ForEachDate(const Check& check) {
  int days = 0;
  for (Date date; date.year <= 3000; GoToNextDay(date)) {
    check(date, days++);
  }
}

// The way by local standard time: nothing when the platform cannot go it.
std::optional<double> ByLocalTime(const Date& date, int hoursEast) {
  std::tm local = {};
  local.tm_year = date.year - 1900;
  local.tm_mon = date.month - 1;
  local.tm_mday = date.day;
  const std::time_t seconds = std::mktime(&local);
  if (seconds == -1) {  // Never a time: zones differ by whole hours.
    return std::nullopt;
  }
  return static_cast<double>(seconds) * 1000.0 + hoursEast * kHour;
}

class Calendar : public testing::TestWithParam<int> {};

TEST_P(Calendar, EveryDateIsItsNumberOfDays) {
  const CTimeZone zone(ZoneText(GetParam()));
  CLumDouble msec(0.5);
  int mistakes = 0;
  ForEachDate([&](const Date& date, int days) {
    CLumInt year(date.year);
    CLumInt month(date.month);
    CLumInt day(date.day);
    CLumDouble result;
    double number = 0.0;
    mistakes += result.CYMDMsecToMsec(year, month, day, msec) == 1 ? 0 : 1;
    result.GetDouble(number);
    mistakes += number == days * kDay + 0.5 ? 0 : 1;
  });
  EXPECT_EQ(mistakes, 0);
}

TEST_P(Calendar, EveryDateIsWhatThePlatformMakesOfLocalStandardTime) {
  const CTimeZone zone(ZoneText(GetParam()));
  int compared = 0;
  int mistakes = 0;
  ForEachDate([&](const Date& date, int) {
    const std::optional<double> expected = ByLocalTime(date, GetParam());
    if (!expected) {
      return;
    }
    ++compared;
    const Outcome outcome = Evaluate(&CLumType::CYMDMsecToMsec, date.year, date.month, date.day, 0);
    mistakes += outcome == Gives(*expected) ? 0 : 1;
  });
  EXPECT_EQ(mistakes, 0);
  EXPECT_GE(compared, 376000);
}

TEST_P(Calendar, DaysBeyondTheMonthCountOnAsThePlatformCarriesThem) {
  const CTimeZone zone(ZoneText(GetParam()));
  int mistakes = 0;
  for (Date date; date.year <= 3000; ++date.year) {
    for (date.month = 1; date.month <= 12; ++date.month) {
      for (date.day = DaysOf(date) + 1; date.day <= 31; ++date.day) {
        const std::optional<double> expected = ByLocalTime(date, GetParam());
        const Outcome outcome =
            Evaluate(&CLumType::CYMDMsecToMsec, date.year, date.month, date.day, 0);
        mistakes += expected && outcome == Gives(*expected) ? 0 : 1;
      }
    }
    date.month = 1;
  }
  EXPECT_EQ(mistakes, 0);
}

TEST_P(Calendar, LocalTimesFollowTheZone) {
  const CTimeZone zone(ZoneText(GetParam()));
  const double offset = GetParam() * kHour;
  EXPECT_EQ(CExTime::GetTimezone(), -GetParam() * 3600000L);
  const double noon = 20000 * kDay + 12 * kHour;
  EXPECT_EQ(Evaluate(&CLumType::UtcToLocal, noon), Gives(noon + offset));
  EXPECT_EQ(Evaluate(&CLumType::LocalToUtc, 0.0), Gives(0.0 - offset));
}

std::string ZoneName(const testing::TestParamInfo<int>& zone) {
  return std::string(zone.param < 0 ? "West" : "East") + std::to_string(std::abs(zone.param));
}

INSTANTIATE_TEST_SUITE_P(Zones, Calendar, testing::Range(-12, 15), ZoneName);

}  // namespace
