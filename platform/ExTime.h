// CExTime: the clock and the local time zone.
#pragma once

#include "platform/PlatformExport.h"

/// The host's clock.
///
/// Threads: any thread may ask and set sources at any time; a source must allow calls from several
/// threads. While the zone is asked for, nobody may change the environment of the process.
class LUM_PLATFORM_API CExTime {
 public:
  /// The absolute time in milliseconds since 1970-01-01 00:00 UTC.
  static double GetCurTime();
  /// The local zone's offset now, in milliseconds: UTC minus local time, positive west of
  /// Greenwich.
  static long GetTimezone();

  /// Supplies the clock or the zone; null restores the system's.
  static void SetClock(double (*source)());
  static void SetTimezoneSource(long (*source)());
};
