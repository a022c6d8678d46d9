// CExTime: the system's clock and zone, and the sources that replace them.
#include "platform/ExTime.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <cstdlib>

#include "tests/TimeZone.h"

namespace {

double FixedClock() { return 1234.0; }
long FixedZone() { return -3'600'000; }

}  // namespace

TEST(ExTime, CurrentTimeIsTheSystemsInWholeMilliseconds) {
  using namespace std::chrono;
  const auto systemTime = [] {
    return static_cast<double>(
        duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count());
  };
  const double before = systemTime();
  const double time = CExTime::GetCurTime();
  EXPECT_GE(time, before);
  EXPECT_LE(time, systemTime());
  EXPECT_EQ(time, std::floor(time));
}

TEST(ExTime, SourcesReplaceAndRestoreTheSystems) {
  CExTime::SetClock(&FixedClock);
  CExTime::SetTimezoneSource(&FixedZone);
  EXPECT_EQ(CExTime::GetCurTime(), 1234.0);
  EXPECT_EQ(CExTime::GetTimezone(), -3'600'000);
  CExTime::SetClock(nullptr);
  CExTime::SetTimezoneSource(nullptr);
  EXPECT_GT(CExTime::GetCurTime(), 1e12);
  EXPECT_LE(std::labs(CExTime::GetTimezone()), 16L * 3'600'000);
}

TEST(ExTime, TimezoneIsUtcMinusLocalTime) {
  const struct {
    const char* zone;
    long expected;
  } rows[] = {
      // Windows takes names of three letters only.
      {"UTC0", 0},
      {"WST5", 5 * 3'600'000L},
      {"EST-5:30", -(5 * 3'600'000L + 1'800'000L)},
      {"FAR-14", -14 * 3'600'000L},
      {"AWY12", 12 * 3'600'000L},
  };
  for (const auto& row : rows) {
    const lum::test::CTimeZone zone(row.zone);
    EXPECT_EQ(CExTime::GetTimezone(), row.expected) << row.zone;
  }
}

TEST(ExTime, DaylightSavingNowCounts) {
#if defined(_WIN32)
  GTEST_SKIP() << "Windows knows the rules of daylight saving of its own zone only";
#endif
  // The rule keeps daylight saving time on through the whole year.
  const lum::test::CTimeZone always("STD5DST,0/0,J365/25");
  EXPECT_EQ(CExTime::GetTimezone(), 4 * 3'600'000L);
}
