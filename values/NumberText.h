// Library-internal number texts: "%d", "%u" and "%f" writing as the C runtime does it in its "C"
// locale, whatever the process locale is. Scanning stands in NumberScan.h.
#pragma once

#include <cstdint>

#include "platform/Framework.h"

namespace lum::detail {

/// Appends in decimal.
void AppendDecimal(CString& text, int value);
void AppendDecimal(CString& text, unsigned int value);
void AppendDecimal(CString& text, std::uint64_t value);

/// Appends as "%f": six digits after the point, no exponent, "inf", "-inf", "nan", "-nan".
void AppendFixed(CString& text, double value);

}  // namespace lum::detail
