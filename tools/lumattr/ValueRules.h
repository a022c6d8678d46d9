// The rules of `lumattr check` for what stands to the right of an attribute's key: the flags and
// the text.
#pragma once

#include "platform/FileObject.h"
#include "tools/lumattr/Finding.h"

class CAttribDefMap;

namespace lum::tool {

/// Checks the value of an attribute's item. `name` is the attribute's own name, `definitions` may
/// be null. Returns whether readers read the item.
bool CheckItemValue(const FileObjectLine& line, const CString& name, CAttribDefMap* definitions,
                    CFindingList& findings);

}  // namespace lum::tool
