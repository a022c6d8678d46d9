// Reading a file into memory as a whole.
#pragma once

#include <cstddef>
#include <string>

#include "platform/FrameworkString.h"

namespace lum::detail {

/// Reads a file, a pipe or the like up to its end. False, with `bytes` untouched, when that fails
/// or there are more than `limit` bytes; `error` then says why.
bool ReadWholeFile(const CString& path, std::size_t limit, std::string& bytes, CString& error);

}  // namespace lum::detail
