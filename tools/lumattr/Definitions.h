// The options --defs and --lang: which definitions and translations a command works with.
#pragma once

#include <optional>
#include <string>

#include "platform/Framework.h"
#include "tools/lumattr/CommandLine.h"
#include "tools/lumattr/ToolContext.h"

namespace lum::tool {

/// The values of the options; empty when not given.
struct DefinitionOptions {
  std::string definitionFile;
  std::string translationFile;
};

/// Adds --defs (also from the environment variable LUMATTR_DEFS) and --lang to a command.
void AddDefinitionOptions(const CCommand& command, DefinitionOptions& options);
/// Adds --lang alone.
void AddTranslationOption(const CCommand& command, DefinitionOptions& options);

/// Loads what the options name into the process-wide table and translator; to be called before
/// trees are loaded. False when no definitions are given. Throws ToolError for a file that cannot
/// be read; a table whose last definition makes no value is a warning.
bool LoadDefinitions(const DefinitionOptions& options, ToolContext& context);

/// The display name the definitions or translations give an attribute, if any.
std::optional<CString> DisplayName(const CString& mnemonic);

}  // namespace lum::tool
