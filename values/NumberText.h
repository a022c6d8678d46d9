// Library-internal number texts: "%d", "%u" and "%f" writing, and the C runtime's formatted scans,
// both as in its "C" locale whatever the process locale is.
#pragma once

#include <cstdint>
#include <string_view>

#include "platform/FrameworkString.h"

namespace lum::detail {

/// Appends in decimal.
void AppendDecimal(CString& text, int value);
void AppendDecimal(CString& text, unsigned int value);
void AppendDecimal(CString& text, std::uint64_t value);

/// Appends as "%f": six digits after the point, no exponent, "inf", "-inf", "nan", "-nan".
void AppendFixed(CString& text, double value);

/// The scans: leading white space is skipped, what follows the number is ignored. They return
/// whether a number was converted and leave `value` untouched otherwise. An integer saturates at 64
/// bits and is then cut to its type, as the runtime does it.

/// As "%d".
bool ScanInt(std::wstring_view text, int& value);
/// As "%u": a sign is taken, "-1" wraps.
bool ScanUInt(std::wstring_view text, unsigned int& value);
/// As an unsigned 64-bit "%u".
bool ScanULongLong(std::wstring_view text, std::uint64_t& value);
/// As "%x": an optional sign and "0x" are taken.
bool ScanHex(std::wstring_view text, unsigned int& value);
/// As "%lf": decimal and hexadecimal floating texts, "inf", "infinity", "nan".
bool ScanDouble(std::wstring_view text, double& value);

}  // namespace lum::detail
