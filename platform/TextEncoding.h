// Conversion between wide text and bytes: UTF-8 and the system's ANSI code page.
#pragma once

#include "platform/FrameworkString.h"

/// Wide text to UTF-8. What is no Unicode scalar value becomes U+FFFD.
LUM_PLATFORM_API CStringA WideToUtf8(const CString& text);
/// UTF-8 to wide text. A byte that is not part of valid UTF-8 is taken as Latin-1.
LUM_PLATFORM_API CString Utf8ToWide(const CStringA& text);

/// The system's ANSI code page on Windows; UTF-8 elsewhere. A character that the code page lacks is
/// replaced as the system replaces it.
LUM_PLATFORM_API CStringA WideToAnsi(const CString& text);
LUM_PLATFORM_API CString AnsiToWide(const CStringA& text);
