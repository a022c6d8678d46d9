// Messages leave as one write each, so that those of several threads do not mix, and without
// control characters: a file's name must neither break the line nor steer a terminal.
#include "platform/portable/StandardError.h"

#include <cstdio>

#include "platform/TextEncoding.h"

namespace lum::detail {

namespace {

bool IsControl(wchar_t ch) { return ch < 0x20 || (ch >= 0x7F && ch < 0xA0); }

}  // namespace

void WriteErrorLine(CString text) {
  for (int i = 0; i < text.GetLength(); ++i) {
    if (IsControl(text[i])) {
      text.SetAt(i, L' ');
    }
  }
  text.AppendChar(L'\n');
  const CStringA bytes = WideToUtf8(text);
  std::fwrite(bytes.GetString(), 1, static_cast<std::size_t>(bytes.GetLength()), stderr);
  std::fflush(stderr);
}

}  // namespace lum::detail
