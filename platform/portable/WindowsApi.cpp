#include "platform/portable/WindowsApi.h"

#include <iterator>

namespace lum::detail {

CString WindowsMessage(DWORD error) {
  constexpr DWORD kFlags = FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS;
  wchar_t text[512];
  DWORD length = 0;
  for (const WORD language : {WORD{MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US)}, WORD{0}}) {
    if (length == 0) {
      length = ::FormatMessageW(kFlags, nullptr, error, language, text,
                                static_cast<DWORD>(std::size(text)), nullptr);
    }
  }
  CString message(text, static_cast<int>(length));
  message.TrimRight(L"\r\n .");
  if (message.IsEmpty()) {
    message.Format(L"error %u", static_cast<unsigned int>(error));
  }
  return message;
}

}  // namespace lum::detail
