// lumattr set: changes the value and the flags of one attribute, one line of the file.
#include <memory>

#include "tools/lumattr/Commands.h"
#include "tools/lumattr/ConfigFile.h"
#include "tools/lumattr/ItemChange.h"
#include "tools/lumattr/Text.h"

namespace lum::tool {
namespace {

struct SetOptions {
  AttributeArguments attribute;
  std::string value;
  std::string flags;
  bool create = false;
  SaveSettings saving;
};

constexpr const char* kFooter =
    "The attribute keeps its kind; a text that the kind does not read is refused. Put -- before a\n"
    "value that begins with - and is no number.\n"
    "WORD: a number (16, 0x10), names joined by , or | (editable, group, disabled, skip-on-load,\n"
    "keep-value, keep-value-strict, transient, none) or changes (+disabled,-group).\n"
    "Examples:\n"
    "  lumattr set survey.cfg Survey MaxDepth 37.5 --defs survey.def\n"
    "  lumattr set survey.cfg Survey Unit m --flags +editable\n"
    "  lumattr set survey.cfg Survey 'Sensor(2).Offset' 0.25 --create";

/// Ordered loading takes "//" for a comment wherever it stands.
void WarnOfComment(const SetOptions& options, ToolContext& context) {
  if (options.value.find("//") != std::string::npos) {
    context.Warn("ordered loading cuts the value at //");
  }
}

/// Which occurrence is the next one to create depends on the file as it is. Any other change stands
/// beside those of other programs.
FileConflict OnConflict(const SetOptions& options) {
  return options.create ? FileConflict::Refuse : FileConflict::Merge;
}

bool Edit(const SetOptions& options, ToolContext& context) {
  const CString value = ArgumentText(options.value, "VALUE");
  LoadedSection loaded = LoadSection(options.attribute, context);
  if (!ChangeAttribute(loaded, {value, options.flags, options.create})) {
    return true;
  }
  if (!SaveConfigFile(loaded.file, options.attribute.file, options.saving, OnConflict(options))) {
    return false;
  }
  WarnOfComment(options, context);
  return true;
}

}  // namespace

void AddSetCommand(const CCommand& app, ToolContext& context) {
  auto options = std::make_shared<SetOptions>();
  const CCommand command = app.Subcommand("set", "Change the value of an attribute");
  AddAttributeArguments(command, options->attribute);
  command.Option("VALUE", options->value, "The new value's text").Required();
  command.Option("--flags", options->flags, "The new flags, or changes to them").TypeName("WORD");
  command.Flag("--create", options->create, "Make the attribute when it is missing");
  AddSaveOptions(command, options->saving);
  command.Footer(kFooter);
  command.Action([options, &context] { UntilSaved([&] { return Edit(*options, context); }); });
}

}  // namespace lum::tool
