// One line of text to standard error, whole also when several threads write.
#pragma once

#include "platform/FrameworkString.h"

namespace lum::detail {

/// Writes the text as UTF-8 with a line end. Control characters inside it become blanks.
void WriteErrorLine(CString text);

}  // namespace lum::detail
