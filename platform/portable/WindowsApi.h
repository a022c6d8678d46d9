// The Windows interface without what collides with ours, and its messages. Windows only.
#pragma once

#if !defined(NOMINMAX)
#define NOMINMAX
#endif
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include "platform/FrameworkString.h"

namespace lum::detail {

/// The system's text for an error code of GetLastError(), in English where it has that.
CString WindowsMessage(DWORD error);

}  // namespace lum::detail
