// What differs from system to system in opening files: the form of a path, how a file is opened so
// that others can still replace it, and what the system says about a failure.
#pragma once

#include <cstdio>
#include <filesystem>
#include <memory>

#include "platform/FrameworkString.h"

namespace lum::detail {

struct CFileCloser {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using CFilePointer = std::unique_ptr<std::FILE, CFileCloser>;

/// The path as the system takes it: UTF-8 where paths are bytes; on Windows absolute, with the
/// prefix that allows more than 260 characters where it is needed.
std::filesystem::path SystemPath(const CString& path);

/// A path as text, for users.
CString PathText(const std::filesystem::path& path);

/// The text for an error number of the C library, the same in every process locale where that is
/// possible.
CString SystemMessage(int error);

/// Opens a file or a pipe for reading bytes, so that others may read, write and replace it
/// meanwhile. Null when that fails; `error` then says why.
CFilePointer OpenForReading(const CString& path, CString& error);

}  // namespace lum::detail
