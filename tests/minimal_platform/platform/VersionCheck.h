// Does a library fit the platform it is loaded into?
#pragma once

inline constexpr unsigned int LUM_PLATFORM_VERSION = 0x05050000;

/// True when the first two parts of the version are the platform's; otherwise says so on standard
/// error.
bool CheckDllVersion(unsigned int version, const char* sourceFile, const char* buildStamp);
