#include "tools/lumattr/Definitions.h"

#include "definitions/AttribDefMap.h"
#include "platform/LumBase.h"
#include "tools/lumattr/Text.h"

namespace lum::tool {
namespace {

void LoadTranslations(const std::string& path) {
  if (!Translator::Instance().Load(ArgumentText(path, "the translation file's name"))) {
    throw ToolError("cannot read the translations \"" + Printable(FromUtf8(path)) + "\"");
  }
  Translator::Instance().SetLanguageForeign(true);
}

/// Whether the file can be opened: found out first, so that a failure is reported once, by the
/// tool.
void RequireReadable(const CString& path) {
  CStdioFile file;
  if (!file.Open(path, CStdioFile::modeRead | CStdioFile::shareDenyWrite | CStdioFile::typeText)) {
    throw ToolError("cannot read the definitions \"" + Printable(path) + "\"");
  }
}

void LoadDefinitionFile(const std::string& name, ToolContext& context) {
  const CString path = ArgumentText(name, "the definition file's name");
  RequireReadable(path);
  const Error::Reporter previous = Error::SetReporter([](const CString&, const CString&) {});
  const bool lastMadeValue = CAttribDefMap::GetAttribDefMap().LoadDefFile(path, true);
  Error::SetReporter(previous);
  if (!lastMadeValue) {
    context.Warn("the last definition of \"" + Printable(path) + "\" has no default value");
  }
}

}  // namespace

void AddTranslationOption(const CCommand& command, DefinitionOptions& options) {
  command.Option("--lang", options.translationFile, "Translations of display names")
      .TypeName("FILE");
}

void AddDefinitionOptions(const CCommand& command, DefinitionOptions& options) {
  command
      .Option("--defs", options.definitionFile,
              "Definition file: gives attributes kinds and display names")
      .TypeName("FILE")
      .Environment("LUMATTR_DEFS");
  AddTranslationOption(command, options);
}

bool LoadDefinitions(const DefinitionOptions& options, ToolContext& context) {
  if (!options.translationFile.empty()) {
    LoadTranslations(options.translationFile);
  }
  if (options.definitionFile.empty()) {
    return false;
  }
  LoadDefinitionFile(options.definitionFile, context);
  return true;
}

std::optional<CString> DisplayName(const CString& mnemonic) {
  CString name;
  if (!CAttribDefMap::GetAttribDefMap().GetAttribName(mnemonic, name) || name.IsEmpty()) {
    return std::nullopt;
  }
  return name;
}

}  // namespace lum::tool
