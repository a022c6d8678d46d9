// Replacing a file as a whole: a crash at any moment leaves the old file or the new one.
#pragma once

#include <string_view>

#include "platform/FrameworkString.h"

namespace lum::detail {

/// Writes the bytes into a new file beside the old one, flushes it to disk, gives it the old one's
/// permissions (and owner, as far as allowed) and renames it over the old one; then flushes the
/// folder. A symbolic link is followed first. Only a regular file that may be written is replaced.
/// False, with the old file untouched and nothing left beside it, on any failure; `error` then says
/// why. Only when flushing the folder itself fails is the new file already in place.
bool WriteFileAtomically(const CString& path, std::string_view bytes, CString& error);

}  // namespace lum::detail
