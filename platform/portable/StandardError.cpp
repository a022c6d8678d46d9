// Messages leave as one write each, so that those of several threads do not mix.
#include "platform/portable/StandardError.h"

#include <cstdio>

#include "platform/TextEncoding.h"

namespace lum::detail {

void WriteErrorLine(CString text) {
  text.Replace(L'\r', L' ');
  text.Replace(L'\n', L' ');
  text.AppendChar(L'\n');
  const CStringA bytes = WideToUtf8(text);
  std::fwrite(bytes.GetString(), 1, static_cast<std::size_t>(bytes.GetLength()), stderr);
  std::fflush(stderr);
}

}  // namespace lum::detail
