// The export macro of LumAttributes: every class, function and constant that applications use
// carries LUM_ATTRIBUTES_API; everything else stays hidden inside the library.
#pragma once

#if defined(_WIN32)
#if defined(LUM_ATTRIBUTES_BUILD)
#define LUM_ATTRIBUTES_API __declspec(dllexport)
#else
#define LUM_ATTRIBUTES_API __declspec(dllimport)
#endif
#else
#define LUM_ATTRIBUTES_API __attribute__((visibility("default")))
#endif
