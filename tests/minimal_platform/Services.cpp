// Numerics, clock, errors, the translator's instance and the version check.
#include <chrono>
#include <cmath>
#include <ctime>
#include <iostream>
#include <limits>

#include "platform/LumBase.h"
#include "platform/VersionCheck.h"

namespace {

double SystemTime() {
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  return std::chrono::duration<double, std::milli>(now).count();
}

// Reads the time of day in UTC as if it were local: the difference is the zone's offset.
long SystemTimezone() {
  const std::time_t now = std::time(nullptr);
  const int isSummer = std::localtime(&now)->tm_isdst;
  std::tm utc = *std::gmtime(&now);
  utc.tm_isdst = isSummer;
  return static_cast<long>(std::difftime(std::mktime(&utc), now)) * 1000;
}

void ReportToStandardError(const CString& category, const CString& message) {
  std::cerr << CStringA(category + L": " + message).GetString() << '\n';
}

double (*g_clock)() = SystemTime;
long (*g_timezone)() = SystemTimezone;
Error::Reporter g_reporter = ReportToStandardError;

}  // namespace

void (*g_libraryObserver)(const char* event) = nullptr;

void TellLibraryObserver(const char* event) {
  if (g_libraryObserver != nullptr) {
    g_libraryObserver(event);
  }
}

double Epsilon(double magnitude) { return magnitude * std::numeric_limits<double>::epsilon(); }

double modgeo(double degrees) {
  const double angle = std::remainder(degrees, 360.0);
  return angle == -180.0 ? 180.0 : angle;
}

int HexVal(wchar_t digit) {
  const int place = CString(L"0123456789abcdef0123456789ABCDEF").Find(digit);
  return place < 0 ? -1 : place % 16;
}

double CExTime::GetCurTime() { return g_clock(); }

long CExTime::GetTimezone() { return g_timezone(); }

void CExTime::SetClock(double (*source)()) { g_clock = source != nullptr ? source : SystemTime; }

void CExTime::SetTimezoneSource(long (*source)()) {
  g_timezone = source != nullptr ? source : SystemTimezone;
}

void Error::Report(const char* category) const { g_reporter(CString(category), m_message); }

Error::Reporter Error::SetReporter(Reporter reporter) {
  return std::exchange(g_reporter, reporter != nullptr ? reporter : ReportToStandardError);
}

FileError::FileError(const CString& path, int code)
    : Error((code == CANNOT_OPEN ? L"cannot open " : L"cannot access ") + path) {}

Translator& Translator::Instance() {
  static Translator instance;
  return instance;
}

bool CheckDllVersion(unsigned int version, const char* sourceFile, const char* buildStamp) {
  TellLibraryObserver("version checked");
  const bool fits = version >> 16 == LUM_PLATFORM_VERSION >> 16;
  if (!fits) {
    std::cerr << sourceFile << " (" << buildStamp << ") does not fit this platform\n";
  }
  return fits;
}
