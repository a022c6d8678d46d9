// The time zone of the process, set for one scope.
#pragma once

#include <cstdlib>
#include <ctime>
#include <optional>
#include <string>

namespace lum::test {

class CTimeZone {
 public:
  /// A zone as the TZ variable takes it, hours counted west of Greenwich. Windows needs a name of
  /// three letters.
  explicit CTimeZone(const std::string& zone) {
    if (const char* old = std::getenv("TZ")) {
      m_old = old;
    }
    Set(zone.c_str());
  }
  ~CTimeZone() { Set(m_old ? m_old->c_str() : nullptr); }
  CTimeZone(const CTimeZone&) = delete;
  CTimeZone& operator=(const CTimeZone&) = delete;

 private:
  // Null for the system's own zone.
  static void Set(const char* zone) {
#if defined(_WIN32)
    ::_putenv_s("TZ", zone == nullptr ? "" : zone);  // An empty value takes the variable away.
    ::_tzset();
#else
    zone == nullptr ? ::unsetenv("TZ") : ::setenv("TZ", zone, 1);
    ::tzset();
#endif
  }

  std::optional<std::string> m_old;
};

}  // namespace lum::test
