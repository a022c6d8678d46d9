// CheckDllVersion: does a library fit the platform it is loaded into?
#pragma once

#include "platform/PlatformExport.h"

/// The platform's own version, one byte per part, most significant first.
inline constexpr unsigned int LUM_PLATFORM_VERSION = 0x05050100;

/// True when the first two parts of `version` equal the platform's. Otherwise writes one line to
/// standard error that names both versions, the library's main source file and its build stamp, and
/// returns false. Null texts print as "?".
LUM_PLATFORM_API bool CheckDllVersion(unsigned int version, const char* sourceFile,
                                      const char* buildStamp);
