// Library-internal: visits the items of a section.
#pragma once

#include "platform/LumBase.h"

namespace lum::detail {

/// Calls `visit(key, value)` for every item of the section, in the order of the file object's walk.
/// The file object may not be changed meanwhile.
template <typename Visit>
void ForEachItem(const FileObject& file, const CString& section, Visit visit) {
  FobjSection walk;
  CString key;
  CString value;
  for (bool more = file.GetFirstMapEntry(walk, section, key, value); more;
       more = file.GetNextMapEntry(walk, key, value)) {
    visit(key, value);
  }
}

}  // namespace lum::detail
