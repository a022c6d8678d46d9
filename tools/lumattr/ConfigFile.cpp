#include "tools/lumattr/ConfigFile.h"

#include <CLI/CLI.hpp>
#include <utility>

#include "catalogue/AttributeNames.h"
#include "decoding/NearMiss.h"
#include "definitions/AttribDefMap.h"
#include "tools/lumattr/SectionItems.h"
#include "tools/lumattr/Text.h"
#include "tools/lumattr/ToolContext.h"

namespace lum::tool {

FileObject LoadConfigFile(const std::string& path) {
  FileObject file;
  if (!file.Load(ArgumentText(path, "the file name"))) {
    throw ToolError(Printable(file.LastError()));
  }
  return file;
}

void AddSaveOptions(CLI::App& command, SaveSettings& settings) {
  command
      .add_option("--keep", settings.keep,
                  "How many previous versions of the file to keep for lumattr restore")
      ->type_name("N")
      ->capture_default_str()
      ->envname("LUMATTR_KEEP")
      ->check(CLI::Range(0, int{FileObject::kMaxPreviousVersions}));
}

bool SaveConfigFile(FileObject& file, const std::string& path, const SaveSettings& settings,
                    FileConflict onConflict) {
  if (file.Save(ArgumentText(path, "the file name"), {onConflict, settings.keep})) {
    return true;
  }
  if (file.LastSave() == FileSaveResult::Conflict && onConflict == FileConflict::Refuse) {
    return false;
  }
  throw ToolError(Printable(file.LastError()));
}

void UntilSaved(const std::function<bool()>& edit) {
  constexpr int kMaxAttempts = 100;
  for (int attempt = 0; attempt < kMaxAttempts; ++attempt) {
    if (edit()) {
      return;
    }
  }
  throw ToolError("other programs keep changing the file; nothing was written");
}

CString RequireSection(const FileObject& file, const std::string& path,
                       const std::string& section) {
  CString name = ArgumentText(section, "SECTION");
  if (!file.HasSection(name)) {
    throw ToolError("no section " + Quoted(name) + " in \"" + Printable(FromUtf8(path)) + "\"" +
                    decoding::DidYouMean(name, file.SectionNames()));
  }
  return name;
}

CAttributeMap LoadTree(const FileObject& file, const CString& section) {
  RequireKnownVersion(SectionVersion(file, section), section);
  CAttributeMap tree;
  if (!LoadAttributes(tree, file, section, false)) {
    throw ToolError("section " + Quoted(section) + " cannot be read");
  }
  return tree;
}

CAttributeMap LoadTreeWithoutVersion(const FileObject& file, const CString& section) {
  CAttributeMap tree = LoadTree(file, section);
  tree.RemoveAll(ATTRIB_VERSION_KEY);
  return tree;
}

SectionTree LoadSectionTree(const FileObject& file, const CString& section) {
  // Without definitions every value is the text itself, so that is how the second tree is made.
  CAttribDefMap& table = CAttribDefMap::GetAttribDefMap();
  const CAttribDefMap definitions = table;
  table = CAttribDefMap();
  CAttributeMap stored = LoadTree(file, section);
  table = definitions;
  return {LoadTree(file, section), std::move(stored)};
}

}  // namespace lum::tool
