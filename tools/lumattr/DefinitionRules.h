// The rules of `lumattr check` for definition files: what the loader takes otherwise than it stands
// there, or leaves out.
#pragma once

#include <vector>

#include "platform/FileObject.h"
#include "tools/lumattr/Finding.h"

namespace lum::tool {

/// Checks the lines of a definition file; of each line only its number and text are looked at.
void CheckDefinitionLines(const std::vector<FileObjectLine>& lines, CFindingList& findings);

}  // namespace lum::tool
