// The operations of CLumDouble that bring device times into the time base of applications.
#include <chrono>
#include <cmath>
#include <optional>

#include "formulas/NumberArguments.h"
#include "formulas/TextArgument.h"
#include "platform/LumBase.h"
#include "values/DoubleType.h"
#include "values/NumberScan.h"

using lum::detail::CByteText;
using lum::detail::Compute;
using lum::detail::ReadNumber;
using lum::detail::ToInteger;

namespace {

constexpr double kMsecPerDay = 86400000.0;
constexpr double kMsecPerHalfDay = 43200000.0;

// The absolute time nearest to the reference with the time of day of `time`.
double Expand(double time, double reference) {
  const double timeOfDay = std::fmod(time, kMsecPerDay);
  const double difference = std::fmod(reference, kMsecPerDay) - timeOfDay;
  double days = std::floor(reference / kMsecPerDay);
  if (std::abs(difference) > kMsecPerHalfDay) {
    days += difference < 0.0 ? -1.0 : 1.0;
  }
  return days * kMsecPerDay + timeOfDay;
}

bool IsWithin(const std::optional<std::int64_t>& number, std::int64_t first, std::int64_t last) {
  return number && *number >= first && *number <= last;
}

// Midnight of a UTC date; days beyond the month's end count on. Nothing for what is no date, or not
// one of 1970 to 3000.
std::optional<std::chrono::sys_days> ReadDate(double year, double month, double day) {
  const std::optional<std::int64_t> y = ToInteger(year);
  const std::optional<std::int64_t> m = ToInteger(month);
  const std::optional<std::int64_t> d = ToInteger(day);
  if (!IsWithin(y, 1970, 3000) || !IsWithin(m, 1, 12) || !IsWithin(d, 1, 31)) {
    return std::nullopt;
  }
  const std::chrono::sys_days firstOfMonth = std::chrono::year(static_cast<int>(*y)) /
                                             std::chrono::month(static_cast<unsigned int>(*m)) / 1;
  return firstOfMonth + std::chrono::days(*d - 1);
}

}  // namespace

int CLumDouble::TimeConv(CLumType& text) {
  CByteText bytes;
  std::string_view rest = bytes.ReadOrEmpty(text);
  int hours = 0;
  int minutes = 0;
  double seconds = 0.0;
  m_value = 0.0;
  if (!lum::detail::TakeInt(rest, 2, hours) || !lum::detail::TakeInt(rest, 2, minutes) ||
      !lum::detail::ScanDouble(rest, 5, seconds)) {
    return 0;
  }
  m_value = hours * 3600 + minutes * 60 + seconds;
  return 1;
}

int CLumDouble::HmsToMsec(CLumType& value) {
  double x = 0.0;
  if (!ReadNumber(value, x)) {
    return 0;
  }
  const std::optional<std::int32_t> whole = lum::detail::ToInt32(x);
  if (!whole) {
    return 0;
  }
  const int hours = *whole / 10000;
  const int minutes = *whole / 100 % 100;
  const double seconds = std::fmod(x, 100.0);
  m_value = (seconds + (minutes + hours * 60) * 60) * 1000.0;
  return 1;
}

int CLumDouble::ExpandTime(CLumType& timeOfDay) {
  return Compute(
      m_value, [](double time) { return Expand(time, CExTime::GetCurTime()); }, timeOfDay);
}

int CLumDouble::ExpandTimeEx(CLumType& timeOfDay, CLumType& reference) {
  return Compute(m_value, Expand, timeOfDay, reference);
}

int CLumDouble::UtcToLocal(CLumType& time) {
  const auto toLocal = [](double utc) {
    const double local = utc - static_cast<double>(CExTime::GetTimezone());
    return utc < kMsecPerDay ? std::fmod(local, kMsecPerDay) : local;
  };
  return Compute(m_value, toLocal, time);
}

int CLumDouble::LocalToUtc(CLumType& time) {
  const auto toUtc = [](double local) {
    const double utc = local + static_cast<double>(CExTime::GetTimezone());
    return local > kMsecPerDay ? std::fmod(utc, kMsecPerDay) : utc;
  };
  return Compute(m_value, toUtc, time);
}

int CLumDouble::YyToCcyy(CLumType& year) {
  return Compute(
      m_value, [](double yy) { return yy < 80.0 ? yy + 2000.0 : yy + 1900.0; }, year);
}

int CLumDouble::CYMDMsecToMsec(CLumType& year, CLumType& month, CLumType& day,
                               CLumType& msecOfDay) {
  double y = 0.0;
  double m = 0.0;
  double d = 0.0;
  double msec = 0.0;
  if (!ReadNumber(year, y) || !ReadNumber(month, m) || !ReadNumber(day, d) ||
      !ReadNumber(msecOfDay, msec)) {
    return 0;
  }
  const std::optional<std::chrono::sys_days> date = ReadDate(y, m, d);
  if (!date) {
    return 0;
  }
  const std::chrono::milliseconds midnight = date->time_since_epoch();
  m_value = static_cast<double>(midnight.count()) + msec;
  return 1;
}
