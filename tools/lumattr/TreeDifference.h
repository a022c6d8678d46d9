// The differences between two attribute trees, one entry an attribute.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tools/lumattr/ConfigFile.h"

namespace lum::tool {

/// One attribute that differs. An attribute whose value and flags both differ has two entries.
struct TreeDifference {
  enum class Change { Value, Flags, Added, Removed };

  Change change = Change::Value;
  std::wstring path;                ///< Canonical dotted path.
  std::optional<CString> oldValue;  ///< The file's text; none for a group without an item.
  std::optional<CString> newValue;
  unsigned int oldFlags = 0;
  unsigned int newFlags = 0;
};

/// Pairs attributes by name and occurrence. Values are equal when CAttributeMap::Compare finds them
/// equal; flags, which it does not look at, are compared with `withFlags`. The entries stand in
/// the order of `before`, what only `after` has follows the siblings it stands among.
std::vector<TreeDifference> FindTreeDifferences(const SectionTree& before, const SectionTree& after,
                                                bool withFlags);

}  // namespace lum::tool
