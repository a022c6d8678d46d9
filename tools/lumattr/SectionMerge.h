// Laying the attributes of one file over those of another, item by item: only lines whose content
// changes are touched.
#pragma once

#include <string>
#include <vector>

#include "platform/LumBase.h"

namespace lum::tool {

/// The switches of CAttributeMap::Overload.
struct MergeSwitches {
  bool add = false;
  bool flags = false;
  bool order = false;
  bool strict = false;
};

/// What a merge did to one section.
struct MergeResult {
  int changed = 0;
  int added = 0;
  int kept = 0;                      ///< Values that differ still: protected or "OrderInfo".
  std::vector<std::string> leftOut;  ///< Paths that only the other file has.
  std::vector<std::string> blocked;  ///< Paths whose key the section uses for something else.
};

/// Merges a section that both files have into `base`. Values travel as the texts of the files: no
/// definitions must be loaded. Throws ToolError, with `base` of use no more, when the section would
/// not read back as merged.
MergeResult MergeSection(FileObject& base, const FileObject& over, const CString& section,
                         const MergeSwitches& switches);

/// Copies all items of a section, in the order and version they have, into a file whose section of
/// that name is missing or empty; returns how many.
int CopyWholeSection(FileObject& base, const FileObject& over, const CString& section);

}  // namespace lum::tool
