// The system's clock and zone, behind two replaceable sources.
#include "platform/ExTime.h"

#include <atomic>
#include <chrono>
#include <ctime>

namespace {

using Clock = double (*)();
using TimezoneSource = long (*)();

constexpr long kMillisecondsPerSecond = 1000;

double SystemClock() {
  using namespace std::chrono;
  const auto sinceEpoch = system_clock::now().time_since_epoch();
  return static_cast<double>(floor<milliseconds>(sinceEpoch).count());
}

bool LocalTime(std::time_t now, std::tm& local) {
#if defined(_WIN32)
  return ::localtime_s(&local, &now) == 0;
#else
  ::tzset();  // localtime_r need not look at the zone itself.
  return ::localtime_r(&now, &local) != nullptr;
#endif
}

// The seconds from 1970 to a broken-down time, taken as UTC.
std::chrono::seconds SecondsOf(const std::tm& time) {
  using namespace std::chrono;
  const year_month_day date{year(time.tm_year + 1900),
                            month(static_cast<unsigned int>(time.tm_mon + 1)),
                            day(static_cast<unsigned int>(time.tm_mday))};
  return sys_days(date).time_since_epoch() + hours(time.tm_hour) + minutes(time.tm_min) +
         seconds(time.tm_sec);
}

long SystemTimezone() {
  const std::time_t now = std::time(nullptr);
  std::tm local = {};
  if (!LocalTime(now, local)) {
    return 0;
  }
  const std::chrono::seconds offset = std::chrono::seconds(now) - SecondsOf(local);
  return static_cast<long>(offset.count()) * kMillisecondsPerSecond;
}

std::atomic<Clock> clockSource{&SystemClock};
std::atomic<TimezoneSource> timezoneSource{&SystemTimezone};

}  // namespace

double CExTime::GetCurTime() { return clockSource.load()(); }

long CExTime::GetTimezone() { return timezoneSource.load()(); }

void CExTime::SetClock(double (*source)()) {
  clockSource.store(source == nullptr ? &SystemClock : source);
}

void CExTime::SetTimezoneSource(long (*source)()) {
  timezoneSource.store(source == nullptr ? &SystemTimezone : source);
}
