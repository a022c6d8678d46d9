#include "platform/portable/WindowsApi.h"

#include <cerrno>
#include <iterator>

#include "platform/portable/SystemFile.h"

namespace lum::detail {

namespace {

CString SystemText(DWORD error) {
  constexpr DWORD kFlags = FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS;
  wchar_t text[512];
  DWORD length = 0;
  for (const WORD language : {WORD{MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US)}, WORD{0}}) {
    if (length == 0) {
      length = ::FormatMessageW(kFlags, nullptr, error, language, text,
                                static_cast<DWORD>(std::size(text)), nullptr);
    }
  }
  return CString(text, static_cast<int>(length));
}

}  // namespace

CString WindowsMessage(DWORD error) {
  if (error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND) {
    return SystemMessage(ENOENT);
  }
  CString message = SystemText(error);
  message.TrimRight(L"\r\n .");
  if (message.IsEmpty()) {
    message.Format(L"error %u", static_cast<unsigned int>(error));
  }
  return message;
}

bool MayPass(DWORD error) {
  return error == ERROR_SHARING_VIOLATION || error == ERROR_ACCESS_DENIED ||
         error == ERROR_LOCK_VIOLATION || error == ERROR_UNABLE_TO_REMOVE_REPLACED ||
         error == ERROR_UNABLE_TO_MOVE_REPLACEMENT;
}

}  // namespace lum::detail
