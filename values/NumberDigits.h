// Library-internal: the characters of numbers, written into a buffer of the caller's.
#pragma once

#include <cstdint>
#include <limits>

namespace lum::detail {

/// The most characters that each of the functions writes.
constexpr int kMostDecimal = std::numeric_limits<std::uint64_t>::digits10 + 2;  // With a sign.
constexpr int kMostFixed = std::numeric_limits<double>::max_exponent10 + 9;     // "-d...d.dddddd"
constexpr int kMostShortest = 24;

/// Each writes its text to `at`, without a NUL, and returns the end of it.

/// As "%d" and "%u".
wchar_t* WriteDecimal(wchar_t* at, std::uint64_t value);
wchar_t* WriteDecimal(wchar_t* at, unsigned int value);
wchar_t* WriteDecimal(wchar_t* at, int value);

/// As "%f": six digits after the point, no exponent, "inf", "-inf", "nan", "-nan".
wchar_t* WriteFixed(wchar_t* at, double value);

/// The shortest text that reads back to the same double, in the form std::to_chars chooses; what is
/// no number as WriteFixed.
wchar_t* WriteShortest(wchar_t* at, double value);

}  // namespace lum::detail
