// Reading a file into memory as a whole, and what the system says about a failure.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

#include "platform/FrameworkString.h"

namespace lum::detail {

/// The path as the system takes it (UTF-8 where paths are bytes).
std::filesystem::path SystemPath(const CString& path);

/// The system's text for an error number, the same in every process locale where that is possible.
CString SystemMessage(int error);

/// Reads a file, a pipe or the like up to its end. False, with `bytes` untouched, when that fails
/// or there are more than `limit` bytes; `error` then says why.
bool ReadWholeFile(const CString& path, std::size_t limit, std::string& bytes, CString& error);

}  // namespace lum::detail
