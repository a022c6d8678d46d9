// The Windows interface without what collides with ours, its messages, and patience with files that
// others have open. Windows only.
#pragma once

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include "platform/FrameworkString.h"

namespace lum::detail {

/// The text for an error code of GetLastError(): the system's, in English where it has that. A
/// missing file has the same text on every system.
CString WindowsMessage(DWORD error);

/// Whether a file operation may have failed only because others have the file open.
bool MayPass(DWORD error);

// Virus scanners, indexers and backup programs hold files open for a moment: ten attempts, with
// pauses of 10, 20, 30 ... ms between them, half a second in all.
inline constexpr int kMaxFileAttempts = 10;
inline constexpr DWORD kFirstFilePause = 10;

/// Calls `step` until it answers true, fails for good, or the attempts are used up; `pause` lets
/// some milliseconds pass. False leaves the reason in GetLastError(), as `step` itself must.
template <typename Step, typename Pause>
bool RetryWhileBusy(const Step& step, const Pause& pause) {
  for (int attempt = 1; !step(); ++attempt) {
    const DWORD error = ::GetLastError();
    if (attempt == kMaxFileAttempts || !MayPass(error)) {
      ::SetLastError(error);
      return false;
    }
    pause(kFirstFilePause * static_cast<DWORD>(attempt));
  }
  return true;
}

}  // namespace lum::detail
