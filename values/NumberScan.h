// Library-internal scans: the C runtime's formatted reading of numbers as it is in the "C" locale,
// whatever the process locale is, of wide and of 8-bit texts. Nothing is allocated.
//
// Leading white space is skipped and what follows the number is ignored. A scan returns whether a
// number was converted and leaves `value` untouched otherwise. An integer saturates at 64 bits and
// is then cut to its type, as the runtime does it. A NUL ends no text but continues no number.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "values/PlainScan.h"

namespace lum::detail {

/// The scans of all texts, for those below that try a plain scan first.
bool ScanAnyInt(std::wstring_view text, int& value);
bool ScanAnyUInt(std::wstring_view text, unsigned int& value);
bool ScanAnyULongLong(std::wstring_view text, std::uint64_t& value);
bool TakeAnyInt(std::string_view& text, std::size_t width, int& value);
bool ScanAnyHex(std::wstring_view text, unsigned int& value);
bool ScanAnyHex(std::string_view text, unsigned int& value);
bool ScanAnyDouble(std::wstring_view text, double& value);
bool ScanAnyDouble(std::string_view text, double& value);

/// As "%d".
inline bool ScanInt(std::wstring_view text, int& value) {
  return ScanPlainInteger(text, value) || ScanAnyInt(text, value);
}
/// As "%d" with a width, as in "%2d": at most so many characters after the white space count. The
/// text goes on behind the number; it is not touched when there is none.
inline bool TakeInt(std::string_view& text, std::size_t width, int& value) {
  return TakePlainInt(text, width, value) || TakeAnyInt(text, width, value);
}
/// As "%u": a sign is taken, "-1" wraps.
inline bool ScanUInt(std::wstring_view text, unsigned int& value) {
  return ScanPlainInteger(text, value) || ScanAnyUInt(text, value);
}
/// As an unsigned 64-bit "%u".
inline bool ScanULongLong(std::wstring_view text, std::uint64_t& value) {
  return ScanPlainInteger(text, value) || ScanAnyULongLong(text, value);
}
/// As "%x": an optional sign and "0x" are taken.
inline bool ScanHex(std::wstring_view text, unsigned int& value) {
  return ScanPlainHex(text, value) || ScanAnyHex(text, value);
}
inline bool ScanHex(std::string_view text, unsigned int& value) {
  return ScanPlainHex(text, value) || ScanAnyHex(text, value);
}
/// As "%hx".
bool ScanHex(std::string_view text, unsigned short& value);
/// As "%lf": decimal and hexadecimal floating texts, "inf", "infinity", "nan".
inline bool ScanDouble(std::wstring_view text, double& value) {
  return ScanPlainDouble(text, value) || ScanAnyDouble(text, value);
}
inline bool ScanDouble(std::string_view text, double& value) {
  return ScanPlainDouble(text, value) || ScanAnyDouble(text, value);
}
/// As "%lf" with a width, as in "%5lf". Precondition: a width of 4 at least, so that it does not
/// end behind "-0x".
inline bool ScanDouble(std::string_view text, std::size_t width, double& value) {
  return ScanDouble(FieldOf(text, width), value);
}

}  // namespace lum::detail
