// The rules of `lumattr check` that hold for the lines of any text file.
#pragma once

#include "platform/FileObject.h"
#include "tools/lumattr/Finding.h"

namespace lum::tool {

/// Reports bytes that the encoding does not allow and control characters, each at most once.
void CheckLineText(const FileObjectLine& line, CFindingList& findings);

}  // namespace lum::tool
