// lumattr unset: removes one attribute with everything below it.
#include <memory>

#include "tools/lumattr/Commands.h"
#include "tools/lumattr/ConfigFile.h"
#include "tools/lumattr/ItemRemoval.h"

namespace lum::tool {
namespace {

constexpr const char* kFooter =
    "Everything below the attribute goes with it. Later occurrences of its name move down by one:\n"
    "after unset Sensor, what was Sensor(1) is Sensor.\n"
    "Examples:\n"
    "  lumattr unset survey.cfg Survey MaxDepth\n"
    "  lumattr unset survey.cfg Survey 'Sensor(1)'";

struct UnsetOptions {
  AttributeArguments attribute;
  SaveSettings saving;
};

bool Edit(const UnsetOptions& options, ToolContext& context) {
  LoadedSection loaded = LoadSection(options.attribute, context);
  const RemovalCount count = RemoveAttribute(loaded);
  if (!SaveConfigFile(loaded.file, options.attribute.file, options.saving, FileConflict::Refuse)) {
    return false;
  }
  context.out << "items removed: " << count.removed << ", renamed: " << count.renamed << '\n';
  return true;
}

}  // namespace

void AddUnsetCommand(const CCommand& app, ToolContext& context) {
  auto options = std::make_shared<UnsetOptions>();
  const CCommand command = app.Subcommand("unset", "Remove an attribute and everything below it");
  AddAttributeArguments(command, options->attribute);
  AddSaveOptions(command, options->saving);
  command.Footer(kFooter);
  command.Action([options, &context] { UntilSaved([&] { return Edit(*options, context); }); });
}

}  // namespace lum::tool
