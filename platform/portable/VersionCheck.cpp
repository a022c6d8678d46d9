// Compares the versions of a library and of the platform.
#include "platform/VersionCheck.h"

#include "platform/FrameworkString.h"
#include "platform/portable/StandardError.h"

namespace {

// The first two of the four parts: libraries that differ in the others work together.
constexpr unsigned int kDecidingParts = 0xFFFF0000;

CString VersionText(unsigned int version) {
  CString text;
  text.Format(L"%u.%u.%u.%u", version >> 24, (version >> 16) & 0xFF, (version >> 8) & 0xFF,
              version & 0xFF);
  return text;
}

CString TextOrQuestionMark(const char* text) { return text == nullptr ? L"?" : CString(text); }

}  // namespace

bool CheckDllVersion(unsigned int version, const char* sourceFile, const char* buildStamp) {
  if ((version & kDecidingParts) == (LUM_PLATFORM_VERSION & kDecidingParts)) {
    return true;
  }
  lum::detail::WriteErrorLine(
      L"library version " + VersionText(version) + L" does not fit platform version " +
      VersionText(LUM_PLATFORM_VERSION) + L" (source " + TextOrQuestionMark(sourceFile) +
      L", built " + TextOrQuestionMark(buildStamp) + L")");
  return false;
}
