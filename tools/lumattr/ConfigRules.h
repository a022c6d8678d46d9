// The rules of `lumattr check` for configuration files: what readers skip or misread in silence.
#pragma once

#include <vector>

#include "platform/FileObject.h"
#include "tools/lumattr/Finding.h"

class CAttribDefMap;

namespace lum::tool {

/// Checks the lines of a configuration file. With `definitions`, which may be null, names and texts
/// are held against them as well.
void CheckConfigLines(const std::vector<FileObjectLine>& lines, CAttribDefMap* definitions,
                      CFindingList& findings);

}  // namespace lum::tool
