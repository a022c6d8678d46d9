// The change that set makes, item by item, on a loaded file; and the proof, before anything is
// written, that a change did what was asked and nothing else.
#pragma once

#include <string>
#include <vector>

#include "tools/lumattr/AttributeLookup.h"

namespace lum::tool {

/// An attribute's new content.
struct NewContent {
  CString value;
  std::string flags;    ///< As the option gives them; empty leaves them.
  bool create = false;  ///< Whether a missing attribute is made.
};

/// Gives the attribute of the loaded path its new content. Throws ToolError when it is missing, or
/// when its kind or the file refuses the content. False when nothing had to change.
bool ChangeAttribute(LoadedSection& loaded, const NewContent& content);

/// Throws ToolError when the loaded path is the section's version: that decides how every other key
/// is read and is no attribute to edit by itself.
void RefuseVersion(const LoadedSection& loaded);

/// Reads the changed section again and throws ToolError unless it has the version it had and holds
/// exactly the expected items, each in its role.
void ProveItems(const LoadedSection& loaded, const std::vector<SectionItem>& expected);

}  // namespace lum::tool
