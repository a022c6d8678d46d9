// Conversion between wide text and bytes.
#pragma once

#include "platform/MinimalString.h"

/// What is no Unicode scalar value becomes U+FFFD.
CStringA WideToUtf8(const CString& text);
/// A byte that is not part of valid UTF-8 is taken as Latin-1.
CString Utf8ToWide(const CStringA& text);
