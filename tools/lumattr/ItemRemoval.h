// The removal that unset makes, item by item, on a loaded file.
#pragma once

#include "tools/lumattr/AttributeLookup.h"

namespace lum::tool {

/// How many items a removal took away and how many it gave another key.
struct RemovalCount {
  int removed = 0;
  int renamed = 0;
};

/// Removes the attribute of the loaded path and everything below. Later occurrences of its name
/// among its siblings move down by one, so that no empty attribute stands in for it. Throws
/// ToolError when there is nothing to remove.
RemovalCount RemoveAttribute(LoadedSection& loaded);

}  // namespace lum::tool
