// A locale of the C library that writes a decimal comma, by the system's name for it.
#pragma once

namespace lum::test {

#if defined(_WIN32)
inline constexpr const char* kCommaLocale = "German_Germany.1252";
#else
inline constexpr const char* kCommaLocale = "de_DE.UTF-8";
#endif

}  // namespace lum::test
