// Finding the attribute that the arguments FILE SECTION PATH name, and saying clearly when it is
// not there.
#pragma once

#include <string>

#include "platform/LumBase.h"
#include "tools/lumattr/AttributePath.h"
#include "tools/lumattr/CommandLine.h"
#include "tools/lumattr/Definitions.h"
#include "tools/lumattr/SectionItems.h"

namespace lum::tool {

/// The arguments FILE SECTION PATH and the options --defs and --lang.
struct AttributeArguments {
  std::string file;
  std::string section;
  std::string path;
  DefinitionOptions definitions;
};

void AddAttributeArguments(const CCommand& command, AttributeArguments& arguments);

/// Everything the arguments lead to, loaded.
struct LoadedSection {
  FileObject file;
  CString section;
  SectionItems items;
  AttributePath path;
};

/// Loads definitions, file and section; throws ToolError for whatever is missing, apart from the
/// attribute itself.
LoadedSection LoadSection(const AttributeArguments& arguments, ToolContext& context);

/// How many siblings of the last step's name there are at its place, occurrences without items
/// counted.
int CountSiblings(const SectionItems& items, const AttributePath& path);

/// Says why there is no item for the path: a group, an unreadable item, or nothing, then with what
/// was perhaps meant.
[[noreturn]] void ThrowMissing(const LoadedSection& loaded);

}  // namespace lum::tool
