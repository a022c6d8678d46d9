// CExTime: the system's clock and zone, and the sources that replace them.
#include "platform/ExTime.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <ctime>
#include <optional>
#include <string>

namespace {

double FixedClock() { return 1234.0; }
long FixedZone() { return -3'600'000; }

#if !defined(_WIN32)
// Sets the process's zone for one scope.
class CZone {
 public:
  explicit CZone(const char* zone) {
    if (const char* old = std::getenv("TZ")) {
      m_old = old;
    }
    ::setenv("TZ", zone, 1);
    ::tzset();
  }
  ~CZone() {
    if (m_old) {
      ::setenv("TZ", m_old->c_str(), 1);
    } else {
      ::unsetenv("TZ");
    }
    ::tzset();
  }
  CZone(const CZone&) = delete;
  CZone& operator=(const CZone&) = delete;

 private:
  std::optional<std::string> m_old;
};
#endif

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

#if !defined(_WIN32)
TEST(ExTime, TimezoneIsUtcMinusLocalTime) {
  const struct {
    const char* zone;
    long expected;
  } rows[] = {
      {"UTC0", 0},
      {"WEST5", 5 * 3'600'000L},
      {"EAST-5:30", -(5 * 3'600'000L + 1'800'000L)},
      {"FAR-14", -14 * 3'600'000L},
      {"AWAY12", 12 * 3'600'000L},
  };
  for (const auto& row : rows) {
    const CZone zone(row.zone);
    EXPECT_EQ(CExTime::GetTimezone(), row.expected) << row.zone;
  }
}

TEST(ExTime, DaylightSavingNowCounts) {
  // The rule keeps daylight saving time on through the whole year.
  const CZone always("STD5DST,0/0,J365/25");
  EXPECT_EQ(CExTime::GetTimezone(), 4 * 3'600'000L);
}
#endif
