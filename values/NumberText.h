// Library-internal number texts: "%d", "%u", "%f" and shortest writing into strings as the C
// runtime does it in its "C" locale, whatever the process locale is. Scanning stands in
// NumberScan.h.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <vector>

#include "platform/Framework.h"

namespace lum::detail {

/// Appends in decimal.
void AppendDecimal(CString& text, int value);
void AppendDecimal(CString& text, unsigned int value);
void AppendDecimal(CString& text, std::uint64_t value);

/// Appends as "%f": six digits after the point, no exponent, "inf", "-inf", "nan", "-nan".
void AppendFixed(CString& text, double value);

/// Replaces the text by a number, as the appending functions write it. Allocates nothing when the
/// text has storage of its own that takes the characters.
void ReplaceByDecimal(CString& text, int value);
void ReplaceByDecimal(CString& text, unsigned int value);
void ReplaceByDecimal(CString& text, std::uint64_t value);
void ReplaceByFixed(CString& text, double value);

/// Replaces the text by numbers joined by commas.
void ReplaceByFixed(CString& text, std::initializer_list<double> values);
void ReplaceByDecimal(CString& text, const std::vector<int>& values);
/// Doubles as the shortest texts that read back to them.
void ReplaceByShortest(CString& text, const std::vector<double>& values);

}  // namespace lum::detail
