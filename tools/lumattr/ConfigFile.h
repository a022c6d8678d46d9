// Configuration files and their sections for commands: whatever is missing is one clear ToolError.
#pragma once

#include <string>

#include "attributes/AttributeMap.h"
#include "platform/LumBase.h"

namespace lum::tool {

/// Loads the file or throws.
FileObject LoadConfigFile(const std::string& path);
/// Replaces the file atomically or throws; the old file is then untouched.
void SaveConfigFile(FileObject& file, const std::string& path);

/// The section an argument names; throws, with a near miss, when the file does not have it.
CString RequireSection(const FileObject& file, const std::string& path, const std::string& section);

/// Loads a section's tree in its own version or throws.
CAttributeMap LoadTree(const FileObject& file, const CString& section);

/// The same without the root's version, which says how the section is written.
CAttributeMap LoadTreeWithoutVersion(const FileObject& file, const CString& section);

/// A section's tree as applications get it, and a second one of the same shape whose values are the
/// very texts of the file, for display: 0.1 stays "0.1" whatever the kind prints.
struct SectionTree {
  CAttributeMap typed;
  CAttributeMap stored;
};

SectionTree LoadSectionTree(const FileObject& file, const CString& section);

}  // namespace lum::tool
