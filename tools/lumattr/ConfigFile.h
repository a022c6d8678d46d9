// Configuration files and their sections for commands: whatever is missing is one clear ToolError.
#pragma once

#include <functional>
#include <string>

#include "attributes/AttributeMap.h"
#include "platform/LumBase.h"

#include "tools/lumattr/CommandLine.h"

namespace lum::tool {

/// How a command writes files.
struct SaveSettings {
  int keep = 3;  ///< Previous versions.
};

/// The option --keep.
void AddSaveOptions(const CCommand& command, SaveSettings& settings);

/// Loads the file or throws.
FileObject LoadConfigFile(const std::string& path);
/// Replaces the file atomically or throws; the old file is then untouched. False, with the file
/// untouched as well, when another program has changed it and `onConflict` is Refuse.
bool SaveConfigFile(FileObject& file, const std::string& path, const SaveSettings& settings,
                    FileConflict onConflict);
/// Calls an edit, which loads a file, changes it and saves it, until SaveConfigFile did not answer
/// it false: what it decided by the file's content holds for what it replaces. Throws when other
/// programs do not let it come to an end.
void UntilSaved(const std::function<bool()>& edit);

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
