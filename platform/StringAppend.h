// operator<< for CString: appends a number, a character or a text to a string.
#pragma once

#include "platform/FrameworkString.h"

/// Appends in decimal.
LUM_PLATFORM_API CString& operator<<(CString& text, int value);
LUM_PLATFORM_API CString& operator<<(CString& text, unsigned int value);
/// Appends the shortest text that reads back to the same double; "inf", "-inf", "nan" and "-nan"
/// for what is no number. Independent of the process locale.
LUM_PLATFORM_API CString& operator<<(CString& text, double value);
LUM_PLATFORM_API CString& operator<<(CString& text, wchar_t value);
LUM_PLATFORM_API CString& operator<<(CString& text, const wchar_t* value);
LUM_PLATFORM_API CString& operator<<(CString& text, const CString& value);
