// The export macro of LumPlatform: every class and function that other modules call carries
// LUM_PLATFORM_API; everything else stays hidden inside the library.
#pragma once

#if defined(LUM_FOREIGN_PLATFORM)
#error "LUM_PLATFORM_DIR names another platform, which must not fall back on this one"
#endif

#if defined(_WIN32)
#if defined(LUM_PLATFORM_BUILD)
#define LUM_PLATFORM_API __declspec(dllexport)
#else
#define LUM_PLATFORM_API __declspec(dllimport)
#endif
#else
#define LUM_PLATFORM_API __attribute__((visibility("default")))
#endif
